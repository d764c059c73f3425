// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/shadowing.h"

#include <algorithm>
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

bool asksForNoOtherRead(std::string_view earlierStrand, std::string_view laterStrand) {
    return earlierStrand == laterStrand || laterStrand == words::kBothReads;
}

} // namespace

bool hasKnownStrandWord(const Mutation& mutation) noexcept {
    const std::string_view strand = archive::orEmpty(mutation.strandRequiredToRead);
    return strand == words::kRead1 || strand == words::kRead2 || strand == words::kBothReads;
}

bool shadows(const Mutation& earlier, const Mutation& later) {
    if (!hasKnownStrandWord(earlier) || !hasKnownStrandWord(later) ||
        !asksForNoOtherRead(archive::orEmpty(earlier.strandRequiredToRead),
                            archive::orEmpty(later.strandRequiredToRead))) {
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
