// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "matching/window.h"
#include "matching/window_filter.h"
#include "matching/work_list.h"

namespace matching {

/// Which of many cores may stand where in a read, from a look at a few of its windows. A filter
/// says of nearly all windows that they are no core's; the others lead to a short list of cores.
/// Immutable, safe from any number of threads.
class WindowIndex {
public:
    /// A window of a read that may be one of a core.
    struct Candidate {
        std::uint32_t hash;
        std::uint16_t read;
        std::uint16_t place;
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
    WindowIndex(WindowShape shape, const std::vector<CoreWindow>& windows);

    bool empty() const noexcept { return m_postings.empty(); }
    const WindowFilter& filter() const noexcept { return m_filter; }

    /// Appends the places of a read that have to be looked at. No core that is in the index stands
    /// anywhere without one of them being a window of it.
    void addLooks(std::string_view text, std::uint16_t read, WorkList<Look>& looks) const;
    Candidate candidateAt(const Look& look) const noexcept {
        return {hashOfCode(windowCode(look.window, m_shape.length)), look.read, look.place};
    }

    /// Fetches what is needed for postingsNear(), and, some time later, what they say; returns how
    /// many they are.
    void prefetchBucket(const Candidate& candidate) const noexcept {
        __builtin_prefetch(&m_bucketStarts[bucketOf(candidate.hash)]);
    }
    std::size_t prefetchPostings(const Candidate& candidate) const noexcept {
        const auto postings = postingsNear(candidate);
        __builtin_prefetch(postings.data());
        return postings.size();
    }
    /// The postings of windows that begin with the same bits of the hash as the candidate's.
    std::span<const Posting> postingsNear(const Candidate& candidate) const noexcept {
        const std::size_t bucket = bucketOf(candidate.hash);
        return {m_postings.data() + m_bucketStarts[bucket],
                m_postings.data() + m_bucketStarts[bucket + 1]};
    }
    /// Whether the posting is one whose window is, almost surely, the candidate's.
    static bool leadsTo(const Candidate& candidate, const Posting& posting) noexcept {
        return posting.tag == tagOf(candidate.hash);
    }

private:
    std::size_t bucketOf(std::uint32_t hash) const noexcept { return hash >> m_bucketShift; }
    static std::uint16_t tagOf(std::uint32_t hash) noexcept {
        return static_cast<std::uint16_t>(hash);
    }
    void fillBuckets(const std::vector<CoreWindow>& windows);

    WindowShape m_shape;
    unsigned m_strideLog2 = 0;
    WindowFilter m_filter;
    /// Where a bucket's postings begin; they end where the next one's begin.
    std::vector<std::uint32_t> m_bucketStarts;
    unsigned m_bucketShift = 0;
    std::vector<Posting> m_postings;
};

} // namespace matching
