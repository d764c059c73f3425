// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A file that appears under its name whole or not at all: written beside its place, flushed, then
// renamed over what stands there. POSIX makes the rename one step; the flush before it keeps a
// machine that fails from showing the new name with no content behind it. While it is written the
// file has no name (O_TMPFILE), so the system itself removes it however this process ends. File
// systems without such files get a hidden temporary name.
//
// To the system, a file that is moved over another is a new one, with the rights of a new file:
// whoever closed the old one to others would find it open. So the new one takes over the old one's
// rights, before anything is written into it.
//
// A copy lets the system move the bytes (copy_file_range), which on some file systems moves none.
//
// Tested by atomic_file_test.cpp, flushed_files_test.cpp, copy_file_test.cpp and
// replaced_access_test.cpp.
#include "platform/files.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "platform/descriptor.h"
#include "platform/numbers.h"
#include "platform/program_end.h"

namespace platform {

// --- The rights of the file that is replaced

namespace {

constexpr const char* kAccessList = "system.posix_acl_access";
/// As much as any file system stores in one attribute.
constexpr std::size_t kLongestAccessList = 65536;
constexpr mode_t kPermissions = 0777; // without set-user-ID, set-group-ID and sticky
constexpr mode_t kOwnersPermissions = 0700;

/// Empty where there is none, as with most files and on many file systems; nullopt where one that
/// may be there cannot be read.
std::optional<std::string> accessListOf(const std::string& path) {
    std::string list(kLongestAccessList, '\0');
    const ssize_t size = ::lgetxattr(path.c_str(), kAccessList, list.data(), list.size());
    if (size < 0 && errno != ENODATA && errno != EOPNOTSUPP) {
        return std::nullopt;
    }
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return list;
}

/// Whether the file ends up in `group`.
bool changeOwnership(int descriptor, uid_t owner, gid_t group) {
    struct stat facts = {};
    if (::fstat(descriptor, &facts) != 0) {
        return false;
    }
    if (facts.st_uid == owner && facts.st_gid == group) {
        return true;
    }
    // Only root gives files away. A group can be kept by its members. Where neither is allowed, and
    // on file systems that know no owners, the content counts for more.
    const bool both = ::fchown(descriptor, owner, group) == 0;
    return both || facts.st_gid == group ||
           ::fchown(descriptor, static_cast<uid_t>(-1), group) == 0;
}

/// The bits for a file whose group is another one than the old file's: what both that group and
/// everybody else were allowed. Members of the new group were among the others, and those of the
/// old one now are.
mode_t withoutGroup(mode_t permissions) {
    const mode_t shared = (permissions >> 3U) & permissions & 07U;
    return (permissions & kOwnersPermissions) | (shared << 3U) | shared;
}

/// Takes away the access list that a directory gave the file; whether none is left.
bool removeAccessList(int descriptor) {
    return ::fremovexattr(descriptor, kAccessList) == 0 || errno == ENODATA || errno == EOPNOTSUPP;
}

/// Who may read and write a regular file that another is about to replace.
///
/// The new file gets the permission bits, the owner, the group and the POSIX access list, as far as
/// the system allows. What cannot be kept never widens the access: bits that were meant for a group
/// do not pass to another one, and without its access list a file is its owner's alone. Bits that
/// run a program as someone else (set-user-ID, set-group-ID) are not taken over.
class ReplacedAccess {
public:
    /// Of the file itself under `path`, not of one that a link there leads to; nullopt where no
    /// regular file stands.
    static std::optional<ReplacedAccess> of(const std::string& path);

    /// Gives an open file this access. REQUIRES: the file is this process's own, and nobody else
    /// can open it yet.
    Status giveTo(const Descriptor& file) const;

private:
    ReplacedAccess() = default;

    uid_t m_owner = 0;
    gid_t m_group = 0;
    mode_t m_permissions = 0;
    /// As the system stores it; empty where the file has none.
    std::string m_accessList;
};

std::optional<ReplacedAccess> ReplacedAccess::of(const std::string& path) {
    struct stat facts = {};
    if (::lstat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) {
        return std::nullopt;
    }
    ReplacedAccess access;
    access.m_owner = facts.st_uid;
    access.m_group = facts.st_gid;
    access.m_permissions = facts.st_mode & kPermissions;
    if (auto list = accessListOf(path)) {
        access.m_accessList = std::move(*list);
    } else {
        // The group's bits may be a list's bound, wider than the group's own right.
        access.m_permissions &= kOwnersPermissions;
    }
    return access;
}

Status ReplacedAccess::giveTo(const Descriptor& file) const {
    const int descriptor = file.number();
    mode_t permissions = m_permissions;
    const bool groupKept = changeOwnership(descriptor, m_owner, m_group);
    // The list that a directory gives its new files could open this one to more than the old.
    const bool listRemoved = removeAccessList(descriptor);
    const auto setList = [&] {
        return ::fsetxattr(descriptor, kAccessList, m_accessList.data(), m_accessList.size(), 0);
    };
    if (m_accessList.empty()) {
        permissions = groupKept ? permissions : withoutGroup(permissions);
        permissions &= listRemoved ? kPermissions : kOwnersPermissions;
    } else if (!groupKept || setList() != 0) {
        // With a list, the group's bits bound everyone in it, and say little about the group.
        permissions &= kOwnersPermissions;
    }
    struct stat facts = {};
    if (::fstat(descriptor, &facts) != 0) {
        return reasonOf(errno);
    }
    // Some file systems have one set of permissions for all files, and refuse to change it.
    const bool alreadySo = (facts.st_mode & kPermissions) == permissions;
    return alreadySo || ::fchmod(descriptor, permissions) == 0 ? Status() : reasonOf(errno);
}

} // namespace

// --- The file that replaces it

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

    Status fail(std::string_view action, const Error& reason) {
        outcome = systemError(action, path, reason);
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

/// Flushes the directory's entry of a file that was renamed.
Status flushDirectory(const std::string& path) {
    const Descriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isOpen()) {
        // A directory may be writable and yet not readable; then this is the system's business.
        return errno == EACCES ? Status() : reasonOf(errno);
    }
    // Some network file systems cannot flush a directory and say EINVAL.
    return ::fsync(directory.number()) == 0 || errno == EINVAL ? Status() : reasonOf(errno);
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

/// Tries `make` with temporary names beside `path` until one is free. Returns the name that was
/// made.
template <class Make>
Result<std::string> underTemporaryName(const std::string& path, Make make) {
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        std::string name = temporaryNameBeside(path);
        if (make(name.c_str())) {
            return name;
        }
        if (errno != EEXIST) {
            return reasonOf(errno);
        }
    }
    return reasonOf(EEXIST);
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

/// Puts a file without a name under a temporary one, which it returns: only a named file can
/// replace another.
Result<std::string> nameTemporarily(const Descriptor& file, const std::string& path) {
    const std::string source = nameOfDescriptor(file);
    return underTemporaryName(path, [&source](const char* name) {
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
        const Result<std::string> made = underTemporaryName(path, [&](const char* name) {
            state->file = Descriptor(
                ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, openedWith));
            return state->file.isOpen();
        });
        if (!made) {
            return systemError("create", path, made.error());
        }
        state->temporaryPath = made.value();
        state->unfinished.add(state->temporaryPath);
    }
    if (const Status given = replaced ? replaced->giveTo(state->file) : Status(); !given) {
        return systemError("set the permissions of", path, given.error());
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
    if (const Status given = replaced ? replaced->giveTo(state->file) : Status(); !given) {
        return systemError("set the permissions of", to, given.error());
    }
    return AtomicFile(std::move(state));
}

Result<FileIdentity> AtomicFile::identity() const {
    return identityOf(m_state->file, m_state->path);
}

Status AtomicFile::write(std::string_view bytes) {
    if (!m_state->outcome) {
        return m_state->outcome;
    }
    const Status written = m_state->file.write(bytes);
    return written ? written : m_state->fail("write", written.error());
}

void AtomicFile::takeFrom(const Descriptor& source) {
    constexpr std::size_t kAtMost = std::size_t{1} << 30;
    ssize_t count = 0;
    do {
        count = ::copy_file_range(source.number(), nullptr, m_state->file.number(), nullptr,
                                  kAtMost, 0);
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
        return state.fail("write", reasonOf(errno));
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
        const Result<std::string> name = nameTemporarily(state.file, state.path);
        if (!name) {
            return state.fail("create", name.error());
        }
        state.temporaryPath = name.value();
        state.unfinished.add(state.temporaryPath);
    }
    if (const Status closed = state.file.close(); !closed) {
        return state.fail("write", closed.error());
    }
    if (::rename(state.temporaryPath.c_str(), state.path.c_str()) != 0) {
        return state.fail("replace", reasonOf(errno));
    }
    state.temporaryPath.clear();
    state.unfinished.clear();
    return {};
}

Status AtomicFile::flushName() {
    State& state = *m_state;
    const Status flushed = flushDirectory(directoryOf(state.path));
    return flushed ? flushed : state.fail("flush the directory of", flushed.error());
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

// --- Copies

namespace {

/// Writes what the system did not copy, which is all of it on some file systems. A lasting trouble
/// shows here.
Status writeRest(const Descriptor& source, const std::string& from, AtomicFile& target) {
    std::vector<char> block(std::size_t{256} * 1024);
    while (true) {
        const Result<std::size_t> count = source.read(block.data(), block.size());
        if (!count) {
            return systemError("read", from, count.error());
        }
        if (count.value() == 0) {
            return {};
        }
        if (Status written = target.write({block.data(), count.value()}); !written) {
            return written;
        }
    }
}

} // namespace

Result<FileIdentity> copyFileAtomically(const std::string& from, const std::string& to) {
    const Result<Descriptor> source = openRegularFileDescriptor(from);
    if (!source) {
        return source.error();
    }
    Result<AtomicFile> target = AtomicFile::create(to, 0666, AtomicFile::Access::ofNewFile);
    if (!target) {
        return target.error();
    }
    Result<FileIdentity> made = target.value().identity();
    if (!made) {
        return made;
    }
    target.value().takeFrom(source.value());
    if (const Status written = writeRest(source.value(), from, target.value()); !written) {
        return written.error();
    }
    if (const Status inPlace = target.value().commitUnflushed(); !inPlace) {
        return inPlace.error();
    }
    return made;
}

} // namespace platform
