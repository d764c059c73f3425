// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "matching/side_search.h"
#include "matching/work_list.h"

namespace matching {

/// Finds the indexed cores that stand in some reads of one side. They go through the steps of the
/// search together, so that the memory that one step needs is fetched for all of them while
/// another one runs: with large catalogues little else counts. Used by one thread.
class ChunkSearch {
public:
    static constexpr std::size_t kMostReads = 64;

    /// `search` must outlive this.
    explicit ChunkSearch(const SideSearch& search) : m_search(search) {}

    const SideSearch& search() const noexcept { return m_search; }
    /// Forgets all reads.
    void clear() noexcept;
    /// Adds a read, which must stay where it is. REQUIRES: fewer than kMostReads were added;
    /// RecordText::kReadableBeyond bytes can be read behind it.
    void add(std::string_view text);
    /// Looks for where cores may stand in the reads that were added.
    void collect();

    /// How many comparisons the reads [first, end) may need.
    std::size_t mostSuspicions(std::size_t first, std::size_t end) const;
    /// Finds the cores that stand in the reads [first, end).
    void find(std::size_t first, std::size_t end);
    /// What was found in a read. REQUIRES: find() was called for a range with the read, which was
    /// asked for all reads before this one, and nothing else since.
    std::span<Finding> take(std::size_t read);

private:
    using Candidate = WindowIndex::Candidate;

    std::span<const Candidate> candidatesOf(std::size_t first, std::size_t end) const;

    const SideSearch& m_search;
    std::array<std::string_view, kMostReads> m_reads;
    std::uint16_t m_readCount = 0;
    WorkList<Look> m_looks;
    WorkList<std::uint32_t> m_selected;
    WorkList<Candidate> m_candidates;
    WorkList<Suspicion> m_suspicions;
    WorkList<Finding> m_findings;
    Finding* m_nextFinding = nullptr;
};

} // namespace matching
