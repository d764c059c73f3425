// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>
#include <vector>

namespace cli {

/// While it lives, blocks signals that end a program, so that only a watch takes them. It does so
/// in the thread that makes it and in every thread that this one starts later. Make it before any
/// other thread: one that does not block them would end the program. A signal that was ignored when
/// the program started (nohup) stays ignored.
class SignalBlock {
public:
    explicit SignalBlock(const std::vector<int>& signals = {SIGINT, SIGTERM, SIGHUP});
    ~SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t m_maskBefore{};
};

/// Takes signals in a thread of its own, which may do what a signal handler may not. REQUIRES: a
/// SignalBlock that outlives it; no other watch of the same signal at the time.
class SignalWatch {
public:
    /// `taken` is called with each of the signals, in the watch's thread.
    SignalWatch(const std::vector<int>& signals, std::function<void(int)> taken);
    ~SignalWatch();
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;

    /// Takes what came before, and no further signal.
    void end();

private:
    void watch();

    sigset_t m_signals{};
    std::function<void(int)> m_taken;
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

/// Takes SIGINT during an analysis: the first is a request, the second ends the program at once
/// with status 130. REQUIRES: a SignalBlock that outlives it.
class InterruptWatch {
public:
    /// `first` is called at the first SIGINT, in a thread of the watch's own.
    explicit InterruptWatch(std::function<void()> first);

    /// Takes no further SIGINT; whether one was taken. The answer is final.
    bool end();

    bool interrupted() const noexcept { return m_interrupted; }

private:
    void take();

    std::function<void()> m_first;
    std::atomic<bool> m_interrupted{false};
    SignalWatch m_watch;
};

/// While it lives, any of the signals ends the program at once: children and unfinished files go
/// with it, and the exit status is 128 plus the signal's number. REQUIRES: a SignalBlock that
/// outlives it.
class TerminationWatch {
public:
    explicit TerminationWatch(const std::vector<int>& signals);

    /// Hands the signals to whoever watches them next.
    void end() { m_watch.end(); }

private:
    SignalWatch m_watch;
};

} // namespace cli
