// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Is the file under a name still ours? There are two ways to know. Either we remember which file it
// is: device, number, owner and time of birth, since a number alone is soon given to another file.
// Or nobody else can write in the folder, nor lead its path elsewhere.
//
// Who may write in a folder is read from owner and mode. Access lists need no look of their own: on
// local file systems, a list that gives anybody the right to write shows it in the mode, whose
// group bits are the list's mask, the most that any named user or group can have. Elsewhere (NFS,
// SMB, FUSE) a server or a program decides, whatever the mode says.
//
// Tested by file_identity_test.cpp.
#include "platform/file_identity.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <deque>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

/// Whether statfs() told of one of this machine's own file systems, on which nobody but its kernel
/// decides: owner, mode and POSIX access list are all the rights there are, and a file keeps its
/// number as long as it is there. Others (SMB, FUSE, FAT) may well do the same, but need not.
bool isLocalFileSystem(const struct statfs& facts) noexcept {
    constexpr long kZfs = 0x2fc12fc1; // not in the kernel's header
    constexpr std::array<long, 9> kLocal = {
        EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC,       BTRFS_SUPER_MAGIC,
        F2FS_SUPER_MAGIC, TMPFS_MAGIC,           RAMFS_MAGIC,
        SQUASHFS_MAGIC,   OVERLAYFS_SUPER_MAGIC, kZfs};
    const auto magic = static_cast<long>(facts.f_type);
    return std::find(kLocal.begin(), kLocal.end(), magic) != kLocal.end();
}

constexpr unsigned kFactsAsked = STATX_BASIC_STATS | STATX_BTIME;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

bool keepsNumbers(const Descriptor& file) {
    struct statfs facts = {};
    return ::fstatfs(file.number(), &facts) == 0 &&
           (isLocalFileSystem(facts) || static_cast<long>(facts.f_type) == NFS_SUPER_MAGIC);
}

Result<struct statx> examine(const Descriptor& file, const std::string& path) {
    struct statx facts = {};
    if (::statx(file.number(), "", AT_EMPTY_PATH, kFactsAsked, &facts) != 0) {
        return systemError("examine", path, errno);
    }
    return facts;
}

FileIdentity identityFrom(const struct statx& facts, const Descriptor& file) {
    FileIdentity identity;
    identity.device = ::makedev(facts.stx_dev_major, facts.stx_dev_minor);
    identity.number = keepsNumbers(file) ? facts.stx_ino : 0;
    identity.owner = facts.stx_uid;
    if ((facts.stx_mask & STATX_BTIME) != 0) {
        identity.born = facts.stx_btime.tv_sec * kNanosecondsPerSecond + facts.stx_btime.tv_nsec;
    }
    return identity;
}

/// As many as the system follows.
constexpr int kMostLinks = 40;

bool modeTellsWhoWrites(const fs::path& path) {
    struct statfs facts = {};
    return ::statfs(path.c_str(), &facts) == 0 && isLocalFileSystem(facts);
}

bool isOursOrRoots(const struct stat& facts) noexcept {
    return facts.st_uid == ::geteuid() || facts.st_uid == 0;
}

bool othersMayWrite(const struct stat& facts) noexcept {
    return (facts.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}

/// Whether nobody else can add or remove entries of the real directory `place`.
bool isClosed(const fs::path& place) {
    struct stat facts = {};
    return ::lstat(place.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && isOursOrRoots(facts) &&
           !othersMayWrite(facts) && modeTellsWhoWrites(place);
}

/// Whether nobody else can put something in the place of `entry`, which stands in `place`.
bool isHeldFast(const fs::path& place, const struct stat& entry) {
    struct stat facts = {};
    if (isClosed(place)) {
        return true;
    }
    return ::lstat(place.c_str(), &facts) == 0 && isOursOrRoots(facts) &&
           (facts.st_mode & S_ISVTX) != 0 && isOursOrRoots(entry) && modeTellsWhoWrites(place);
}

} // namespace

bool areOneEntry(const struct stat& one, const struct stat& other) noexcept {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

Result<FileIdentity> identityOf(const Descriptor& file, const std::string& path) {
    const Result<struct statx> facts = examine(file, path);
    return facts ? Result<FileIdentity>(identityFrom(facts.value(), file)) : facts.error();
}

Result<FileIdentity> identityOfOwnNewFile(const std::string& path, const FileIdentity& earlier) {
    const Descriptor entry(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    if (!entry.isOpen()) {
        return systemError("examine", path, errno);
    }
    const Result<struct statx> examined = examine(entry, path);
    if (!examined) {
        return examined.error();
    }
    const struct statx& facts = examined.value();
    if (!S_ISREG(facts.stx_mode)) {
        return Error{path + " is not a regular file"};
    }
    const FileIdentity identity = identityFrom(facts, entry);
    const bool isOlder = identity.born != 0 && earlier.born != 0 && identity.born < earlier.born;
    if (facts.stx_uid != ::geteuid() || facts.stx_nlink != 1 || isOlder) {
        return Error{path + " is not the file that was made there"};
    }
    return identity;
}

bool onlyWeCanWriteIn(const std::string& directory) {
    fs::path place = "/"; // walked so far, without links
    const fs::path absolute = absolutePath(directory);
    std::deque<fs::path> left(absolute.begin(), absolute.end());
    int links = 0;
    while (!left.empty()) {
        const fs::path name = left.front();
        left.pop_front();
        if (name.empty() || name == "/" || name == ".") {
            continue;
        }
        if (name == "..") {
            place = place.parent_path();
            continue;
        }
        struct stat entry = {};
        if (::lstat((place / name).c_str(), &entry) != 0 || !isHeldFast(place, entry)) {
            return false;
        }
        if (!S_ISLNK(entry.st_mode)) {
            place /= name;
            continue;
        }
        std::error_code failure;
        const fs::path target = fs::read_symlink(place / name, failure);
        if (failure || ++links > kMostLinks) {
            return false;
        }
        left.insert(left.begin(), target.begin(), target.end());
        place = target.is_absolute() ? fs::path("/") : place;
    }
    return isClosed(place);
}

} // namespace platform
