// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The end of a program that is told to go in the middle of its work. The order matters.
//
// 1. The end waits for those who put it off, and then lets nobody put it off any more. From then on
//    no file and no child comes into being, and a run that fails because its child was ended gets
//    no further than its files. A step that lasts longer than the end waits goes on beside it.
// 2. Children are ended and waited for. A child that lives could make its file again.
// 3. What is noted as unfinished is removed, the latest first: a directory after its files.
//
// One recursive mutex does the putting off: whoever puts the end off holds it, and the end takes it
// and never gives it back. Mutex and notes are never destroyed, since threads may use them until
// the process is gone. Tested by program_end_test.cpp and held_run_program_test.cpp.
#include "platform/program_end.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <utility>

#include <unistd.h>

#include "platform/child_process.h"

namespace platform {
namespace {

// Whoever puts the end off longer, and a child that even SIGKILL does not end, wait for a disk or
// a server that does not answer. The rest is then done without them.
constexpr std::chrono::milliseconds kPatienceWithSteps(600);
constexpr std::chrono::milliseconds kPatienceWithChildren(300);

std::recursive_mutex& endMutex() {
    static auto& mutex = *new std::recursive_mutex;
    return mutex;
}

} // namespace

void endAtOnce(int status) {
    static std::atomic<bool> begun{false};
    while (begun.exchange(true)) {
        ::pause();
    }
    beginEnd(kPatienceWithSteps);
    refuseNewChildren();
    killRunningChildren();
    waitUntilNoChildRuns(kPatienceWithChildren);
    removeUnfinishedFiles();
    ::_exit(status);
}

bool beginEnd(std::chrono::milliseconds patience) {
    const auto last = std::chrono::steady_clock::now() + patience;
    while (!endMutex().try_lock()) {
        if (std::chrono::steady_clock::now() >= last) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

EndPutOff::EndPutOff() {
    endMutex().lock();
}

EndPutOff::~EndPutOff() {
    endMutex().unlock();
}

/// What all objects of the program note.
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
    // Once the end has begun, nobody gets past this line. Otherwise a run that failed because its
    // child was ended would leave its files and race to an exit status of its own.
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
