// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

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

} // namespace platform
