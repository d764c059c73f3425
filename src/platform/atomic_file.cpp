// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cerrno>
#include <cstdio>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/c_locale.h"
#include "platform/descriptor.h"

namespace platform {

struct AtomicFile::State {
    std::string path;
    /// Empty once the file stands under its own name.
    std::string temporaryPath;
    Descriptor file;
    Status outcome;

    ~State() {
        if (!temporaryPath.empty()) {
            removeSilently(temporaryPath);
        }
    }

    Status fail(std::string_view action, int errorNumber) {
        outcome = systemError(action, path, errorNumber);
        return outcome;
    }
};

namespace {

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

} // namespace

AtomicFile::AtomicFile(std::unique_ptr<State> state) : m_state(std::move(state)) {}
AtomicFile::AtomicFile(AtomicFile&&) noexcept = default;
AtomicFile& AtomicFile::operator=(AtomicFile&&) noexcept = default;
AtomicFile::~AtomicFile() = default;

Result<AtomicFile> AtomicFile::create(const std::string& path, unsigned mode) {
    if (isOtherThanRegularFile(path)) {
        return Error{"Cannot replace " + path + ": it is not a regular file"};
    }
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string temporaryPath = temporaryNameBeside(path);
        Descriptor file(::open(temporaryPath.c_str(),
                               O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                               static_cast<mode_t>(mode)));
        if (file.isOpen()) {
            auto state = std::make_unique<State>();
            state->path = path;
            state->temporaryPath = temporaryPath;
            state->file = std::move(file);
            return AtomicFile(std::move(state));
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return systemError("create", path, errno);
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
    State& state = *m_state;
    if (!state.outcome) {
        return state.outcome;
    }
    if (::fsync(state.file.number()) != 0) {
        return state.fail("write", errno);
    }
    if (const int errorNumber = state.file.close(); errorNumber != 0) {
        return state.fail("write", errorNumber);
    }
    if (::rename(state.temporaryPath.c_str(), state.path.c_str()) != 0) {
        return state.fail("replace", errno);
    }
    state.temporaryPath.clear();
    if (const int errorNumber = flushDirectory(directoryOf(state.path)); errorNumber != 0) {
        return state.fail("flush the directory of", errorNumber);
    }
    return {};
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
