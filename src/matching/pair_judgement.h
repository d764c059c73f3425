// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "matching/distinct_cores.h"
#include "matching/read_pair_batch.h"
#include "matching/side_search.h"

namespace matching {

/// Says which mutations a pair counts for, from the cores found in its reads: by strand word,
/// quality gate, domain order and stop rule. Used for one pair after the other, by one thread.
class PairJudgement {
public:
    /// `uses` are those of all cores and must outlive this.
    explicit PairJudgement(const std::vector<CoreUse>& uses) : m_uses(uses) {}

    /// Adds 1 to the count of each mutation that the pair counts for; whether there was one.
    /// `findings` hold the leftmost place of each core in each read, and may hold others and the
    /// same twice. They are sorted. The pair lies as in its files.
    bool count(const ReadPair& pair, std::span<Finding> findings, std::int64_t* counts);

private:
    const std::vector<CoreUse>& m_uses;
    std::vector<CoreUse> m_supported;
};

} // namespace matching
