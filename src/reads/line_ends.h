// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace reads {

// Two ways to find where lines end. In a record of the usual shape they can be foretold, so it is
// enough to look there; other text is searched.

/// Notes where lines end in FASTQ records of a known shape: sequence and quality have
/// `sequenceLength` bytes, the separator has one, all lines end with LF.
///
/// Notes four places for each record from text[from] on. Stops before a record that has another
/// shape, a control character outside of its header or a CR or NUL anywhere, and before one that
/// does not end within the text. Returns how many records it noted, `most` at most; none on
/// processors without AVX2. REQUIRES: RecordText::kReadableBeyond bytes can be read behind the
/// text, whose size fits 32 bits.
std::size_t noteRecordsOfShape(std::size_t sequenceLength, std::string_view text, std::size_t from,
                               std::uint32_t* places, std::size_t most) noexcept;

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

// The same in two ways, for tests and benchmarks.

LineFeeds findLineFeedsPortably(const char* text, std::size_t size, std::uint32_t base,
                                std::uint32_t* places, std::size_t most);
/// REQUIRES: avx2IsThere() (avx2.h).
LineFeeds findLineFeedsByAvx2(const char* text, std::size_t size, std::uint32_t base,
                              std::uint32_t* places, std::size_t most);

} // namespace reads
