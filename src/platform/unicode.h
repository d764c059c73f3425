// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// Whether the byte is one of a text that can be seen: no blank, no control byte. Bytes of letters
/// beyond ASCII can.
constexpr bool isVisible(char byte) noexcept {
    const auto value = static_cast<unsigned char>(byte);
    return value > ' ' && value != 0x7f;
}

/// A character at the front of a text, or the longest beginning of one.
struct Utf8Part {
    /// In bytes, at least 1.
    std::size_t size;
    /// Else it is invalid, or the text ends within it.
    bool isWhole;
};

/// REQUIRES: `bytes` is not empty.
Utf8Part utf8PartAtFront(std::string_view bytes);

/// The text with every invalid UTF-8 sequence replaced by U+FFFD, one for each maximal part of a
/// sequence (Unicode 15, section 3.9, "U+FFFD Substitution of Maximal Subparts").
std::string toValidUtf8(std::string_view bytes);

/// UTF-16 in big-endian bytes (an even number of them) as UTF-8; a lone surrogate becomes U+FFFD.
std::string utf16BigEndianToUtf8(std::string_view bytes);

/// UTF-8 as UTF-16 in big-endian bytes. REQUIRES: valid UTF-8.
std::string utf8ToUtf16BigEndian(std::string_view text);

/// The bytes as ASCII; each one above 127 becomes U+FFFD.
std::string toValidAscii(std::string_view bytes);

/// Whether every byte is below 128.
bool isAscii(std::string_view text) noexcept;

} // namespace platform
