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

/// Finds the indexed cores that stand in some reads of one mate. They go through the steps of the
/// search together, so that the memory that one step needs is fetched for all of them while
/// another one runs: with large catalogues little else counts. Used by one thread.
class ChunkSearch {
public:
    static constexpr std::size_t kMostReads = 32;

    /// `search` must outlive this.
    explicit ChunkSearch(const SideSearch& search) : m_search(search) {}

    const SideSearch& search() const noexcept { return m_search; }
    /// Forgets all reads.
    void clear() noexcept;
    /// Adds a read, which must stay where it is. REQUIRES: fewer than kMostReads were added;
    /// RecordText::kReadableBeyond bytes can be read behind it.
    void add(std::string_view text);
    /// Looks for where cores may stand in the reads that were added. Returns the most comparisons
    /// that findAll() may need.
    std::size_t collect();

    /// Finds the cores that stand in all reads that were added, or in one of them.
    void findAll() { find(m_candidates.all()); }
    void findIn(std::size_t read) { find(candidatesOf(read)); }
    /// What was found in a read. After findAll() it is asked for one read after the other.
    std::span<Finding> take(std::size_t read);

private:
    using Candidate = SeedIndex::Candidate;

    std::span<const Candidate> candidatesOf(std::size_t read) const;
    void find(std::span<const Candidate> candidates);

    const SideSearch& m_search;
    std::array<std::string_view, kMostReads> m_reads;
    std::uint16_t m_readCount = 0;
    WorkList<ReadSeed> m_looks;
    WorkList<std::uint32_t> m_selected;
    WorkList<Candidate> m_candidates;
    WorkList<Suspicion> m_suspicions;
    WorkList<Finding> m_findings;
    /// How many each read has, and which ones come next.
    std::array<std::uint32_t, kMostReads> m_foundIn;
    Finding* m_nextFinding = nullptr;
};

} // namespace matching
