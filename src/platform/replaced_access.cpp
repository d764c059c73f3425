// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A file that is moved over another is a new one to the system: it has the rights of a new file,
// and whoever closed the old one to others finds the new one open. So the new one takes over the
// old one's rights, before anything is written into it. Tested by replaced_access_test.cpp.

#include "platform/replaced_access.h"

#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace platform {

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

} // namespace

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

int ReplacedAccess::giveTo(int descriptor) const {
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
        return errno;
    }
    // Some file systems have one set of permissions for all files, and refuse to change it.
    const bool alreadySo = (facts.st_mode & kPermissions) == permissions;
    return alreadySo || ::fchmod(descriptor, permissions) == 0 ? 0 : errno;
}

} // namespace platform
