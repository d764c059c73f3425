// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "matching/catalogue_cores.h"
#include "matching/read_pair_batch.h"
#include "matching/side_search.h"

namespace matching {

/// Where a core stands leftmost in each read, read 2 being turned.
struct CorePlaces {
    std::optional<std::size_t> read1;
    std::optional<std::size_t> read2;
};

/// Says which mutations a pair counts for, from the cores found in its reads: by strand word,
/// quality gate, domain order and stop rule. Used for one pair after the other, by one thread.
class PairJudgement {
public:
    /// `entries` are those of all cores and must outlive this.
    explicit PairJudgement(const std::vector<CoreEntry>& entries) : m_entries(entries) {}

    /// Begins a pair, which lies as in its files. What was found in its reads holds the leftmost
    /// place of each core, and may hold others and the same twice. It is sorted.
    void begin(const ReadPair& pair, std::span<Finding> inRead1, std::span<Finding> inRead2);
    /// Whether the pair might count for a core besides those it is known to hold. Cores that come
    /// in the order of the catalogue get a "no" whenever the plain matcher would not look for them.
    bool mayStillCount(std::uint32_t core) const;
    /// Adds a core that stands in the pair, or does not. It may have been among the findings.
    void add(const ReadPair& pair, std::uint32_t core, const CorePlaces& places);
    /// Adds 1 to the count of each mutation that the pair counts for; whether there was one.
    bool count(std::int64_t* counts);

private:
    const std::vector<CoreEntry>& m_entries;
    std::vector<CoreEntry> m_supported;
};

} // namespace matching
