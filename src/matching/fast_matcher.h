// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/catalogue_cores.h"
#include "matching/matcher.h"
#include "matching/pair_assignment.h"
#include "matching/seed_search.h"

namespace matching {

/// The matcher of runs: a seed-and-verify search, in which the cost of a pair hardly grows with the
/// catalogue. Gives the same results as PlainMatcher. docs/fast-search.md shows how it works.
class FastMatcher : public Matcher {
public:
    /// Copies what it needs from `domains`.
    explicit FastMatcher(const catalogue::MutDomains& domains);
    void match(const reads::ReadPairBatch& batch, BatchResult& result) const override;

private:
    explicit FastMatcher(CatalogueCores catalogue);

    std::vector<CoreEntry> m_entries;
    MateIndex m_index1;
    MateIndex m_index2;
    UnindexedCores m_unindexed;
};

} // namespace matching
