// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>

namespace cli {

/// Blocks SIGINT in the making thread and so in every thread that starts later, until its end. Make
/// it before any other thread. A program that was started with SIGINT ignored goes on ignoring it.
class InterruptBlock {
public:
    InterruptBlock();
    ~InterruptBlock();
    InterruptBlock(const InterruptBlock&) = delete;
    InterruptBlock& operator=(const InterruptBlock&) = delete;

private:
    sigset_t m_maskBefore{};
};

/// Takes SIGINT in a thread of its own, which may do what a signal handler may not. At most one at
/// a time. REQUIRES: an InterruptBlock that outlives it.
class InterruptWatch {
public:
    /// `first` is called at the first SIGINT. At the second `atOnce` is called, running children
    /// are ended, and the process exits with status 130. Both run in the watch's thread.
    InterruptWatch(std::function<void()> first, std::function<void()> atOnce);
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Takes no further SIGINT; whether one was taken. The answer is final.
    bool end();

    bool interrupted() const noexcept { return m_interrupted; }

private:
    void watch();

    std::function<void()> m_first;
    std::function<void()> m_atOnce;
    std::atomic<bool> m_interrupted{false};
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

} // namespace cli
