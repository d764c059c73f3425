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

/// A window of a core, which begins `offset` letters into it; and where the core is kept.
struct CoreWindow {
    std::uint64_t hash;
    std::uint32_t record;
    std::uint16_t offset;
};

/// A number for a window's letters, all of whose bits depend on all of them. `letterBits` are those
/// of eight letters that count.
inline std::uint64_t windowHash(const char* window, std::size_t length,
                                std::uint64_t letterBits) noexcept {
    constexpr std::uint64_t kFirst = 0x9E3779B97F4A7C15u;
    constexpr std::uint64_t kSecond = 0xC2B2AE3D27D4EB4Fu;
    const std::uint64_t first = eightLetters(window) & letterBits;
    const std::uint64_t second = eightLetters(window + length - 8) & letterBits;
    const std::uint64_t sum = first * kFirst + second * kSecond;
    return sum ^ sum >> 32;
}

} // namespace matching
