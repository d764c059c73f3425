// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Text that a terminal shows and does not obey. Bytes are read as UTF-8, a character at a time. A
// character that a terminal acts on is written as an escape; so is each byte that is no part of a
// character. What acts: the C0 and C1 control characters, and those that turn the direction of
// writing (UAX #9), which can make one name look like another.
//
// Output comes in pieces that may end within a character, so TerminalBuffer keeps the begun one
// back. Tested by terminal_text_test.cpp, and at a real terminal by terminal_program_test.cpp.
#include "cli/terminal_text.h"

#include <cstdint>

#include "archive/deep_copy.h"
#include "platform/numbers.h"
#include "platform/unicode.h"

namespace cli {
namespace {

constexpr std::string_view kKeptByTables = "\t\n";

bool isWithin(std::uint32_t character, std::uint32_t first, std::uint32_t last) {
    return character >= first && character <= last;
}

/// Whether a terminal would do something else with the character than show it.
bool isObeyed(std::uint32_t character) {
    return character < 0x20 || isWithin(character, 0x7f, 0x9f) || //
           character == 0x061c || isWithin(character, 0x200e, 0x200f) ||
           isWithin(character, 0x2028, 0x202e) || isWithin(character, 0x2066, 0x2069);
}

/// The character that a valid sequence encodes.
std::uint32_t characterOf(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence.front());
    if (sequence.size() == 1) {
        return first;
    }
    // A first byte of n has n leading ones and a zero.
    std::uint32_t character = first & (0x7fU >> sequence.size());
    for (const char byte : sequence.substr(1)) {
        character = character << 6U | (static_cast<unsigned char>(byte) & 0x3fU);
    }
    return character;
}

void appendPart(std::string& shown, std::string_view part, bool isWhole, std::string_view kept) {
    if (!isWhole) {
        for (const char byte : part) {
            shown += platform::formatted("\\x%02x", static_cast<unsigned char>(byte));
        }
        return;
    }
    const std::uint32_t character = characterOf(part);
    if (isObeyed(character) && kept.find(part) == std::string_view::npos) {
        shown += platform::formatted("\\u%04x", character);
    } else {
        shown += part;
    }
}

/// How many bytes at the end may be the beginning of a character.
std::size_t sizeOfBegunEnd(std::string_view bytes) {
    while (!bytes.empty()) {
        const platform::Utf8Part part = platform::utf8PartAtFront(bytes);
        if (!part.isWhole && part.size == bytes.size()) {
            return part.size;
        }
        bytes.remove_prefix(part.size);
    }
    return 0;
}

/// Replaces every text of the records that it visits.
class TextReplacer {
public:
    void operator()(std::string_view /*key*/, archive::Text& text) {
        if (text) {
            // A shared record comes here again, and then holds nothing that is replaced.
            text = showable(*text, "");
        }
    }
    template <class Record>
    void operator()(std::string_view /*key*/, archive::ListOf<Record>& list) {
        replaceIn(list);
    }
    template <class Value>
    void operator()(std::string_view /*key*/, Value& /*value*/) {}

    template <class Record>
    void replaceIn(archive::ListOf<Record>& list) {
        for (const auto& record : archive::orEmpty(list)) {
            Record::visitFields(*record, *this);
        }
    }
};

} // namespace

std::string showable(std::string_view bytes, std::string_view kept) {
    std::string shown;
    shown.reserve(bytes.size());
    while (!bytes.empty()) {
        const platform::Utf8Part part = platform::utf8PartAtFront(bytes);
        appendPart(shown, bytes.substr(0, part.size), part.isWhole, kept);
        bytes.remove_prefix(part.size);
    }
    return shown;
}

bool TerminalBuffer::show(std::string_view bytes) {
    const std::string shown = showable(bytes, kKeptByTables);
    const auto size = static_cast<std::streamsize>(shown.size());
    return m_terminal.sputn(shown.data(), size) == size;
}

std::streamsize TerminalBuffer::xsputn(const char* bytes, std::streamsize count) {
    m_begun.append(bytes, static_cast<std::size_t>(count));
    const std::size_t whole = m_begun.size() - sizeOfBegunEnd(m_begun);
    const bool written = show(std::string_view(m_begun).substr(0, whole));
    m_begun.erase(0, whole);
    return written ? count : 0;
}

TerminalBuffer::int_type TerminalBuffer::overflow(int_type byte) {
    if (traits_type::eq_int_type(byte, traits_type::eof())) {
        return traits_type::not_eof(byte);
    }
    const char character = traits_type::to_char_type(byte);
    return xsputn(&character, 1) == 1 ? byte : traits_type::eof();
}

int TerminalBuffer::sync() {
    const bool written = show(m_begun);
    m_begun.clear();
    return written ? m_terminal.pubsync() : -1;
}

run::PatientList withShowableTexts(const run::PatientList& patients) {
    run::PatientList copy = archive::deepCopy(patients);
    TextReplacer().replaceIn(copy);
    return copy;
}

} // namespace cli
