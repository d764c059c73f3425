// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <set>
#include <string>

#include "document/input_discovery.h"

// Which document a path means, and which directories have a run at work.

namespace ui {

/// The absolute path with links resolved, as far as the file system can.
std::string withoutLinks(const std::string& path);

/// "VEXtAFile" for a name with the extension "vexta", in any letter case; else "FASTQ".
std::string documentTypeOf(const std::string& path);

/// What a path opens.
struct DocumentFile {
    std::string path; ///< absolute
    std::string type; ///< see documentTypeOf()
    /// Of the type "FASTQ": what findMate() gave.
    document::ReadPairFiles reads;
    /// The same text for every path that opens the same document: links are resolved, and either
    /// file of a pair gives its read-1 file. Empty for a file without a mate, which is no document.
    std::string key;
};

DocumentFile documentFileAt(const std::string& path);

/// The file to open for `path`. For a directory it is the read-1 file of its first complete pair,
/// by rising sample number, else by name. Everything else stands for itself, and so does a
/// directory without a pair.
std::string fileStandingFor(const std::string& path);

/// The directories in which runs make working copies. Two runs in one directory would remove each
/// other's files, since a copy's name follows from its input's alone. Every document holds a copy
/// of one object, and all copies share what they know. Main thread only.
class DirectoriesInUse {
public:
    /// Keeps its directory in use until its end.
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

    /// Null if the directory is in use already, by whatever path.
    std::unique_ptr<Use> use(const std::string& directory);

private:
    /// With links resolved. The uses own it as well.
    std::shared_ptr<std::set<std::string>> m_directories =
        std::make_shared<std::set<std::string>>();
};

} // namespace ui
