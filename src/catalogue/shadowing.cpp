// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/shadowing.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "catalogue/domain_words.h"
#include "catalogue/iupac.h"

namespace catalogue {
namespace {

/// Whether every base that agrees with `laterBase` agrees with `earlierBase`.
bool covers(char laterBase, char earlierBase) {
    if (laterBase == earlierBase) {
        return true;
    }
    const std::string_view accepted = readBasesForCoreCode(earlierBase);
    const std::string_view single(&laterBase, 1);
    const std::string_view codeBases = readBasesForCoreCode(laterBase);
    const std::string_view needed = codeBases.empty() ? single : codeBases;
    return needed.find_first_not_of(accepted) == std::string_view::npos;
}

/// Whether a pair that the later strand word lets through is let through by the earlier one too.
bool asksForNoOtherRead(std::optional<Strand> earlier, std::optional<Strand> later) {
    return earlier && later && (earlier == later || later == Strand::both);
}

} // namespace

bool shadows(const Mutation& earlier, const Mutation& later) {
    if (!asksForNoOtherRead(strandOf(earlier), strandOf(later))) {
        return false;
    }
    const std::string_view inner = archive::orEmpty(earlier.coreSeq);
    const std::string_view outer = archive::orEmpty(later.coreSeq);
    if (inner.size() > outer.size()) {
        return false;
    }
    if (!earlier.coreSeqContainsWildCard) {
        return outer.find(inner) != std::string_view::npos;
    }
    return std::search(outer.begin(), outer.end(), inner.begin(), inner.end(), covers) !=
           outer.end();
}

} // namespace catalogue
