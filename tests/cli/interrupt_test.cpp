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
    throw std::logic_error("no second interrupt was sent");
}

TEST(InterruptWatch, CallsItsFirstActionAndTheProgramGoesOn) {
    std::signal(SIGINT, SIG_DFL);
    std::promise<void> called;
    const cli::InterruptBlock block;
    const cli::InterruptWatch watch([&called] { called.set_value(); }, neverCalled);
    EXPECT_FALSE(watch.interrupted());
    kill(getpid(), SIGINT);
    called.get_future().wait();
    EXPECT_TRUE(watch.interrupted());
}

TEST(InterruptWatch, LeavesAnIgnoredInterruptIgnored) {
    std::signal(SIGINT, SIG_IGN);
    {
        const cli::InterruptBlock block;
        const cli::InterruptWatch watch(neverCalled, neverCalled);
        kill(getpid(), SIGINT);
    }
    kill(getpid(), SIGINT);
    std::signal(SIGINT, SIG_DFL);
}

TEST(InterruptBlock, HandsTheSignalMaskBackAsItWas) {
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    { const cli::InterruptBlock block; }
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    EXPECT_EQ(sigismember(&before, SIGINT), sigismember(&after, SIGINT));
    EXPECT_EQ(sigismember(&after, SIGUSR1), 0);
}

} // namespace
