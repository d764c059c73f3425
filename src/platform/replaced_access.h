// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include <sys/types.h>

namespace platform {

/// Who may read and write a regular file that another is about to replace. For the sources of this
/// room.
///
/// The new file gets the permission bits, the owner, the group and the POSIX access list, as far as
/// the system allows. What cannot be kept is never made good by wider access: bits that were meant
/// for a group do not pass to another one, and without its access list a file is its owner's alone.
/// Bits that run a program as someone else (set-user-ID, set-group-ID) are not taken over.
class ReplacedAccess {
public:
    /// Of the file itself under `path`, not of one that a link there leads to; nullopt where no
    /// regular file stands.
    static std::optional<ReplacedAccess> of(const std::string& path);

    /// Gives an open file this access: 0, or the errno. REQUIRES: the file is this process's own,
    /// and nobody else can open it yet.
    int giveTo(int descriptor) const;

private:
    ReplacedAccess() = default;

    uid_t m_owner = 0;
    gid_t m_group = 0;
    mode_t m_permissions = 0;
    /// As the system stores it; empty where the file has none.
    std::string m_accessList;
};

} // namespace platform
