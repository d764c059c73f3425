// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// UTF-16 in big-endian bytes (an even number of them) as UTF-8; a lone surrogate becomes U+FFFD.
std::string utf16BigEndianToUtf8(std::string_view bytes);

/// UTF-8 as UTF-16 in big-endian bytes. REQUIRES: valid UTF-8 (utf8.h).
std::string utf8ToUtf16BigEndian(std::string_view text);

/// The bytes as ASCII; each one above 127 becomes U+FFFD.
std::string toValidAscii(std::string_view bytes);

/// Whether every byte is below 128.
bool isAscii(std::string_view text) noexcept;

} // namespace platform
