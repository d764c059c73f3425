// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/interrupt.h"

#include <csignal>
#include <future>
#include <stdexcept>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

void neverCalled() {
    throw std::logic_error("no interrupt was to be taken");
}

TEST(InterruptWatch, CallsItsFirstActionAndTheProgramGoesOn) {
    std::signal(SIGINT, SIG_DFL);
    std::promise<void> called;
    const cli::SignalBlock block;
    const cli::InterruptWatch watch([&called] { called.set_value(); });
    EXPECT_FALSE(watch.interrupted());
    kill(getpid(), SIGINT);
    called.get_future().wait();
    EXPECT_TRUE(watch.interrupted());
}

TEST(InterruptWatch, LeavesAnIgnoredInterruptIgnored) {
    std::signal(SIGINT, SIG_IGN);
    {
        const cli::SignalBlock block;
        const cli::InterruptWatch watch(neverCalled);
        kill(getpid(), SIGINT);
    }
    kill(getpid(), SIGINT);
    std::signal(SIGINT, SIG_DFL);
}

TEST(InterruptWatch, TakesItWhicheverOtherWatchThereIs) {
    std::signal(SIGINT, SIG_DFL);
    std::promise<void> called;
    const cli::SignalBlock block;
    // Its thread was there first.
    const cli::TerminationWatch others({SIGTERM, SIGHUP});
    const cli::InterruptWatch watch([&called] { called.set_value(); });
    kill(getpid(), SIGINT);
    called.get_future().wait();
    EXPECT_TRUE(watch.interrupted());
}

TEST(TerminationWatch, TakesASignalThatCameBeforeItsEnd) {
    const auto endWithOnePending = [] {
        std::signal(SIGINT, SIG_DFL);
        const cli::SignalBlock block;
        kill(getpid(), SIGINT);
        { cli::TerminationWatch({SIGINT}).end(); }
        _exit(0);
    };
    EXPECT_EXIT(endWithOnePending(), testing::ExitedWithCode(130), "");
}

TEST(SignalBlock, LeavesTheOtherSignalsAlone) {
    const cli::SignalBlock block({SIGTERM});
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    EXPECT_EQ(sigismember(&mask, SIGTERM), 1);
    EXPECT_EQ(sigismember(&mask, SIGINT), 0);
}

TEST(SignalBlock, HandsTheSignalMaskBackAsItWas) {
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    { const cli::SignalBlock block; }
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal));
    }
    EXPECT_EQ(sigismember(&after, SIGUSR1), 0);
}

} // namespace
