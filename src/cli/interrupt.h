// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>
#include <vector>

namespace cli {

/// Blocks signals that end a program in the making thread and so in every thread that starts later,
/// until its end: only a watch takes them then. Make it before any other thread, since one that
/// does not block them would be ended by them. A signal that the program was started with ignored
/// (nohup) stays ignored.
class SignalBlock {
public:
    explicit SignalBlock(const std::vector<int>& signals = {SIGINT, SIGTERM, SIGHUP});
    ~SignalBlock();
    SignalBlock(const SignalBlock&) = delete;
    SignalBlock& operator=(const SignalBlock&) = delete;

private:
    sigset_t m_maskBefore{};
};

/// Takes signals in a thread of its own, which may do what a signal handler may not. No two watches
/// of one signal at a time. REQUIRES: a SignalBlock that outlives it.
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

/// Ends the program at once at any of the signals while it lives: children and unfinished files go
/// with it, and the exit status is 128 and the signal's number. REQUIRES: a SignalBlock that
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
