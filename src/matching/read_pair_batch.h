// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace matching {

/// Longest line of a FASTQ file that is read whole, in bytes, is one less.
inline constexpr std::size_t kLineLimit = 510;
/// Pairs that travel together to one worker.
inline constexpr std::size_t kPairsPerBatch = 1000;

/// The texts of one read pair, as they lie in the files: read 2 is not turned. Views into the
/// batch.
struct ReadPair {
    std::string_view name;
    std::string_view read1;
    std::string_view read2;
    std::string_view quality1;
    std::string_view quality2;
};

/// Up to 1000 read pairs, packed one after the other in one block that is allocated once and
/// reused. Filled by the reading thread, then owned by one worker.
class ReadPairBatch {
public:
    /// The line of a pair in the order in which the files give them.
    enum Line : std::size_t { kName, kRead1, kRead2, kQuality1, kQuality2, kLineKinds };

    ReadPairBatch();

    /// Empties the batch and keeps its memory.
    void clear() noexcept;
    std::size_t size() const noexcept { return m_pairCount; }
    bool full() const noexcept { return m_pairCount == kPairsPerBatch; }

    /// Room for one more line of the pair that is being added, kLineLimit + 1 bytes. REQUIRES:
    /// !full().
    char* lineBuffer() noexcept { return m_text.get() + m_used; }
    /// Keeps the NUL-terminated text now in lineBuffer() (what follows its first NUL is dropped) as
    /// that line of the pair.
    void keepLine(Line line) noexcept;
    /// Completes the pair. REQUIRES: every line was kept since the last one.
    void completePair() noexcept { ++m_pairCount; }

    ReadPair pair(std::size_t index) const noexcept;

private:
    struct Span {
        std::size_t offset = 0;
        std::size_t length = 0;
    };
    /// Left uninitialised: memory that no pair was written to is never touched.
    std::unique_ptr<char[]> m_text;
    std::vector<std::array<Span, kLineKinds>> m_pairs;
    std::size_t m_used = 0;
    std::size_t m_pairCount = 0;
};

} // namespace matching
