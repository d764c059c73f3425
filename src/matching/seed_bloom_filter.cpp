// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A Bloom filter (Bloom, Communications of the ACM 13, 1970) whose two bits of a key lie in one
// block, so that a lookup costs one access to memory (Putze, Sanders and Singler, "Cache-, Hash-
// and Space-Efficient Bloom Filters", WEA 2007). A block is one 32-bit word here: one load, two
// shifts.
//
// It has 16 bits for each seed. With 100 entries that is 8 KB a mate, which stays in the
// first-level cache. It passes about one in 40 to 200 of the seeds that are in no core; the index
// rejects these.
//
// Whether a seed passes cannot be predicted, so there is no branch: each index is written, and the
// end moves by one or by zero. Tested by seed_bloom_filter_test.cpp, which compares this with the
// vector twin in seed_bloom_filter_avx2.cpp.
#include "matching/seed_bloom_filter.h"

#include <algorithm>
#include <bit>

#include "platform/avx2.h"

namespace matching {
namespace {

constexpr std::size_t kBitsPerSeed = 16;
/// A smaller filter (in bits) would save nothing: this one fits the first-level cache.
constexpr std::size_t kMinFilterBits = std::size_t{1} << 16;
constexpr std::size_t kBitsPerWord = 32;

} // namespace

SeedBloomFilter::SeedBloomFilter(std::size_t k, const std::vector<CoreSeed>& seeds)
    : m_byAvx2(platform::avx2IsThere()), m_k(k),
      m_words(std::bit_ceil(std::max(seeds.size() * kBitsPerSeed, kMinFilterBits)) / kBitsPerWord),
      m_shift(32u - static_cast<unsigned>(std::countr_zero(m_words.size()))) {
    for (const CoreSeed& seed : seeds) {
        m_words[seed.hash >> m_shift] |=
            std::uint32_t{1} << (seed.hash & 31) | std::uint32_t{1} << (seed.hash >> 5 & 31);
    }
}

std::uint32_t* SeedBloomFilter::selectPortably(std::span<const ReadSeed> seeds,
                                               std::uint32_t* to) const noexcept {
    return selectFrom(0, seeds, to);
}

std::uint32_t* SeedBloomFilter::selectFrom(std::size_t first, std::span<const ReadSeed> seeds,
                                           std::uint32_t* to) const noexcept {
    for (std::size_t index = first; index < seeds.size(); ++index) {
        const std::uint32_t hash = hashOfSeedCode(seedCode(seeds[index].bases, m_k));
        const std::uint32_t word = m_words[hash >> m_shift];
        *to = static_cast<std::uint32_t>(index);
        to += word >> (hash & 31) & word >> (hash >> 5 & 31) & 1;
    }
    return to;
}

} // namespace matching
