// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <set>
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

/// The directories in which runs make working copies. Two runs in one directory would remove each
/// other's files, since the names of copies follow from those of the inputs alone. All documents
/// hold copies of one object, which share what they know. Main thread only.
class DirectoriesInUse {
public:
    /// Until it ends, the directory is in use.
    class Use {
    public:
        ~Use() { m_directories->erase(m_directory); }
        Use(const Use&) = delete;
        Use& operator=(const Use&) = delete;

    private:
        friend class DirectoriesInUse;
        Use(std::shared_ptr<std::set<std::string>> directories, std::string directory);

        std::shared_ptr<std::set<std::string>> m_directories;
        std::string m_directory;
    };

    /// Null where the directory is in use already, by whatever path.
    std::unique_ptr<Use> use(const std::string& directory);

private:
    /// Links resolved. Owned by the uses as well.
    std::shared_ptr<std::set<std::string>> m_directories =
        std::make_shared<std::set<std::string>>();
};

} // namespace ui
