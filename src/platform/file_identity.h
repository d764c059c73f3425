// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/result.h"

namespace platform {

/// What tells a file from any other one that stands, or stood, under the same name. Its content and
/// its names may change. A default-made identity is that of no file.
struct FileIdentity {
    std::uint64_t device = 0;
    /// Given to another file, maybe, as soon as this one is gone. 0 on file systems that may change
    /// it while the file is there.
    std::uint64_t number = 0;
    std::uint32_t owner = 0;
    /// When the file was made, in nanoseconds by the file system's own clock; 0 where the file
    /// system does not keep it.
    std::int64_t born = 0;

    /// What either side does not know is no difference: some network file systems tell the time of
    /// birth at one look and not at the next.
    bool operator==(const FileIdentity& other) const noexcept {
        const auto agree = [](auto one, auto another) {
            return one == 0 || another == 0 || one == another;
        };
        return device == other.device && owner == other.owner && agree(number, other.number) &&
               agree(born, other.born);
    }
};

Result<FileIdentity> identityOf(int descriptor, const std::string& path);

/// The identity of the entry under `path`. An error, which names the path, unless it is a regular
/// file that has this one name, belongs to this process's user and was not made before `earlier`
/// was, as far as the file system tells. A link is not followed.
Result<FileIdentity> identityOfOwnNewFile(const std::string& path, const FileIdentity& earlier);

} // namespace platform
