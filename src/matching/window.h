// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include "matching/eight_letters.h"

namespace matching {

/// How cores and reads are cut: windows of `length` letters, 8 to 16, and of a read every
/// `stride`-th is looked at.
struct WindowShape {
    static constexpr std::size_t kShortest = 8;
    static constexpr std::size_t kLongest = 16;

    std::size_t length = kShortest;
    std::size_t stride = 1;

    /// Of so many letters in a row every read shows one whole window.
    std::size_t lettersThatShow() const noexcept { return length + stride - 1; }
};

/// Two bits of each of eight letters, which tell A, C, G and T in either case apart. In order: the
/// first letter's are the lowest.
inline std::uint32_t codeOfEight(const char* letters) noexcept {
    std::uint64_t code = eightLetters(letters) >> 1 & 0x0303030303030303u;
    code = (code | code >> 6) & 0x000F000F000F000Fu;
    code = (code | code >> 12) & 0x000000FF000000FFu;
    return static_cast<std::uint32_t>(code | code >> 24) & 0xFFFFu;
}

/// The bits of a window's code that come from its own letters.
constexpr std::uint32_t codeBits(std::size_t length) noexcept {
    return 0xFFFFFFFFu >> (2 * (WindowShape::kLongest - length));
}

/// The code of a window. Sixteen letters are read, whatever its length.
inline std::uint32_t windowCode(const char* window, std::size_t length) noexcept {
    return (codeOfEight(window) | codeOfEight(window + 8) << 16) & codeBits(length);
}

/// Spreads a code over all bits, above all the upper ones. Different codes give different hashes.
inline constexpr std::uint32_t kHashFactor = 0x9E3779B1u;
inline constexpr int kHashShift = 15;
constexpr std::uint32_t hashOfCode(std::uint32_t code) noexcept {
    const std::uint32_t product = code * kHashFactor;
    return product ^ product >> kHashShift;
}

/// A window of a core, which begins `offset` letters into it; and where the core is kept.
struct CoreWindow {
    std::uint32_t hash;
    std::uint32_t record;
    std::uint16_t offset;
};

} // namespace matching
