// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Several threads speak on standard error: the command, the line of progress, a run that warns of
// its settings. One lock keeps their lines whole. A message erases the line of progress, which
// comes back with its next update, so it always stands last. Tested by console_test.cpp.
#include "cli/console.h"

#include "cli/terminal_text.h"

namespace cli {
namespace {

/// Back to the first column, and everything to the right of it erased.
constexpr const char* kEraseLine = "\r\x1b[K";

/// One line that a terminal only shows, a line end within it included.
std::string shownLine(const std::string& line) {
    return showable(line, "\t");
}

} // namespace

void Console::log(const std::string& text) {
    const std::lock_guard lock(m_mutex);
    eraseShownProgress();
    const bool ended = !text.empty() && text.back() == '\n';
    m_err << shownLine(ended ? text.substr(0, text.size() - 1) : text) << '\n';
    m_err.flush();
}

void Console::say(const std::string& prefix, const std::string& message) {
    log(prefix + message);
}

void Console::error(const std::string& message) {
    say("vexta: ", message);
}

void Console::warning(const std::string& message) {
    say("vexta: warning: ", message);
}

void Console::note(const std::string& message) {
    if (!m_quiet) {
        say("vexta: ", message);
    }
}

void Console::showProgress(const std::string& line) {
    const std::lock_guard lock(m_mutex);
    m_err << kEraseLine << shownLine(line);
    m_err.flush();
    m_progressShown = true;
}

void Console::eraseProgress() {
    const std::lock_guard lock(m_mutex);
    eraseShownProgress();
    m_err.flush();
}

void Console::eraseShownProgress() {
    if (m_progressShown) {
        m_err << kEraseLine;
        m_progressShown = false;
    }
}

} // namespace cli
