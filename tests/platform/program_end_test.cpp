// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/program_end.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/child_process.h"
#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

using platform::EndPutOff;
using platform::UnfinishedFiles;

/// Runs `body` in a process of its own and returns its exit status; -1 when a signal ended it.
int statusOf(const std::function<void()>& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        body();
        ::_exit(99);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(EndAtOnce, RemovesWhatIsUnfinishedAndNothingElse) {
    const support::TempDir dir;
    dir.write("finished", "");
    dir.write("forgotten", "");
    dir.write("taken over", "");
    const int status = statusOf([&dir] {
        UnfinishedFiles files;
        files.add(dir.write("finished", ""));
        files.clear();
        { UnfinishedFiles().add(dir.file("forgotten")); }
        std::filesystem::create_directory(dir.file("directory"));
        files.addDirectory(dir.file("directory"));
        files.add(dir.write("directory/file", ""));
        files.add(dir.file("never made"));
        UnfinishedFiles others;
        others.add(dir.write("joined", ""));
        files.join(std::move(others));
        const UnfinishedFiles moved = std::move(files);
        platform::endAtOnce(143);
    });
    EXPECT_EQ(status, 143);
    for (const char* name : {"finished", "forgotten", "taken over"}) {
        EXPECT_TRUE(platform::fileExists(dir.file(name))) << name;
    }
    EXPECT_EQ(platform::namesInDirectory(dir.path()).value().size(), 3U);
}

TEST(EndAtOnce, LeavesADirectoryThatHoldsSomebodyElsesFile) {
    const support::TempDir dir;
    statusOf([&dir] {
        UnfinishedFiles files;
        std::filesystem::create_directory(dir.file("directory"));
        files.addDirectory(dir.file("directory"));
        dir.write("directory/stranger", "");
        platform::endAtOnce(0);
    });
    EXPECT_TRUE(platform::fileExists(dir.file("directory/stranger")));
}

TEST(EndPutOff, LetsTheEndBeginOnlyWhenItIsOver) {
    const int status = statusOf([] {
        std::promise<void> tried;
        std::promise<void> begun;
        std::atomic<bool> over{false};
        std::thread step([&] {
            const EndPutOff untilDone;
            begun.set_value();
            tried.get_future().wait();
            over = true;
        });
        begun.get_future().wait();
        const bool early = platform::beginEnd(std::chrono::milliseconds(1));
        tried.set_value();
        const bool late = platform::beginEnd(std::chrono::minutes(5));
        ::_exit(!early && late && over ? 4 : 1);
    });
    EXPECT_EQ(status, 4);
}

TEST(EndAtOnce, WaitsForAStepThatIsUnderWay) {
    constexpr std::size_t kFiles = 100; // so many that an end that does not wait would be over
    const support::TempDir dir;
    const int status = statusOf([&dir] {
        std::atomic<bool> begun{false};
        std::thread step([&] {
            const EndPutOff untilNoted;
            begun = true;
            for (std::size_t i = 0; i < kFiles; ++i) {
                dir.write(std::to_string(i), "");
            }
        });
        while (!begun) {
            std::this_thread::yield();
        }
        platform::endAtOnce(5);
    });
    EXPECT_EQ(status, 5);
    EXPECT_EQ(platform::namesInDirectory(dir.path()).value().size(), kFiles);
}

TEST(EndAtOnce, DoesNotWaitForAStepThatHangs) {
    const int status = statusOf([] {
        std::atomic<bool> begun{false};
        std::thread step([&] {
            const EndPutOff forEver;
            begun = true;
            while (true) {
                ::pause();
            }
        });
        while (!begun) {
            std::this_thread::yield();
        }
        platform::endAtOnce(6);
    });
    EXPECT_EQ(status, 6);
}

TEST(EndAtOnce, LetsNothingNewComeIntoBeing) {
    const support::TempDir dir;
    const int status = statusOf([&dir] {
        platform::beginEnd(std::chrono::seconds(60));
        std::atomic<int> aboutTo{0};
        std::thread([&] {
            ++aboutTo;
            static_cast<void>(platform::writeFileAtomically(dir.file("atomic"), "text"));
            ::_exit(1);
        }).detach();
        std::thread([&] {
            ++aboutTo;
            static_cast<void>(platform::runShellCommand("exit 0"));
            ::_exit(2);
        }).detach();
        // A run whose files were noted gets no further.
        std::thread([&] {
            ++aboutTo;
            const EndPutOff step;
            ::_exit(3);
        }).detach();
        while (aboutTo < 3) {
            std::this_thread::yield();
        }
        platform::endAtOnce(7);
    });
    EXPECT_EQ(status, 7);
    EXPECT_TRUE(platform::namesInDirectory(dir.path()).value().empty());
}

TEST(EndAtOnce, EndsChildrenBeforeItRemovesWhatTheyMake) {
    const support::TempDir dir;
    const int status = statusOf([&dir] {
        UnfinishedFiles files;
        files.add(dir.file("copy"));
        std::thread([&dir] {
            // A child that makes its file anew whenever it is gone.
            static_cast<void>(
                platform::runShellCommand("while :; do : > \"" + dir.file("copy") + "\"; done"));
        }).detach();
        while (!platform::fileExists(dir.file("copy"))) {
            std::this_thread::yield();
        }
        platform::endAtOnce(8);
    });
    EXPECT_EQ(status, 8);
    EXPECT_FALSE(platform::fileExists(dir.file("copy")));
}

TEST(EndAtOnce, IsDoneByOneOfSeveralCallers) {
    const int status = statusOf([] {
        for (int i = 0; i < 4; ++i) {
            std::thread([] { platform::endAtOnce(9); }).detach();
        }
        platform::endAtOnce(9);
    });
    EXPECT_EQ(status, 9);
}

} // namespace
