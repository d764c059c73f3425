// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

namespace ui {

class AppDelegate;

/// Takes SIGTERM, SIGHUP and SIGINT, as the end of a desktop session or of a terminal sends them,
/// for a program with windows: it quits without questions. At most one at a time.
///
/// The signals are handled, not blocked: a program that the toolkit starts would inherit a mask. A
/// signal that the program was started with ignored stays ignored.
class EndingSignals {
public:
    /// At the first signal the application quits; where a patient is running, it ends at once, with
    /// status 0. So it does where quitting has not led to the end of this object within the
    /// patience, the main thread being busy. Further signals change nothing: who ends a session
    /// sends several.
    explicit EndingSignals(AppDelegate& delegate,
                           std::chrono::milliseconds patience = std::chrono::seconds(1));
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

private:
    static constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};

    void watch();

    AppDelegate& m_delegate;
    /// endAtOnce() takes up to a second on top.
    const std::chrono::milliseconds m_patience;
    /// A handler writes what came, the watching thread reads it.
    std::array<int, 2> m_pipe = {-1, -1};
    std::array<struct sigaction, kSignals.size()> m_before = {};
    std::thread m_thread;
};

} // namespace ui
