// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/one_by_one_search.h"

#include "matching/core_search.h"

namespace matching {

void OneByOneSearch::search(const ReadPair& pair, std::string_view turned,
                            PairJudgement& judgement) const {
    for (const DistinctCore& core : m_cores) {
        if (!judgement.mayStillCount(core.firstUse)) {
            continue;
        }
        CorePlaces places;
        if (core.isSoughtInRead1) {
            places.read1 = firstPlaceOfCore(pair.read1, core);
        }
        if (places.read1 || core.isSoughtInRead2Alone) {
            places.read2 = core.isSoughtInRead2 ? firstPlaceOfCore(turned, core) : std::nullopt;
        }
        judgement.add(pair, core.firstUse, places);
    }
}

} // namespace matching
