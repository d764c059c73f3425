// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Signals that end a program, taken by a thread. A signal handler may do next to nothing: not take
// a lock, not print, not remove a file. So every thread blocks these signals and one thread waits
// for them with sigwait(), where it may do all that. Before that thread ends it takes what is still
// pending: whoever asks afterwards whether an interrupt came gets the final answer.
//
// Tested by interrupt_test.cpp and held_run_program_test.cpp.
#include "cli/interrupt.h"

#include <utility>

#include "cli/arguments.h"
#include "platform/program_end.h"

namespace cli {
namespace {

/// Wakes a watch's thread for its end; sent to that thread alone.
constexpr int kEndSignal = SIGUSR1;
/// What a shell reports for a program that a signal ended is this and the signal's number.
constexpr int kEndedBySignal = 128;

bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

SignalBlock::SignalBlock(const std::vector<int>& signals) {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, kEndSignal);
    for (const int signal : signals) {
        sigaddset(&blocked, signal);
    }
    pthread_sigmask(SIG_BLOCK, &blocked, &m_maskBefore);
}

SignalBlock::~SignalBlock() {
    pthread_sigmask(SIG_SETMASK, &m_maskBefore, nullptr);
}

SignalWatch::SignalWatch(const std::vector<int>& signals, std::function<void(int)> taken)
    : m_taken(std::move(taken)) {
    sigemptyset(&m_signals);
    sigaddset(&m_signals, kEndSignal);
    for (const int signal : signals) {
        if (!isIgnored(signal)) {
            sigaddset(&m_signals, signal);
        }
    }
    m_thread = std::thread([this] { watch(); });
}

SignalWatch::~SignalWatch() {
    end();
}

void SignalWatch::end() {
    if (m_thread.joinable()) {
        m_ended = true;
        pthread_kill(m_thread.native_handle(), kEndSignal);
        m_thread.join();
    }
}

void SignalWatch::watch() {
    for (int signal = 0; !m_ended;) {
        if (sigwait(&m_signals, &signal) == 0 && signal != kEndSignal) {
            m_taken(signal);
        }
    }
    constexpr timespec kNoTime{};
    for (int signal = 0; (signal = sigtimedwait(&m_signals, nullptr, &kNoTime)) > 0;) {
        if (signal != kEndSignal) {
            m_taken(signal);
        }
    }
}

InterruptWatch::InterruptWatch(std::function<void()> first)
    : m_first(std::move(first)), m_watch({SIGINT}, [this](int) { take(); }) {}

bool InterruptWatch::end() {
    m_watch.end();
    return m_interrupted;
}

void InterruptWatch::take() {
    if (m_interrupted.exchange(true)) {
        platform::endAtOnce(static_cast<int>(Outcome::interrupted));
    }
    m_first();
}

TerminationWatch::TerminationWatch(const std::vector<int>& signals)
    : m_watch(signals, [](int signal) { platform::endAtOnce(kEndedBySignal + signal); }) {}

} // namespace cli
