// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/descriptor.h"
#include "platform/result.h"

struct stat;

namespace platform {

// A name says little about the file under it: others may have put a file of theirs there.

/// Tells a file from any other one that stands, or stood, under the same name. Content and names
/// may change. A default-made identity is that of no file.
struct FileIdentity {
    std::uint64_t device = 0;
    /// The system may give it to another file as soon as this one is gone. 0 on file systems that
    /// may change it while the file is there.
    std::uint64_t number = 0;
    std::uint32_t owner = 0;
    /// When the file was made, in nanoseconds by the file system's own clock; 0 where the file
    /// system does not keep it.
    std::int64_t born = 0;

    /// What either side does not know is no difference. Some network file systems tell the time of
    /// birth once, and not the next time.
    bool operator==(const FileIdentity& other) const noexcept {
        const auto agree = [](auto one, auto another) {
            return one == 0 || another == 0 || one == another;
        };
        return device == other.device && owner == other.owner && agree(number, other.number) &&
               agree(born, other.born);
    }
};

/// Whether both are facts of one entry, looked up at about the same time.
bool areOneEntry(const struct stat& one, const struct stat& other) noexcept;

/// The identity of an open file. `path` is for the message of an error.
Result<FileIdentity> identityOf(const Descriptor& file, const std::string& path);

/// The identity of the entry under `path`. Fails unless it is a regular file that has this one
/// name, belongs to this process's user and was not made before `earlier`, as far as the file
/// system tells. A link is not followed. The error names the path.
Result<FileIdentity> identityOfOwnNewFile(const std::string& path, const FileIdentity& earlier);

/// Whether nobody but this process's user and root can put, replace or remove an entry of the
/// directory, or lead its path elsewhere. False in doubt: for a path that cannot be examined and
/// for a file system whose rights are decided elsewhere.
///
/// The directory must belong to us or root, and nobody else may write in it, sticky bit or not. The
/// same holds for each directory that the path leads through, links included. There, however, a
/// sticky bit is enough: it keeps an entry that belongs to us or root in its place.
bool onlyWeCanWriteIn(const std::string& directory);

} // namespace platform
