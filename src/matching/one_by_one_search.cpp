// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/one_by_one_search.h"

#include "matching/core_search.h"

namespace matching {

void OneByOneSearch::search(const ReadPair& pair, std::string_view turned,
                            PairJudgement& judgement) const {
    for (const CatalogueCore& core : m_cores) {
        if (!judgement.mayStillCount(core.firstEntry)) {
            continue;
        }
        CorePlaces places;
        if (core.isSearchedInRead1) {
            places.read1 = firstOccurrence(pair.read1, core);
        }
        if (places.read1 || core.isSearchedInRead2Alone) {
            places.read2 = core.isSearchedInRead2 ? firstOccurrence(turned, core) : std::nullopt;
        }
        judgement.add(pair, core.firstEntry, places);
    }
}

} // namespace matching
