// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/interrupt.h"

#include <unistd.h>

#include <utility>

#include "cli/outcome.h"
#include "platform/child_process.h"

namespace cli {
namespace {

/// Wakes the watch's thread for its end; sent to that thread alone.
constexpr int kEndSignal = SIGUSR1;

bool interruptIsIgnored() {
    struct sigaction action {};
    return sigaction(SIGINT, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

sigset_t watchedSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, kEndSignal);
    if (!interruptIsIgnored()) {
        sigaddset(&signals, SIGINT);
    }
    return signals;
}

} // namespace

InterruptBlock::InterruptBlock() {
    const sigset_t signals = watchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, &m_maskBefore);
}

InterruptBlock::~InterruptBlock() {
    pthread_sigmask(SIG_SETMASK, &m_maskBefore, nullptr);
}

InterruptWatch::InterruptWatch(std::function<void()> first, std::function<void()> atOnce)
    : m_first(std::move(first)), m_atOnce(std::move(atOnce)), m_thread([this] { watch(); }) {}

InterruptWatch::~InterruptWatch() {
    end();
}

bool InterruptWatch::end() {
    if (m_thread.joinable()) {
        m_ended = true;
        pthread_kill(m_thread.native_handle(), kEndSignal);
        m_thread.join();
    }
    return m_interrupted;
}

void InterruptWatch::watch() {
    const sigset_t signals = watchedSignals();
    for (int signal = 0; !m_ended;) {
        if (sigwait(&signals, &signal) != 0 || signal != SIGINT) {
            continue;
        }
        if (m_interrupted.exchange(true)) {
            m_atOnce();
            platform::refuseNewChildren();
            platform::killRunningChildren();
            _exit(static_cast<int>(Outcome::interrupted));
        }
        m_first();
    }
}

} // namespace cli
