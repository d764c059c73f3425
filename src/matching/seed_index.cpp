// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// An inverted index from k-mers to cores, as in seed-and-extend searches (Altschul, Gish, Miller,
// Myers and Lipman, "Basic Local Alignment Search Tool", Journal of Molecular Biology 215, 1990).
// The postings lie in one array, sorted by bucket; a bucket is an interval of it. So a lookup reads
// two places in memory, and both can be fetched ahead.
//
// A hash's upper bits choose the bucket. Its lower 16 bits are kept in the posting as a tag, which
// rejects nearly all k-mers that only share the bucket; verification rejects the rest. Building it
// is a counting sort, linear in the seeds. Which k-mers are indexed, and why sampling misses no
// core, stands in seed_selection.cpp. Tested by seed_index_test.cpp.
#include "matching/seed_index.h"

#include <algorithm>
#include <bit>

namespace matching {
namespace {

/// More buckets than seeds: then most buckets hold the postings of one k-mer, and the processor can
/// predict how many there are. But no more spare ones than the second-level cache holds.
std::size_t bucketsFor(std::size_t seeds) noexcept {
    constexpr std::size_t kManyBuckets = std::size_t{1} << 15;
    return std::bit_ceil(std::max({seeds, std::min(4 * seeds, kManyBuckets), std::size_t{2}}));
}

} // namespace

SeedIndex::SeedIndex(SeedShape shape, const std::vector<CoreSeed>& seeds)
    : m_shape(shape), m_strideLog2(static_cast<unsigned>(std::bit_width(shape.stride)) - 1),
      m_filter(shape.k, seeds) {
    fillBuckets(seeds);
}

/// Sorts the seeds by bucket. Within a bucket they keep their order.
void SeedIndex::fillBuckets(const std::vector<CoreSeed>& seeds) {
    const std::size_t buckets = bucketsFor(seeds.size());
    m_bucketShift = 32u - static_cast<unsigned>(std::countr_zero(buckets));
    m_bucketStarts.resize(buckets + 1);
    for (const CoreSeed& seed : seeds) {
        ++m_bucketStarts[bucketOf(seed.hash) + 1];
    }
    for (std::size_t bucket = 0; bucket < buckets; ++bucket) {
        m_bucketStarts[bucket + 1] += m_bucketStarts[bucket];
    }
    m_postings.resize(seeds.size());
    std::vector<std::uint32_t> next(m_bucketStarts.begin(), m_bucketStarts.end() - 1);
    for (const CoreSeed& seed : seeds) {
        m_postings[next[bucketOf(seed.hash)]++] = {seed.record, seed.offset, tagOf(seed.hash)};
    }
}

ReadSeed* SeedIndex::sample(std::string_view read, std::uint16_t number,
                            ReadSeed* to) const noexcept {
    if (empty()) {
        return to;
    }
    for (std::size_t position = 0; position + m_shape.k <= read.size();
         position += m_shape.stride) {
        *to++ = {read.data() + position, number, static_cast<std::uint16_t>(position)};
    }
    return to;
}

} // namespace matching
