// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"

namespace platform {
namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;

/// The bytes of an open regular file, block by block.
class RegularFileStream final : public ByteStream {
public:
    explicit RegularFileStream(Descriptor file) : m_file(std::move(file)) {}

private:
    bool nextBlock() override {
        const std::size_t count = readPastBlock(m_block.get(), kBlockSize);
        setBlock(m_block.get(), count);
        return count > 0;
    }

    std::size_t readPastBlock(char* to, std::size_t size) override {
        const std::int64_t count = readSome(m_file.number(), to, size);
        if (count < 0) {
            setError(std::generic_category().message(static_cast<int>(-count)));
            return 0;
        }
        return static_cast<std::size_t>(count);
    }

    Descriptor m_file;
    // Not cleared: a small file, like the one of the settings that rules read again and again,
    // would cost more for that than for its bytes.
    std::unique_ptr<char[]> m_block = std::make_unique_for_overwrite<char[]>(kBlockSize);
};

Error notRegular(const std::string& path) {
    return Error{path + " is not a regular file"};
}

} // namespace

Result<int> openRegularFileDescriptor(const std::string& path) {
    // Without O_NONBLOCK, opening a FIFO would wait for a writer. For a regular file it means
    // nothing.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        return systemError("open", path, errno);
    }
    struct stat facts = {};
    if (::fstat(file.number(), &facts) != 0) {
        return systemError("examine", path, errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        return notRegular(path);
    }
    return file.release();
}

Result<std::unique_ptr<ByteStream>> openRegularFile(const std::string& path,
                                                    const std::optional<FileIdentity>& expected) {
    const Result<int> opened = openRegularFileDescriptor(path);
    if (!opened) {
        return opened.error();
    }
    Descriptor file(opened.value());
    if (expected) {
        const Result<FileIdentity> identity = identityOf(file.number(), path);
        if (!identity) {
            return identity.error();
        }
        if (!(identity.value() == *expected)) {
            return Error{path + " is not the file that was made there"};
        }
    }
    return std::unique_ptr<ByteStream>(std::make_unique<RegularFileStream>(std::move(file)));
}

Result<std::string> readWholeFile(const std::string& path, std::size_t most) {
    const Result<std::uint64_t> size = regularFileSize(path);
    const auto stream = openRegularFile(path);
    if (!size || !stream) {
        return size ? stream.error() : size.error();
    }
    const auto tooLarge = [&](std::uint64_t bytes) { return bytes > most; };
    const Error tooLargeError{"Cannot read " + path + ": it is larger than " +
                              std::to_string(most) + " bytes"};
    if (tooLarge(size.value())) {
        return tooLargeError;
    }
    std::string content;
    content.reserve(static_cast<std::size_t>(size.value()));
    ByteStream& bytes = *stream.value();
    while (const std::size_t available = bytes.available()) {
        content.append(bytes.next(), available);
        bytes.skip(available);
        if (tooLarge(content.size())) {
            return tooLargeError;
        }
    }
    if (bytes.failed()) {
        return Error{"Cannot read " + path + ": " + bytes.error()};
    }
    return content;
}

Result<std::uint64_t> regularFileSize(const std::string& path) {
    struct stat facts = {};
    if (::stat(path.c_str(), &facts) != 0) {
        return systemError("examine", path, errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        return notRegular(path);
    }
    return static_cast<std::uint64_t>(facts.st_size);
}

Result<char> lastByteOf(const std::string& path) {
    const Result<int> opened = openRegularFileDescriptor(path);
    if (!opened) {
        return opened.error();
    }
    const Descriptor file(opened.value());
    char byte = 0;
    if (::lseek(file.number(), -1, SEEK_END) < 0) {
        return systemError("read", path, errno);
    }
    const std::int64_t count = readSome(file.number(), &byte, 1);
    if (count != 1) {
        return systemError("read", path, count < 0 ? static_cast<int>(-count) : EIO);
    }
    return byte;
}

bool fileExists(const std::string& path) {
    struct stat facts = {};
    return ::stat(path.c_str(), &facts) == 0;
}

Result<std::vector<std::string>> namesInDirectory(const std::string& path) {
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(path.c_str()), &::closedir);
    if (!directory) {
        return systemError("open directory", path, errno);
    }
    std::vector<std::string> names;
    // readdir() tells its end from a failure by errno alone.
    errno = 0;
    while (const dirent* entry = ::readdir(directory.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") {
            names.push_back(std::move(name));
        }
        errno = 0;
    }
    if (errno != 0) {
        return systemError("list directory", path, errno);
    }
    return names;
}

Status unlinkIfThere(const std::string& path) {
    // A read-only file system refuses to remove even what is not there.
    struct stat facts = {};
    if (::lstat(path.c_str(), &facts) != 0 && errno == ENOENT) {
        return {};
    }
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
        return systemError("remove", path, errno);
    }
    return {};
}

void removeSilently(const std::string& path) noexcept {
    ::unlink(path.c_str());
}

} // namespace platform
