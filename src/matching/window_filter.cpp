// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_filter.h"

#include <algorithm>
#include <bit>

#include "platform/avx2.h"

namespace matching {
namespace {

/// Bits of the bitmap per window: of foreign windows about one in 40 to 200 is then selected.
constexpr std::size_t kBitsPerWindow = 16;
/// A smaller bitmap (in bits) saves nothing, as this one stays in the first-level cache.
constexpr std::size_t kSmallestBitmap = std::size_t{1} << 16;
constexpr std::size_t kBitsPerWord = 32;

} // namespace

WindowFilter::WindowFilter(std::size_t length, const std::vector<CoreWindow>& windows)
    : m_byAvx2(platform::avx2IsThere()), m_length(length),
      m_words(std::bit_ceil(std::max(windows.size() * kBitsPerWindow, kSmallestBitmap)) /
              kBitsPerWord),
      m_shift(32u - static_cast<unsigned>(std::countr_zero(m_words.size()))) {
    for (const CoreWindow& window : windows) {
        m_words[window.hash >> m_shift] |=
            std::uint32_t{1} << (window.hash & 31) | std::uint32_t{1} << (window.hash >> 5 & 31);
    }
}

std::uint32_t* WindowFilter::selectPortably(std::span<const Look> looks,
                                            std::uint32_t* to) const noexcept {
    return selectFrom(0, looks, to);
}

std::uint32_t* WindowFilter::selectFrom(std::size_t first, std::span<const Look> looks,
                                        std::uint32_t* to) const noexcept {
    for (std::size_t number = first; number < looks.size(); ++number) {
        const std::uint32_t hash = hashOfCode(windowCode(looks[number].window, m_length));
        const std::uint32_t word = m_words[hash >> m_shift];
        // Counted without a branch: whether a window is known cannot be predicted.
        *to = static_cast<std::uint32_t>(number);
        to += word >> (hash & 31) & word >> (hash >> 5 & 31) & 1;
    }
    return to;
}

} // namespace matching
