// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/unfinished_files.h"

#include <algorithm>
#include <mutex>
#include <utility>

#include <unistd.h>

#include "platform/end_put_off.h"

namespace platform {

/// What all objects of the program note. Never destroyed: the end may come at any time.
struct UnfinishedFiles::All {
    std::mutex mutex;
    std::list<Entry> entries;

    static All& get() {
        static All& all = *new All;
        return all;
    }
};

UnfinishedFiles::UnfinishedFiles(UnfinishedFiles&& other) noexcept
    : m_entries(std::exchange(other.m_entries, {})) {}

UnfinishedFiles& UnfinishedFiles::operator=(UnfinishedFiles&& other) noexcept {
    std::swap(m_entries, other.m_entries);
    return *this;
}

UnfinishedFiles::~UnfinishedFiles() {
    clear();
}

void UnfinishedFiles::add(const std::string& path) {
    note(path, false);
}

void UnfinishedFiles::addDirectory(const std::string& path) {
    note(path, true);
}

void UnfinishedFiles::note(const std::string& path, bool isDirectory) {
    const EndPutOff untilNoted;
    All& all = All::get();
    const std::lock_guard lock(all.mutex);
    m_entries.reserve(m_entries.size() + 1);
    m_entries.push_back(all.entries.insert(all.entries.end(), Entry{path, isDirectory}));
}

void UnfinishedFiles::join(UnfinishedFiles other) {
    m_entries.insert(m_entries.end(), other.m_entries.begin(), other.m_entries.end());
    other.m_entries.clear();
}

void UnfinishedFiles::clear() {
    if (m_entries.empty()) {
        return;
    }
    // Once the end has begun, nobody goes on from here: a run that failed because its child was
    // ended would otherwise leave its files, and race to an exit status of its own.
    const EndPutOff untilForgotten;
    All& all = All::get();
    const std::lock_guard lock(all.mutex);
    for (const auto& entry : m_entries) {
        all.entries.erase(entry);
    }
    m_entries.clear();
}

void removeUnfinishedFiles() noexcept {
    UnfinishedFiles::All& all = UnfinishedFiles::All::get();
    const std::lock_guard lock(all.mutex);
    std::for_each(all.entries.rbegin(), all.entries.rend(), [](const auto& entry) {
        if (entry.isDirectory) {
            ::rmdir(entry.path.c_str());
        } else {
            ::unlink(entry.path.c_str());
        }
    });
}

} // namespace platform
