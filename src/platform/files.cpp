// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Reading files, looking at names, and paths as texts. Inputs come from users, who may name a FIFO
// or a device: only regular files are opened. A stream reads blocks of 256 KiB, and larger pieces
// go straight to where the caller wants them.
//
// Paths are cut as texts, by rules of our own: names of inputs, results and working copies follow
// from them, and std::filesystem's differ: it takes "." for the extension of "a.", and finds no
// name at the end of "/a/b/". Tested by files_test.cpp and paths_test.cpp.
#include "platform/files.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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
        const Result<std::size_t> count = m_file.read(to, size);
        if (!count) {
            setStatus(count.error());
            return 0;
        }
        return count.value();
    }

    Descriptor m_file;
    // Not cleared: a small file, like the one of the settings that rules read again and again,
    // would cost more for that than for its bytes.
    std::unique_ptr<char[]> m_block = std::make_unique_for_overwrite<char[]>(kBlockSize);
};

} // namespace

Result<std::unique_ptr<ByteStream>> openRegularFile(const std::string& path,
                                                    const std::optional<FileIdentity>& expected) {
    Result<Descriptor> file = openRegularFileDescriptor(path);
    if (!file) {
        return file.error();
    }
    if (expected) {
        const Result<FileIdentity> identity = identityOf(file.value(), path);
        if (!identity) {
            return identity.error();
        }
        if (!(identity.value() == *expected)) {
            return Error{path + " is not the file that was made there"};
        }
    }
    return std::unique_ptr<ByteStream>(
        std::make_unique<RegularFileStream>(std::move(file).value()));
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
    if (!bytes.status()) {
        return systemError("read", path, bytes.status().error());
    }
    return content;
}

Result<std::uint64_t> regularFileSize(const std::string& path) {
    struct stat facts = {};
    if (::stat(path.c_str(), &facts) != 0) {
        return systemError("examine", path, errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        return Error{path + " is not a regular file"};
    }
    return static_cast<std::uint64_t>(facts.st_size);
}

Result<char> lastByteOf(const std::string& path) {
    const Result<Descriptor> file = openRegularFileDescriptor(path);
    if (!file) {
        return file.error();
    }
    if (::lseek(file.value().number(), -1, SEEK_END) < 0) {
        return systemError("read", path, errno);
    }
    char byte = 0;
    const Result<std::size_t> count = file.value().read(&byte, 1);
    if (!count || count.value() != 1) {
        return systemError("read", path, count ? reasonOf(EIO) : count.error());
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

// --- Paths as texts

namespace {

/// Where the last component's extension begins, its dot included; npos when there is none.
std::size_t extensionDot(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t first = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = path.rfind('.');
    // A dot that begins a name makes it a hidden one; a dot that ends it has nothing behind it.
    const bool separates = dot != std::string::npos && dot > first && dot + 1 < path.size();
    return separates ? dot : std::string::npos;
}

} // namespace

std::string lastPathComponent(const std::string& path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string::npos) {
        return {};
    }
    const std::size_t slash = path.rfind('/', last);
    const std::size_t first = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(first, last + 1 - first);
}

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string pathExtension(const std::string& name) {
    const std::size_t dot = extensionDot(name);
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string withoutPathExtension(const std::string& name) {
    return name.substr(0, extensionDot(name));
}

std::string absolutePath(const std::string& path) {
    if (path.empty() || path.front() == '/') {
        return path;
    }
    std::error_code failure;
    std::string here = std::filesystem::current_path(failure).string();
    if (failure) {
        // The current directory is gone: the relative path then fails where it is opened.
        return path;
    }
    if (path == "." || path == "./") {
        return here;
    }
    return (here == "/" ? here : here + "/") + (path.rfind("./", 0) == 0 ? path.substr(2) : path);
}

std::vector<std::string> splitAt(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    while (!separator.empty()) {
        const std::size_t end = text.find(separator, begin);
        if (end == std::string_view::npos) {
            break;
        }
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

} // namespace platform
