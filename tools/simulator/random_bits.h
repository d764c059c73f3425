// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace simulator {

/// Random bits from a seed (splitmix64), the same on every machine. The distributions of the
/// standard library are not: each implementation draws in its own way.
class RandomBits {
public:
    explicit RandomBits(std::uint64_t seed) noexcept : m_state(seed) {}

    std::uint64_t next() noexcept {
        m_state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31);
    }

    /// A whole number from 0 to `bound` - 1. REQUIRES: 0 < bound <= 2^32.
    std::uint64_t below(std::uint64_t bound) noexcept { return ((next() >> 32) * bound) >> 32; }

private:
    std::uint64_t m_state;
};

} // namespace simulator
