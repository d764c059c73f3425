// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <list>
#include <string>
#include <vector>

namespace platform {

/// Files that would be in the way, or would pass for more than they are, if the program ended now:
/// working copies, temporary files. They are removed where it ends at once (program_end.h), for as
/// long as they are noted here; who made them removes or finishes them otherwise.
///
/// A file that we make under a name where somebody else's may stand is made and noted under one
/// EndPutOff. Different objects may be used by different threads at once.
class UnfinishedFiles {
public:
    UnfinishedFiles() = default;
    UnfinishedFiles(UnfinishedFiles&& other) noexcept;
    UnfinishedFiles& operator=(UnfinishedFiles&& other) noexcept;
    /// Notes them no longer. Removes nothing.
    ~UnfinishedFiles();

    /// A file under that name is unfinished. It need not be there.
    void add(const std::string& path);
    /// A directory that is ours and empty but for what is noted after it.
    void addDirectory(const std::string& path);
    /// Notes what `other` notes.
    void join(UnfinishedFiles other);
    void clear();

private:
    struct Entry {
        std::string path;
        bool isDirectory = false;
    };
    struct All;
    friend void removeUnfinishedFiles() noexcept;
    void note(const std::string& path, bool isDirectory);

    std::vector<std::list<Entry>::iterator> m_entries;
};

/// Removes whatever is noted, the latest first. For the end of the program alone.
void removeUnfinishedFiles() noexcept;

} // namespace platform
