// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/byte_stream.h"
#include "platform/descriptor.h"
#include "platform/file_identity.h"
#include "platform/result.h"

namespace platform {

// Messages name the path and the system's reason. Paths are bytes.

/// Opens a regular file for reading as a stream of bytes. A directory, FIFO or device is an error,
/// never a hang. Links are followed. With `expected`, any other file under the path is an error.
Result<std::unique_ptr<ByteStream>>
openRegularFile(const std::string& path, const std::optional<FileIdentity>& expected = {});

/// The whole content of a regular file; a larger one than `most` bytes is an error.
Result<std::string> readWholeFile(const std::string& path, std::size_t most);

/// Size in bytes of a regular file.
Result<std::uint64_t> regularFileSize(const std::string& path);

/// The last byte of a regular file. An empty one has none, which is an error.
Result<char> lastByteOf(const std::string& path);

/// Whether something stands under the path (links followed).
bool fileExists(const std::string& path);

/// The names in a directory, one level, as the file system lists them, without "." and "..".
Result<std::vector<std::string>> namesInDirectory(const std::string& path);

/// Removes the file or link under that name, never the target of a link. A missing file is no
/// error.
Status unlinkIfThere(const std::string& path);
/// Removes without looking at the outcome.
void removeSilently(const std::string& path) noexcept;

/// A file that appears under its name whole or not at all. It is written in the same directory
/// without a name, and commit() puts it in its place. Without commit() nothing is left behind, even
/// if the process is killed. Only on file systems that know no files without a name is it written
/// under a hidden temporary one, which a killed process leaves there. A link under the name is
/// replaced, not written through; a directory, FIFO or device there is an error.
class AtomicFile {
public:
    /// Who may read and write the file.
    enum class Access {
        /// Those who may read and write the regular file that it replaces: its permission bits,
        /// and as far as the system allows its owner, group and POSIX access list. What cannot be
        /// kept opens the file to nobody else. Where no file is replaced, as a new one.
        ofReplacedFile,
        /// As the umask says, whatever stands there.
        ofNewFile
    };

    /// Opens the temporary file. `mode` are a new file's permission bits before the umask.
    static Result<AtomicFile> create(const std::string& path, unsigned mode = 0666,
                                     Access access = Access::ofReplacedFile);
    /// A finished file of this process's own, on the same file system as `to`. commit() moves it
    /// over `to`, with the access of the file replaced. Without commit() it stays where it is.
    static Result<AtomicFile> ofFinished(const std::string& from, const std::string& to);
    AtomicFile(AtomicFile&&) noexcept;
    AtomicFile& operator=(AtomicFile&&) noexcept;
    ~AtomicFile();

    /// The identity of the file, which it keeps when it is put in its place.
    Result<FileIdentity> identity() const;
    Status write(std::string_view bytes);
    /// Lets the system copy what it can of an open file, from its position to its end. The bytes do
    /// not pass through this process, and a file system on which files share blocks copies none. It
    /// may stop anywhere, even at once: the file's position tells how far it came, and the caller
    /// writes the rest.
    void takeFrom(const Descriptor& source);
    /// Puts the file in its place, flushed to disk. After a failed write it fails with the same
    /// reason.
    Status commit();

    // The steps of commit(), for files that come to their places together, in this order.

    /// Waits until the content is on the disk.
    Status flush();
    /// Puts the file in its place without waiting for the disk. That is enough for a file that can
    /// be made again: if the machine fails, part of it may be missing.
    Status commitUnflushed();
    /// Waits until the name is on the disk.
    Status flushName();

private:
    struct State;
    explicit AtomicFile(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

/// Writes the whole content atomically, flushed to disk, with the access of the file replaced.
Status writeFileAtomically(const std::string& path, std::string_view bytes);

/// Copies a regular file byte for byte to `to`, which appears whole or not at all and has the
/// access of a new file. It does not wait for the disk: the original is there. Memory use does not
/// grow with the file. Returns which file the copy is.
Result<FileIdentity> copyFileAtomically(const std::string& from, const std::string& to);

/// A new file for writing. Whatever stands under its name is removed first, so no link is followed
/// and no other file written to. A directory under that name is an error.
class FreshFile {
public:
    static Result<FreshFile> create(const std::string& path);
    FreshFile(FreshFile&&) noexcept;
    FreshFile& operator=(FreshFile&&) noexcept;
    ~FreshFile();

    /// REQUIRES: not closed.
    Result<FileIdentity> identity() const;
    /// Buffered. Returns the first failure, also at every later call.
    Status write(std::string_view bytes);
    /// Writes what is buffered and closes. Without it the destructor does so, its outcome unseen.
    Status close();

private:
    struct State;
    explicit FreshFile(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

// Paths as texts.

/// "b" of "/a/b", and of "/a/b/" as well: slashes at the end begin no component. The whole text
/// when it holds no slash, "" of "/".
std::string lastPathComponent(const std::string& path);
/// What stands before the last slash: "/a" of "/a/b" and "/a/b" of "/a/b/", "/" of "/b", "." when
/// there is no slash.
std::string directoryOf(const std::string& path);
/// "gz" of "x.fastq.gz"; "" when the last component holds no dot after its first character.
std::string pathExtension(const std::string& name);
/// "x.fastq" of "x.fastq.gz"; the name itself when it has no extension.
std::string withoutPathExtension(const std::string& name);
/// The absolute form, from the current directory; links are not resolved.
std::string absolutePath(const std::string& path);

/// The pieces between the occurrences of `separator`: always one more than there are occurrences.
std::vector<std::string> splitAt(std::string_view text, std::string_view separator);

} // namespace platform
