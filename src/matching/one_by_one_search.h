// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <utility>
#include <vector>

#include "matching/catalogue_cores.h"
#include "matching/pair_judgement.h"

namespace matching {

/// Searches pairs for the cores that no index holds. Looks for no core in more reads than the plain
/// matcher would, so that a catalogue of nothing else costs no more than that.
class OneByOneSearch {
public:
    /// `cores` are in the order of the catalogue.
    explicit OneByOneSearch(std::vector<CatalogueCore> cores) : m_cores(std::move(cores)) {}

    bool empty() const noexcept { return m_cores.empty(); }
    /// Tells `judgement`, which has the pair at hand, about the cores that stand in it. `turned` is
    /// the pair's read 2 on the strand of read 1.
    void search(const ReadPair& pair, std::string_view turned, PairJudgement& judgement) const;

private:
    std::vector<CatalogueCore> m_cores;
};

} // namespace matching
