// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// What kind of document a path means, and whether two paths mean the same one.
namespace ui {

/// The absolute path with links resolved, as far as the file system tells.
std::string withoutLinks(const std::string& path);

/// "VEXtAFile" for a name with the extension "vexta", in any letter case; else "FASTQ".
std::string documentTypeOf(const std::string& path);

/// The same text for every path that opens the same document, links resolved: either file of a pair
/// gives its read-1 file. Empty for a file without a mate, which is no document.
std::string documentKeyOf(const std::string& path);

/// The file that stands for `path`: of a directory the read-1 file of its first complete pair, by
/// rising sample number, else by name; everything else, a directory without a pair included, stands
/// for itself.
std::string fileStandingFor(const std::string& path);

} // namespace ui
