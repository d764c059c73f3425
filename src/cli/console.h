// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <mutex>
#include <ostream>
#include <string>

namespace cli {

/// The streams of a command: results go to `out`, everything else to `err`.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
    /// Then `out` shows control characters and does not pass them on (TerminalBuffer).
    bool outIsTerminal = false;
};

/// The one way to standard error: messages, and one line of progress that stays below them and can
/// be erased. Whatever bytes a file name holds, a message is one line of valid UTF-8 and shows
/// control characters escaped. Callable from any thread.
class Console {
public:
    Console(std::ostream& err, bool quiet) : m_err(err), m_quiet(quiet) {}

    /// A finished line of an error log.
    void log(const std::string& text);
    /// "vexta: " and the message.
    void error(const std::string& message);
    /// "vexta: warning: " and the message, even when quiet: it may change what results mean.
    void warning(const std::string& message);
    /// "vexta: " and the message, unless quiet.
    void note(const std::string& message);

    /// Replaces the line of progress. REQUIRES: standard error is a terminal.
    void showProgress(const std::string& line);
    void eraseProgress();

private:
    void say(const std::string& prefix, const std::string& message);
    void eraseShownProgress();

    std::mutex m_mutex;
    std::ostream& m_err;
    const bool m_quiet;
    bool m_progressShown = false;
};

} // namespace cli
