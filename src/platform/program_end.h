// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <list>
#include <string>
#include <vector>

namespace platform {

// A signal may end the program in the middle of a run. Nothing half done may stay behind then.

/// Ends the program now, whatever its threads are doing: ends children with all that they started,
/// removes unfinished files, and exits with that status, without destructors. Takes a second at
/// most where the file system answers. For a thread of its own, never for a signal handler. Of
/// several callers one does it.
[[noreturn]] void endAtOnce(int status);

/// Puts endAtOnce() off while it lives, so that two steps are both done or neither: a file is made
/// and noted as unfinished, a child started and listed. Once the end has begun, the constructor
/// waits for ever: nothing new comes into being behind the clean-up.
///
/// Only for steps that take a moment: the end waits no longer than that. May be nested in one
/// thread. Callable from any thread.
class EndPutOff {
public:
    EndPutOff();
    ~EndPutOff();
    EndPutOff(const EndPutOff&) = delete;
    EndPutOff& operator=(const EndPutOff&) = delete;
};

/// Files that would be in the way, or would pass for more than they are, if the program ended now:
/// working copies, temporary files. endAtOnce() removes them, as long as they are noted here. In
/// any other end, whoever made them removes or finishes them.
///
/// A file whose name may be somebody else's is made and noted under one EndPutOff. Different
/// objects may be used by different threads at once.
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

// Two steps of endAtOnce(), for it and for tests.

/// Waits until nobody puts the end off, at most that long, and from then on lets nobody. False
/// where somebody still does.
bool beginEnd(std::chrono::milliseconds patience);
/// Removes whatever is noted, the latest first.
void removeUnfinishedFiles() noexcept;

} // namespace platform
