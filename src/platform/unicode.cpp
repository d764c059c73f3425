// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Texts are bytes inside this program and valid Unicode where they leave it. UTF-8 is checked by
// the table of well-formed sequences (Unicode 15, table 3-7); what is invalid becomes U+FFFD, one
// for each maximal part, as browsers do it. UTF-16 is what binary property lists hold. Linear in
// the text. Tested by unicode_test.cpp and, for UTF-16, by property_list_test.cpp.
#include "platform/unicode.h"

#include <algorithm>
#include <cstdint>

namespace platform {
namespace {

constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";

/// What may follow a first byte: how many bytes, and the range of the first of them. The narrower
/// ranges keep out overlong forms, surrogates and what lies above U+10FFFF.
struct Sequence {
    std::size_t following;
    unsigned char lowestSecond;
    unsigned char highestSecond;
};

constexpr Sequence kNoSequence = {0, 0, 0};

Sequence sequenceOf(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (first >= 0xE0 && first <= 0xEF) {
        const unsigned char lowest = first == 0xE0 ? 0xA0 : 0x80;
        const unsigned char highest = first == 0xED ? 0x9F : 0xBF;
        return {2, lowest, highest};
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const unsigned char lowest = first == 0xF0 ? 0x90 : 0x80;
        const unsigned char highest = first == 0xF4 ? 0x8F : 0xBF;
        return {3, lowest, highest};
    }
    return kNoSequence;
}

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

void appendUtf8(std::string& text, char32_t code) {
    const auto byte = [&text](char32_t value) { text.push_back(static_cast<char>(value)); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0U | code >> 6U);
        byte(0x80U | (code & 0x3FU));
    } else if (code < 0x10000) {
        byte(0xE0U | code >> 12U);
        byte(0x80U | (code >> 6U & 0x3FU));
        byte(0x80U | (code & 0x3FU));
    } else {
        byte(0xF0U | code >> 18U);
        byte(0x80U | (code >> 12U & 0x3FU));
        byte(0x80U | (code >> 6U & 0x3FU));
        byte(0x80U | (code & 0x3FU));
    }
}

void appendUnit(std::string& bytes, char32_t unit) {
    bytes.push_back(static_cast<char>(unit >> 8U & 0xFFU));
    bytes.push_back(static_cast<char>(unit & 0xFFU));
}

/// The code point that begins at `at`, which moves past it.
char32_t nextCodePoint(std::string_view text, std::size_t& at) {
    const auto byte = [&] { return static_cast<char32_t>(static_cast<unsigned char>(text[at++])); };
    const char32_t lead = byte();
    if (lead < 0x80) {
        return lead;
    }
    const int following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    char32_t code = lead & (0x3FU >> static_cast<unsigned>(following));
    for (int i = 0; i < following; ++i) {
        code = code << 6U | (byte() & 0x3FU);
    }
    return code;
}

} // namespace

Utf8Part utf8PartAtFront(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes.front());
    if (first < 0x80) {
        return {1, true};
    }
    const Sequence sequence = sequenceOf(first);
    std::size_t size = 1;
    while (size <= sequence.following && size < bytes.size()) {
        const auto next = static_cast<unsigned char>(bytes[size]);
        const unsigned char lowest = size == 1 ? sequence.lowestSecond : 0x80;
        const unsigned char highest = size == 1 ? sequence.highestSecond : 0xBF;
        if (next < lowest || next > highest) {
            break;
        }
        ++size;
    }
    return {size, sequence.following > 0 && size == sequence.following + 1};
}

std::string toValidUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Utf8Part part = utf8PartAtFront(bytes);
        text.append(part.isWhole ? bytes.substr(0, part.size) : kReplacementBytes);
        bytes.remove_prefix(part.size);
    }
    return text;
}

std::string utf16BigEndianToUtf8(std::string_view bytes) {
    const auto unitAt = [bytes](std::size_t at) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[at])) << 8U |
               static_cast<unsigned char>(bytes[at + 1]);
    };
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t code = unitAt(at);
        if (isHighSurrogate(code) && at + 3 < bytes.size() && isLowSurrogate(unitAt(at + 2))) {
            code = 0x10000 + ((code - 0xD800) << 10U) + (unitAt(at + 2) - 0xDC00);
            at += 2;
        } else if (isHighSurrogate(code) || isLowSurrogate(code)) {
            code = kReplacement;
        }
        appendUtf8(text, code);
    }
    return text;
}

std::string utf8ToUtf16BigEndian(std::string_view text) {
    std::string bytes;
    bytes.reserve(2 * text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t code = nextCodePoint(text, at);
        if (code < 0x10000) {
            appendUnit(bytes, code);
        } else {
            appendUnit(bytes, 0xD800 + ((code - 0x10000) >> 10U));
            appendUnit(bytes, 0xDC00 + ((code - 0x10000) & 0x3FFU));
        }
    }
    return bytes;
}

std::string toValidAscii(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        appendUtf8(text, static_cast<unsigned char>(byte) < 0x80 ? static_cast<char32_t>(byte)
                                                                 : kReplacement);
    }
    return text;
}

bool isAscii(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

} // namespace platform
