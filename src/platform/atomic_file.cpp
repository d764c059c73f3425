// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"
#include "platform/numbers.h"
#include "platform/program_end.h"
#include "platform/replaced_access.h"

namespace platform {

struct AtomicFile::State {
    std::string path;
    /// Empty while the file has no name at all, and once it stands under its own.
    std::string temporaryPath;
    /// Whether the file stays under that name when it does not come to its place.
    bool wasFinished = false;
    UnfinishedFiles unfinished;

    Descriptor file;
    Status outcome;

    ~State() {
        if (!temporaryPath.empty() && !wasFinished) {
            removeSilently(temporaryPath);
        }
    }

    Status fail(std::string_view action, int errorNumber) {
        outcome = systemError(action, path, errorNumber);
        return outcome;
    }
};

namespace {

/// Until the file has the rights of the one that it replaces.
constexpr mode_t kOwnerOnly = 0600;

/// A name that begins with "." is passed over by whoever lists the directory for inputs.
std::string temporaryNameBeside(const std::string& path) {
    std::random_device random;
    return directoryOf(path) + formatted("/.vexta-%08x%08x", random(), random());
}

/// Flushes the directory's entry of a file that was renamed; 0, or the errno.
int flushDirectory(const std::string& path) {
    const Descriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isOpen()) {
        // A directory may be writable and yet not readable; then this is the system's business.
        return errno == EACCES ? 0 : errno;
    }
    // Some network file systems cannot flush a directory and say EINVAL.
    return ::fsync(directory.number()) == 0 || errno == EINVAL ? 0 : errno;
}

/// Replacing a device or a FIFO by a file would surprise its owner; so would /dev/null.
bool isOtherThanRegularFile(const std::string& path) {
    struct stat facts = {};
    return ::stat(path.c_str(), &facts) == 0 && !S_ISREG(facts.st_mode);
}

/// The permission bits of a file that replaces none. It may replace a link, and then is open to
/// nobody to whom the link's target was closed.
mode_t modeOfNewFile(const std::string& path, unsigned mode) {
    struct stat target = {};
    const auto wanted = static_cast<mode_t>(mode);
    return ::stat(path.c_str(), &target) == 0 ? wanted & target.st_mode : wanted;
}

/// Tries `make` with temporary names beside `path` until one is free. Leaves the name that was made
/// in `made` and returns 0, or the errno.
template <class Make>
int underTemporaryName(const std::string& path, std::string& made, Make make) {
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string name = temporaryNameBeside(path);
        if (make(name.c_str())) {
            made = name;
            return 0;
        }
        if (errno != EEXIST) {
            return errno;
        }
    }
    return EEXIST;
}

std::string nameOfDescriptor(const Descriptor& file) {
    return "/proc/self/fd/" + std::to_string(file.number());
}

/// A file in the directory of `path` that has no name yet, so that the system removes it however
/// this process ends; not open where the file system, or a missing /proc, does not allow it.
Descriptor openWithoutName(const std::string& path, mode_t mode) {
    Descriptor file(::open(directoryOf(path).c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
    return file.isOpen() && fileExists(nameOfDescriptor(file)) ? std::move(file) : Descriptor();
}

/// Puts a file without a name under a temporary one, since only a named file can replace another.
/// 0, or the errno.
int nameTemporarily(const Descriptor& file, const std::string& path, std::string& temporaryPath) {
    const std::string source = nameOfDescriptor(file);
    return underTemporaryName(path, temporaryPath, [&source](const char* name) {
        return ::linkat(AT_FDCWD, source.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
    });
}

} // namespace

AtomicFile::AtomicFile(std::unique_ptr<State> state) : m_state(std::move(state)) {}
AtomicFile::AtomicFile(AtomicFile&&) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&&) noexcept = default;
AtomicFile::~AtomicFile() = default;

Result<AtomicFile> AtomicFile::create(const std::string& path, unsigned mode, Access access) {
    if (isOtherThanRegularFile(path)) {
        return Error{"Cannot replace " + path + ": it is not a regular file"};
    }
    std::optional<ReplacedAccess> replaced;
    auto openedWith = static_cast<mode_t>(mode);
    if (access == Access::ofReplacedFile) {
        replaced = ReplacedAccess::of(path);
        openedWith = replaced ? kOwnerOnly : modeOfNewFile(path, mode);
    }
    auto state = std::make_unique<State>();
    state->path = path;
    state->file = openWithoutName(path, openedWith);
    if (!state->file.isOpen()) {
        const EndPutOff untilNoted;
        const int errorNumber =
            underTemporaryName(path, state->temporaryPath, [&](const char* name) {
                state->file = Descriptor(
                    ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, openedWith));
                return state->file.isOpen();
            });
        if (errorNumber != 0) {
            return systemError("create", path, errorNumber);
        }
        state->unfinished.add(state->temporaryPath);
    }
    if (const int errorNumber = replaced ? replaced->giveTo(state->file.number()) : 0;
        errorNumber != 0) {
        return systemError("set the permissions of", path, errorNumber);
    }
    return AtomicFile(std::move(state));
}

Result<AtomicFile> AtomicFile::ofFinished(const std::string& from, const std::string& to) {
    auto state = std::make_unique<State>();
    state->path = to;
    state->temporaryPath = from;
    state->wasFinished = true;
    state->file = Descriptor(::open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!state->file.isOpen()) {
        return systemError("open", from, errno);
    }
    const auto replaced = ReplacedAccess::of(to);
    if (const int errorNumber = replaced ? replaced->giveTo(state->file.number()) : 0;
        errorNumber != 0) {
        return systemError("set the permissions of", to, errorNumber);
    }
    return AtomicFile(std::move(state));
}

Result<FileIdentity> AtomicFile::identity() const {
    return identityOf(m_state->file.number(), m_state->path);
}

Status AtomicFile::write(std::string_view bytes) {
    if (!m_state->outcome) {
        return m_state->outcome;
    }
    const int errorNumber = writeAll(m_state->file.number(), bytes);
    return errorNumber == 0 ? Status() : m_state->fail("write", errorNumber);
}

void AtomicFile::takeFrom(int descriptor) {
    constexpr std::size_t kAtMost = std::size_t{1} << 30;
    ssize_t count = 0;
    do {
        count = ::copy_file_range(descriptor, nullptr, m_state->file.number(), nullptr, kAtMost, 0);
    } while (count > 0 || (count < 0 && errno == EINTR));
}

Status AtomicFile::commit() {
    if (Status flushed = flush(); !flushed) {
        return flushed;
    }
    if (Status inPlace = commitUnflushed(); !inPlace) {
        return inPlace;
    }
    return flushName();
}

Status AtomicFile::flush() {
    State& state = *m_state;
    if (state.outcome && ::fsync(state.file.number()) != 0) {
        return state.fail("write", errno);
    }
    return state.outcome;
}

Status AtomicFile::commitUnflushed() {
    State& state = *m_state;
    if (!state.outcome) {
        return state.outcome;
    }
    // Else it could come to its place behind a clean-up that looked there.
    const EndPutOff untilInPlace;
    if (state.temporaryPath.empty()) {
        const int errorNumber = nameTemporarily(state.file, state.path, state.temporaryPath);
        if (errorNumber != 0) {
            return state.fail("create", errorNumber);
        }
        state.unfinished.add(state.temporaryPath);
    }
    if (const int errorNumber = state.file.close(); errorNumber != 0) {
        return state.fail("write", errorNumber);
    }
    if (::rename(state.temporaryPath.c_str(), state.path.c_str()) != 0) {
        return state.fail("replace", errno);
    }
    state.temporaryPath.clear();
    state.unfinished.clear();
    return {};
}

Status AtomicFile::flushName() {
    State& state = *m_state;
    const int errorNumber = flushDirectory(directoryOf(state.path));
    return errorNumber == 0 ? Status() : state.fail("flush the directory of", errorNumber);
}

Status writeFileAtomically(const std::string& path, std::string_view bytes) {
    Result<AtomicFile> file = AtomicFile::create(path);
    if (!file) {
        return file.error();
    }
    if (Status written = file.value().write(bytes); !written) {
        return written;
    }
    return file.value().commit();
}

} // namespace platform
