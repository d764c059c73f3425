// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <chrono>
#include <csignal>
#include <thread>

#include "platform/descriptor.h"

namespace ui {

class AppDelegate;

/// Quits the program without questions when SIGTERM, SIGHUP or SIGINT comes, as at the end of a
/// desktop session or of a terminal. At most one object at a time.
///
/// It handles the signals and does not block them: programs that the toolkit starts would inherit a
/// mask. A signal that was ignored at the program's start stays ignored.
class EndingSignals {
public:
    /// At the first signal the application quits; while a patient runs, it ends at once with status
    /// 0. It also ends at once if this object still lives after the patience, because the main
    /// thread is busy. Further signals change nothing: the end of a session sends several.
    explicit EndingSignals(AppDelegate& delegate,
                           std::chrono::milliseconds patience = std::chrono::seconds(1));
    ~EndingSignals();
    EndingSignals(const EndingSignals&) = delete;
    EndingSignals& operator=(const EndingSignals&) = delete;

private:
    static constexpr std::array kSignals = {SIGTERM, SIGHUP, SIGINT};

    void watch();

    AppDelegate& m_delegate;
    /// endAtOnce() may take another second.
    const std::chrono::milliseconds m_patience;
    /// The ends of a pipe: the watching thread reads, the handler writes.
    platform::Descriptor m_readEnd;
    platform::Descriptor m_writeEnd;
    std::array<struct sigaction, kSignals.size()> m_before = {};
    std::thread m_thread;
};

} // namespace ui
