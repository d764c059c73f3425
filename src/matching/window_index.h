// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "matching/lying_core.h"
#include "matching/window.h"

namespace matching {

/// Which of many cores may stand where in a read, from a look at a few of its windows.
///
/// A bitmap that fits the caches says of nearly all windows that they are no core's; the others
/// lead to a short list of cores. Immutable, safe from any number of threads.
class WindowIndex {
public:
    /// A window of a read that may be one of a core.
    struct Candidate {
        std::uint64_t hash;
        ReadNumber read;
        std::uint32_t place;
    };
    /// The core may begin `offset` letters before the window.
    struct Posting {
        std::uint32_t record;
        std::uint16_t offset;
        std::uint16_t tag;
    };

    /// Finds nothing.
    WindowIndex() = default;
    /// Each core gives as many windows at consecutive offsets as the shape's stride is wide.
    WindowIndex(WindowShape shape, Side side, const std::vector<CoreWindow>& windows);

    bool empty() const noexcept { return m_postings.empty(); }
    /// A read of this length has no more candidates; a shift says so sooner than a division.
    std::size_t mostCandidates(std::size_t readLength) const noexcept {
        return (readLength >> m_strideLog2) + 1;
    }
    /// Writes the candidates of a read from `to` on and returns the end of what it wrote. No place
    /// at which an indexed core stands is without one.
    Candidate* collect(std::string_view text, ReadNumber read, Candidate* to) const noexcept;

    /// Fetch what will be looked up: the first some time before the second, and that some time
    /// before the postings.
    void prefetchBucket(const Candidate& candidate) const noexcept {
        __builtin_prefetch(&m_bucketStarts[bucketOf(candidate.hash)]);
    }
    void prefetchPostings(const Candidate& candidate) const noexcept {
        __builtin_prefetch(m_postings.data() + m_bucketStarts[bucketOf(candidate.hash)]);
    }
    /// Calls `use` with each posting whose window is, almost surely, the candidate's.
    template <class Use>
    void forEachPosting(const Candidate& candidate, Use use) const {
        const std::size_t bucket = bucketOf(candidate.hash);
        const std::uint16_t tag = tagOf(candidate.hash);
        for (std::uint32_t i = m_bucketStarts[bucket]; i < m_bucketStarts[bucket + 1]; ++i) {
            if (m_postings[i].tag == tag) {
                use(m_postings[i]);
            }
        }
    }

private:
    std::size_t bucketOf(std::uint64_t hash) const noexcept { return hash >> m_bucketShift; }
    static std::uint16_t tagOf(std::uint64_t hash) noexcept {
        return static_cast<std::uint16_t>(hash);
    }
    void fillBitmap(const std::vector<CoreWindow>& windows);
    void fillBuckets(const std::vector<CoreWindow>& windows);

    WindowShape m_shape;
    unsigned m_strideLog2 = 0;
    std::uint64_t m_letterBits = 0;
    std::vector<std::uint64_t> m_bitmap;
    unsigned m_bitmapShift = 0;
    /// Where a bucket's postings begin; they end where the next one's begin.
    std::vector<std::uint32_t> m_bucketStarts;
    unsigned m_bucketShift = 0;
    std::vector<Posting> m_postings;
};

} // namespace matching
