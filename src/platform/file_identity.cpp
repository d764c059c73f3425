// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/file_identity.h"

#include <cerrno>

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <unistd.h>

#include "platform/descriptor.h"
#include "platform/local_file_system.h"

namespace platform {
namespace {

constexpr unsigned kFactsAsked = STATX_BASIC_STATS | STATX_BTIME;
constexpr std::int64_t kNanosecondsPerSecond = 1'000'000'000;

bool keepsNumbers(int descriptor) {
    struct statfs facts = {};
    return ::fstatfs(descriptor, &facts) == 0 &&
           (isLocalFileSystem(facts) || static_cast<long>(facts.f_type) == NFS_SUPER_MAGIC);
}

/// 0, or the errno.
int examine(int descriptor, struct statx& facts) {
    return ::statx(descriptor, "", AT_EMPTY_PATH, kFactsAsked, &facts) == 0 ? 0 : errno;
}

FileIdentity identityFrom(const struct statx& facts, int descriptor) {
    FileIdentity identity;
    identity.device = ::makedev(facts.stx_dev_major, facts.stx_dev_minor);
    identity.number = keepsNumbers(descriptor) ? facts.stx_ino : 0;
    identity.owner = facts.stx_uid;
    if ((facts.stx_mask & STATX_BTIME) != 0) {
        identity.born = facts.stx_btime.tv_sec * kNanosecondsPerSecond + facts.stx_btime.tv_nsec;
    }
    return identity;
}

} // namespace

Result<FileIdentity> identityOf(int descriptor, const std::string& path) {
    struct statx facts = {};
    const int errorNumber = examine(descriptor, facts);
    return errorNumber == 0 ? Result<FileIdentity>(identityFrom(facts, descriptor))
                            : systemError("examine", path, errorNumber);
}

Result<FileIdentity> identityOfOwnNewFile(const std::string& path, const FileIdentity& earlier) {
    const Descriptor entry(::open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct statx facts = {};
    const int errorNumber = entry.isOpen() ? examine(entry.number(), facts) : errno;
    if (errorNumber != 0) {
        return systemError("examine", path, errorNumber);
    }
    if (!S_ISREG(facts.stx_mode)) {
        return Error{path + " is not a regular file"};
    }
    const FileIdentity identity = identityFrom(facts, entry.number());
    const bool isOlder = identity.born != 0 && earlier.born != 0 && identity.born < earlier.born;
    if (facts.stx_uid != ::geteuid() || facts.stx_nlink != 1 || isOlder) {
        return Error{path + " is not the file that was made there"};
    }
    return identity;
}

} // namespace platform
