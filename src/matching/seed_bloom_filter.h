// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "matching/seed.h"

namespace matching {

/// A blocked Bloom filter of the cores' seeds. It rejects nearly all seeds of reads that are in no
/// core, and never one that is. Immutable, safe from any number of threads.
class SeedBloomFilter {
public:
    /// Rejects everything.
    SeedBloomFilter() : SeedBloomFilter(SeedShape::kMaxK, {}) {}
    /// Holds these seeds, all of them k-mers.
    SeedBloomFilter(std::size_t k, const std::vector<CoreSeed>& seeds);

    /// Writes the indexes of the seeds that may be in a core to `to`, in order, and returns the end
    /// of what it wrote. REQUIRES: `to` has room for an index of each seed; 16 bytes can be read at
    /// each seed.
    std::uint32_t* select(std::span<const ReadSeed> seeds, std::uint32_t* to) const noexcept {
        return m_byAvx2 ? selectByAvx2(seeds, to) : selectPortably(seeds, to);
    }

    // The same in two ways, for tests and benchmarks.

    std::uint32_t* selectPortably(std::span<const ReadSeed> seeds,
                                  std::uint32_t* to) const noexcept;
    /// REQUIRES: platform::avx2IsThere().
    std::uint32_t* selectByAvx2(std::span<const ReadSeed> seeds, std::uint32_t* to) const noexcept;

private:
    std::uint32_t* selectFrom(std::size_t first, std::span<const ReadSeed> seeds,
                              std::uint32_t* to) const noexcept;

    bool m_byAvx2;
    std::size_t m_k;
    /// The blocks. A hash's upper bits choose one, its lowest ten bits two bits in it.
    std::vector<std::uint32_t> m_words;
    unsigned m_shift;
};

} // namespace matching
