// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/child_process.h"

#include <atomic>
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

using platform::escapedForDoubleQuotes;
using platform::runShellCommand;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(ShellCommand, GivesItsExitCode) {
    for (const int code : {0, 2, 127}) {
        const auto run = runShellCommand("exit " + std::to_string(code));
        ASSERT_TRUE(run.ok());
        EXPECT_EQ(run.value().exitCode, code);
        EXPECT_EQ(run.value().signal, 0);
    }
}

TEST(ShellCommand, GivesTheSignalThatEndedIt) {
    const auto run = runShellCommand("kill -TERM $$");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().signal, SIGTERM);
}

TEST(ShellCommand, MayPrintMoreThanAPipeHolds) {
    const auto run = runShellCommand("head -c 1000000 /dev/zero");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().exitCode, 0);
}

TEST(ShellCommand, KeepsTheEndOfWhatItsChildSaysOnStandardError) {
    const auto run = runShellCommand("echo out; echo first >&2; echo last >&2; exit 1");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().exitCode, 1);
    EXPECT_EQ(run.value().standardError, "first\nlast\n");
}

TEST(ShellCommand, MayFillBothPipesAndKeepsABoundedPart) {
    const auto run = runShellCommand("head -c 1000000 /dev/zero >&2; head -c 1000000 /dev/zero; "
                                     "head -c 1000000 /dev/zero >&2; echo last >&2");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().standardError.size(), platform::kStandardErrorKept);
    EXPECT_THAT(run.value().standardError, testing::EndsWith("last\n"));
}

/// Runs both commands in one shell, the second when the program has seen all that the first did to
/// the outputs and waits for more.
auto runInTwoSteps(const std::string& first, const std::string& second) {
    const support::TempDir directory;
    const std::string done = directory.file("done");
    const std::string next = directory.file("next");
    std::atomic<bool> ended{false};
    std::thread gate([&, stat = "/proc/self/task/" + std::to_string(::gettid()) + "/stat"] {
        // Whatever happens to a pipe wakes who waits for it before the shell goes on.
        while (!ended && (!platform::fileExists(done) ||
                          support::readFile(stat).find(") S ") == std::string::npos)) {
            std::this_thread::yield();
        }
        directory.write("next", "");
    });
    auto run = runShellCommand(first + "; : > '" + done + "'; while [ ! -e '" + next +
                               "' ]; do sleep 0.01; done; " + second);
    ended = true;
    gate.join();
    return run;
}

TEST(ShellCommand, KeepsWhatIsSaidAfterEitherOutputWasClosed) {
    const auto closesOutput = runInTwoSteps("exec 1>&-", "echo last >&2");
    ASSERT_TRUE(closesOutput.ok());
    EXPECT_EQ(closesOutput.value().standardError, "last\n");
    const auto closesErrors =
        runInTwoSteps("echo first >&2; exec 2>&-", "head -c 1000000 /dev/zero; exit 3");
    ASSERT_TRUE(closesErrors.ok());
    EXPECT_EQ(closesErrors.value().standardError, "first\n");
    EXPECT_EQ(closesErrors.value().exitCode, 3);
}

TEST(ShellCommand, ReadsNothingFromStandardInput) {
    const support::TempDir directory;
    const std::string output = directory.file("output");
    const auto run = runShellCommand("cat > \"" + output + "\"");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().exitCode, 0);
    EXPECT_EQ(support::readFile(output), "");
}

TEST(ShellCommand, RunsInAProcessGroupOfItsOwn) {
    const support::TempDir directory;
    const std::string output = directory.file("output");
    ASSERT_TRUE(runShellCommand("read -r pid name state parent group rest < /proc/$$/stat; "
                                "echo $group > \"" +
                                output + "\"")
                    .ok());
    const long group = std::stol(support::readFile(output));
    EXPECT_NE(group, static_cast<long>(::getpgrp()));
}

TEST(ShellCommand, DoesNotInheritBlockedOrIgnoredSignals) {
    sigset_t blocked;
    sigset_t previousMask;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, &previousMask), 0);
    const auto previousHandler = std::signal(SIGPIPE, SIG_IGN);
    const auto blockedRun = runShellCommand("kill -TERM $$; exit 0");
    const auto ignoredRun = runShellCommand("kill -PIPE $$; exit 0");
    std::signal(SIGPIPE, previousHandler);
    ::pthread_sigmask(SIG_SETMASK, &previousMask, nullptr);
    ASSERT_TRUE(blockedRun.ok() && ignoredRun.ok());
    EXPECT_EQ(blockedRun.value().signal, SIGTERM);
    EXPECT_EQ(ignoredRun.value().signal, SIGPIPE);
}

TEST(ShellCommand, RefusesANulByteThatWouldCutIt) {
    const auto run = runShellCommand(std::string("exit 0\0; exit 1", 15));
    ASSERT_FALSE(run.ok());
    EXPECT_THAT(run.error().message, HasSubstr("NUL"));
}

TEST(KillRunningChildren, EndsTheShellAndWhatItStarted) {
    const support::TempDir directory;
    const std::string started = directory.file("started");
    int signalSeen = 0;
    std::atomic<bool> ended{false};
    std::thread runner([&] {
        const auto run = runShellCommand("sleep 1000 & : > \"" + started + "\"; wait");
        signalSeen = run.ok() ? run.value().signal : -1;
        ended = true;
    });
    while (!platform::fileExists(started)) {
        std::this_thread::yield();
    }
    // A child can be heard of a moment before it is listed.
    while (!ended) {
        platform::killRunningChildren();
        std::this_thread::yield();
    }
    // The pipe is held by the sleeping program as well: the runner ends only if both are gone.
    runner.join();
    EXPECT_EQ(signalSeen, SIGKILL);
}

TEST(KillRunningChildren, DoesNothingWhenNoneRuns) {
    ASSERT_TRUE(runShellCommand(":").ok());
    platform::killRunningChildren();
    const auto run = runShellCommand("exit 3");
    ASSERT_TRUE(run.ok());
    EXPECT_EQ(run.value().exitCode, 3);
}

TEST(EscapedForDoubleQuotes, LeavesAnOrdinaryNameAsItIs) {
    const std::string name = "x_S1_L001_R1_001.fastq (copy) 'a' & b; *?!~#%";
    EXPECT_EQ(escapedForDoubleQuotes(name), name);
}

TEST(EscapedForDoubleQuotes, PutsABackslashBeforeWhatAShellExpands) {
    EXPECT_EQ(escapedForDoubleQuotes(R"($a`b\c"d)"), R"(\$a\`b\\c\"d)");
}

TEST(EscapedForDoubleQuotes, LetsTheShellSeeTheVeryName) {
    const support::TempDir directory;
    const std::filesystem::path previous = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    for (const std::string name :
         {"$(touch x)", "`touch x`", "\"; touch x; \"", "${HOME}", "$HOME", "$$", "a\nb", "a\\",
          "a\\\nb", "\\\\$(touch x)", "*", "~", "!!", "'; touch x; '", " a  b ", "\xFF"}) {
        const auto run =
            runShellCommand("printf %s \"" + escapedForDoubleQuotes(name) + "\" > out");
        EXPECT_TRUE(run.ok() && run.value().exitCode == 0) << name;
        EXPECT_EQ(support::readFile("out"), name);
    }
    std::filesystem::current_path(previous);
    EXPECT_THAT(platform::namesInDirectory(directory.path()).value(), ElementsAre("out"));
}

TEST(RefuseNewChildren, LetsNoneStart) {
    const auto startRefused = [] {
        platform::refuseNewChildren();
        const auto run = runShellCommand("exit 0");
        ::_exit(run.ok() ? 1 : 0);
    };
    EXPECT_EXIT(startRefused(), testing::ExitedWithCode(0), "");
}

} // namespace
