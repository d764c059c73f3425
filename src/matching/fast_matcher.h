// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/catalogue_cores.h"
#include "matching/matcher.h"
#include "matching/one_by_one_search.h"
#include "matching/side_search.h"

namespace matching {

/// The matcher of runs: what a pair costs hardly grows with the catalogue. Gives what PlainMatcher
/// gives. docs/matching.md tells how it works and what else was measured.
class FastMatcher : public Matcher {
public:
    /// Takes from `domains` all that it needs.
    explicit FastMatcher(const catalogue::MutDomains& domains);
    void match(const ReadPairBatch& batch, BatchResult& result) const override;

private:
    explicit FastMatcher(CatalogueCores catalogue);

    std::vector<CoreEntry> m_entries;
    SideSearch m_search1;
    SideSearch m_search2;
    OneByOneSearch m_oneByOne;
};

} // namespace matching
