// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Who may write in a folder is read from owner and mode. Access lists need no look of their own: on
// local file systems, a list that gives anybody the right to write shows it in the mode, whose
// group bits are the list's mask, the most that any named user or group can have. Elsewhere (NFS,
// SMB, FUSE) a server or a program decides, whatever the mode says. Tested by
// folder_rights_test.cpp.
#include "platform/folder_rights.h"

#include <deque>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/local_file_system.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

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
