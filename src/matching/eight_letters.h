// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstring>

namespace matching {

/// Eight letters of a text as one number.
inline std::uint64_t eightLetters(const char* text) noexcept {
    std::uint64_t letters;
    std::memcpy(&letters, text, sizeof letters);
    return letters;
}

} // namespace matching
