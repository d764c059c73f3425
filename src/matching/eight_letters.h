// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace matching {

/// Eight letters of a text as one number, the first one in its lowest byte.
inline std::uint64_t eightLetters(const char* text) noexcept {
    std::uint64_t letters;
    std::memcpy(&letters, text, sizeof letters);
    return std::endian::native == std::endian::big ? __builtin_bswap64(letters) : letters;
}

} // namespace matching
