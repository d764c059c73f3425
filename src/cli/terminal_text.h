// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <streambuf>
#include <string>
#include <string_view>

#include "run/summary_for_each_patient.h"

namespace cli {

// A terminal obeys what it is given: control characters in a name or in a result document can move
// the cursor over other results, change what was printed, or answer for the user. So a terminal
// gets text and nothing else. Files and pipes get every byte as it is.

/// The bytes as text that a terminal only shows. Control characters (also those from U+0080 to
/// U+009F), line separators and characters that turn the direction of writing become "\u001b"; in
/// the strings of JSON that still means the same character. Bytes that are not UTF-8 become "\xff".
/// Only the control characters in `kept` stay.
std::string showable(std::string_view bytes, std::string_view kept);

/// Shows what is written on a terminal, lines and tabs kept. REQUIRES: `terminal` outlives it.
class TerminalBuffer : public std::streambuf {
public:
    explicit TerminalBuffer(std::streambuf& terminal) : m_terminal(terminal) {}

protected:
    int_type overflow(int_type byte) override;
    std::streamsize xsputn(const char* bytes, std::streamsize count) override;
    int sync() override;

private:
    bool show(std::string_view bytes);

    std::streambuf& m_terminal;
    /// The beginning of a character whose other bytes are still to come.
    std::string m_begun;
};

/// A copy whose texts are showable(): a tab or a line end in one of them makes no cell and no line
/// of a table.
run::PatientList withShowableTexts(const run::PatientList& patients);

} // namespace cli
