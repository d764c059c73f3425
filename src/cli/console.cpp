// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/console.h"

#include "platform/utf8.h"

namespace cli {
namespace {

/// Back to the first column, and everything to the right of it erased.
constexpr const char* kEraseLine = "\r\x1b[K";
constexpr char kDelete = 0x7f;

bool isControl(char c) {
    return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == kDelete;
}

/// One line of valid UTF-8 that a terminal only shows: every control character, also those from
/// U+0080 to U+009F and a line end within, becomes '?'.
std::string showable(const std::string& line) {
    std::string shown = platform::toValidUtf8(line);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const bool beginsControl = shown[i] == '\xC2' && i + 1 < shown.size() &&
                                   static_cast<unsigned char>(shown[i + 1]) < 0xA0;
        if (beginsControl) {
            shown.replace(i, 2, "?");
        } else if (isControl(shown[i])) {
            shown[i] = '?';
        }
    }
    return shown;
}

} // namespace

void Console::log(const std::string& text) {
    const std::lock_guard lock(m_mutex);
    eraseShownProgress();
    const bool ended = !text.empty() && text.back() == '\n';
    m_err << showable(ended ? text.substr(0, text.size() - 1) : text) << '\n';
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
    m_err << kEraseLine << showable(line);
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
