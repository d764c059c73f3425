// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "matching/seed.h"
#include "matching/seed_bloom_filter.h"

namespace matching {

/// Tells from a few k-mers of a read which of many cores may occur in it, and where. Immutable,
/// safe from any number of threads.
class SeedIndex {
public:
    /// A seed of a read that passed the Bloom filter.
    struct Candidate {
        std::uint32_t hash;
        std::uint16_t read;
        std::uint16_t position;
    };
    /// A core of which the seed is a k-mer: the core may begin `offset` bases before the seed.
    struct Posting {
        std::uint32_t record;
        std::uint16_t offset;
        std::uint16_t tag;
    };

    /// An index of no cores.
    SeedIndex() = default;
    /// `seeds` has, for each core, k-mers at as many consecutive offsets as the stride is long.
    SeedIndex(SeedShape shape, const std::vector<CoreSeed>& seeds);

    bool empty() const noexcept { return m_postings.empty(); }
    const SeedBloomFilter& filter() const noexcept { return m_filter; }

    /// The most seeds that sample() may write for a read. Somewhat too many: a shift is sooner done
    /// than a division.
    std::size_t maxSeedsIn(std::string_view read) const noexcept {
        return (read.size() >> m_strideLog2) + 1;
    }
    /// Writes the seeds of the read with this number to `to` and returns the end of what it wrote.
    /// An indexed core occurs nowhere in the read without one of them being a seed of it.
    /// REQUIRES: `to` has room for maxSeedsIn().
    ReadSeed* sample(std::string_view read, std::uint16_t number, ReadSeed* to) const noexcept;
    Candidate candidateOf(const ReadSeed& seed) const noexcept {
        return {hashOfSeedCode(seedCode(seed.bases, m_shape.k)), seed.read, seed.position};
    }

    /// Fetches what postingsNear() reads and, some time later, what the postings read. The latter
    /// returns their number.
    void prefetchBucket(const Candidate& candidate) const noexcept {
        __builtin_prefetch(&m_bucketStarts[bucketOf(candidate.hash)]);
    }
    std::size_t prefetchPostings(const Candidate& candidate) const noexcept {
        const auto postings = postingsNear(candidate);
        __builtin_prefetch(postings.data());
        return postings.size();
    }
    /// The postings in the candidate's bucket: those of its k-mer and, now and then, of another.
    std::span<const Posting> postingsNear(const Candidate& candidate) const noexcept {
        const std::size_t bucket = bucketOf(candidate.hash);
        return {m_postings.data() + m_bucketStarts[bucket],
                m_postings.data() + m_bucketStarts[bucket + 1]};
    }
    /// Whether the posting is, almost surely, one of the candidate's k-mer.
    static bool mayMatch(const Candidate& candidate, const Posting& posting) noexcept {
        return posting.tag == tagOf(candidate.hash);
    }

private:
    std::size_t bucketOf(std::uint32_t hash) const noexcept { return hash >> m_bucketShift; }
    static std::uint16_t tagOf(std::uint32_t hash) noexcept {
        return static_cast<std::uint16_t>(hash);
    }
    void fillBuckets(const std::vector<CoreSeed>& seeds);

    SeedShape m_shape;
    unsigned m_strideLog2 = 0;
    SeedBloomFilter m_filter;
    /// Where a bucket's postings begin; they end where those of the next bucket begin.
    std::vector<std::uint32_t> m_bucketStarts;
    unsigned m_bucketShift = 0;
    std::vector<Posting> m_postings;
};

} // namespace matching
