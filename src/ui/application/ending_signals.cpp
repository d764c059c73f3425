// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A signal handler may call next to nothing, so it writes one byte into a pipe (the "self-pipe
// trick", D. J. Bernstein). A thread waits at the other end: it asks the main thread to quit, and
// if that is too busy to do so within the patience, it ends the program itself. The destructor
// writes another byte, which ends the watch. A session that ends kills what is left after a few
// seconds, hence the short patience. Tested by ending_signals_test.cpp, which sends signals to a
// real program.
#include "ui/application/ending_signals.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QMetaObject>
#include <QSettings>

#include "platform/program_end.h"
#include "ui/application/app_delegate.h"

namespace ui {
namespace {

constexpr int kSuccess = 0;
constexpr char kSignalCame = 's';
constexpr char kWatchEnds = 'e';

/// The number of the pipe's writing end, for the handler.
std::atomic<int> signalPipe{-1};
static_assert(std::atomic<int>::is_always_lock_free);

/// Nothing but the system call, since the handler calls it.
void tell(int descriptor, char what) {
    while (::write(descriptor, &what, 1) < 0 && errno == EINTR) {
    }
}

extern "C" void endingSignalCame(int /*signal*/) {
    const int savedErrno = errno;
    tell(signalPipe, kSignalCame);
    errno = savedErrno;
}

char nextFrom(const platform::Descriptor& readEnd) {
    char what = 0;
    static_cast<void>(readEnd.read(&what, 1));
    return what;
}

void quit(AppDelegate& delegate) {
    if (!delegate.quitWithoutAsking()) {
        QSettings().sync(); // the windows' places
        platform::endAtOnce(kSuccess);
    }
}

/// Whether there is something to read before `last`.
bool comesBefore(std::chrono::steady_clock::time_point last, const platform::Descriptor& readEnd) {
    pollfd end = {readEnd.number(), POLLIN, 0};
    int count = 0;
    do {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(last - std::chrono::steady_clock::now());
        count = ::poll(&end, 1, std::max(0, static_cast<int>(left.count())));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

/// Whether the watch ends before `last`, whatever signals come meanwhile.
bool endsBefore(std::chrono::steady_clock::time_point last, const platform::Descriptor& readEnd) {
    while (comesBefore(last, readEnd)) {
        if (nextFrom(readEnd) == kWatchEnds) {
            return true;
        }
    }
    return false;
}

} // namespace

EndingSignals::EndingSignals(AppDelegate& delegate, std::chrono::milliseconds patience)
    : m_delegate(delegate), m_patience(patience) {
    std::array<int, 2> ends = {-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::system_error(errno, std::generic_category(), "cannot open a pipe");
    }
    m_readEnd = platform::Descriptor(ends[0]);
    m_writeEnd = platform::Descriptor(ends[1]);
    signalPipe = m_writeEnd.number();
    m_thread = std::thread([this] { watch(); });
    struct sigaction action = {};
    action.sa_handler = &endingSignalCame;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &m_before[i]);
        if (m_before[i].sa_handler != SIG_IGN) {
            ::sigaction(kSignals[i], &action, nullptr);
        }
    }
}

EndingSignals::~EndingSignals() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], &m_before[i], nullptr);
    }
    tell(m_writeEnd.number(), kWatchEnds);
    m_thread.join();
    signalPipe = -1;
}

void EndingSignals::watch() {
    if (nextFrom(m_readEnd) == kWatchEnds) {
        return;
    }
    QMetaObject::invokeMethod(
        &m_delegate, [this] { quit(m_delegate); }, Qt::QueuedConnection);
    if (!endsBefore(std::chrono::steady_clock::now() + m_patience, m_readEnd)) {
        platform::endAtOnce(kSuccess);
    }
}

} // namespace ui
