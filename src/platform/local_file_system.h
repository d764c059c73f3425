// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>

#include <linux/magic.h>
#include <sys/vfs.h>

namespace platform {

/// Whether statfs() told of one of this machine's own file systems, on which nobody but its kernel
/// decides: owner, mode and POSIX access list are all the rights there are, and a file keeps its
/// number as long as it is there. Others (SMB, FUSE, FAT) may well do the same, but need not.
inline bool isLocalFileSystem(const struct statfs& facts) noexcept {
    constexpr long kZfs = 0x2fc12fc1; // not in the kernel's header
    constexpr std::array<long, 9> kLocal = {
        EXT4_SUPER_MAGIC, XFS_SUPER_MAGIC,       BTRFS_SUPER_MAGIC,
        F2FS_SUPER_MAGIC, TMPFS_MAGIC,           RAMFS_MAGIC,
        SQUASHFS_MAGIC,   OVERLAYFS_SUPER_MAGIC, kZfs};
    const auto magic = static_cast<long>(facts.f_type);
    return std::find(kLocal.begin(), kLocal.end(), magic) != kLocal.end();
}

} // namespace platform
