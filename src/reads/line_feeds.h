// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace reads {

/// What a search for line ends met.
struct LineFeeds {
    std::size_t count = 0;
    /// Whether there may be a CR or a NUL among the bytes: then a line feed is not all that ends a
    /// line, or a line. False only when there is none before the last place that was noted.
    bool oddBytes = false;
};

/// A search may note so many places more than it was asked for.
inline constexpr std::size_t kLineFeedsBeyond = 72;

/// Notes the places of the line feeds in text[0, size), counted from `base`, in order: all of them,
/// or, when they are `most` or more, `most` and perhaps some that follow. `places` has room for
/// most + kLineFeedsBeyond; what lies there behind the noted ones is overwritten. REQUIRES:
/// base + size fits in 32 bits.
LineFeeds findLineFeeds(const char* text, std::size_t size, std::uint32_t base,
                        std::uint32_t* places, std::size_t most);

// The ways it is done, each for itself to be tested and measured; all give the same.

LineFeeds findLineFeedsPortably(const char* text, std::size_t size, std::uint32_t base,
                                std::uint32_t* places, std::size_t most);
/// REQUIRES: avx2IsThere() (avx2.h).
LineFeeds findLineFeedsByAvx2(const char* text, std::size_t size, std::uint32_t base,
                              std::uint32_t* places, std::size_t most);

} // namespace reads
