// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace platform {

/// Whether nobody but this process's user and root can put, replace or remove an entry of the
/// directory, or lead its path elsewhere. Rather false than wrong: a path that cannot be examined
/// or a file system whose rights are decided elsewhere gives false.
///
/// The directory must belong to us or root and be writable by nobody else; one that all may write
/// is not safe because it is sticky. The same holds for each directory that the path leads through,
/// links included, with one difference: there, the sticky bit keeps what belongs to us or root in
/// its place.
bool onlyWeCanWriteIn(const std::string& directory);

} // namespace platform
