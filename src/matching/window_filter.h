// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "matching/window.h"

namespace matching {

/// A window of a read, to be looked at. Lines are short, and reads come by the chunk.
struct Look {
    const char* window;
    std::uint16_t read;
    std::uint16_t place;
};

/// A bitmap that fits the caches and says of nearly all windows that they are no core's. Immutable,
/// safe from any number of threads.
class WindowFilter {
public:
    /// Selects nothing.
    WindowFilter() : WindowFilter(WindowShape::kLongest, {}) {}
    /// For these windows of cores, all of `length` letters.
    WindowFilter(std::size_t length, const std::vector<CoreWindow>& windows);

    /// Writes the numbers of the looks whose windows may be a core's from `to` on, in order, and
    /// returns the end of what it gives. There is room for as many numbers as looks. REQUIRES: 16
    /// bytes can be read at each window.
    std::uint32_t* select(std::span<const Look> looks, std::uint32_t* to) const noexcept {
        return m_byAvx2 ? selectByAvx2(looks, to) : selectPortably(looks, to);
    }

    // The ways it is done, each for itself to be tested and measured; all give the same.

    std::uint32_t* selectPortably(std::span<const Look> looks, std::uint32_t* to) const noexcept;
    /// REQUIRES: platform::avx2IsThere().
    std::uint32_t* selectByAvx2(std::span<const Look> looks, std::uint32_t* to) const noexcept;

private:
    std::uint32_t* selectFrom(std::size_t first, std::span<const Look> looks,
                              std::uint32_t* to) const noexcept;

    bool m_byAvx2;
    std::size_t m_length;
    /// The word is chosen by a hash's upper bits; its lower bits are two in that word.
    std::vector<std::uint32_t> m_words;
    unsigned m_shift;
};

} // namespace matching
