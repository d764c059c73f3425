// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/mut_domain.h"

namespace catalogue {

std::shared_ptr<MutDomain> MutDomain::copyWithZone() const {
    auto copy = std::make_shared<MutDomain>();
    copy->name = name;
    copy->type = type;
    if (mutationMutAr) {
        copy->mutationMutAr = archive::RecordList<Mutation>::fixedCopyOf(*mutationMutAr);
    }
    copy->canStopSearchIfMatched = canStopSearchIfMatched;
    copy->totalNumberOfNormalReads = totalNumberOfNormalReads;
    copy->totalNumberOfMutantReads = totalNumberOfMutantReads;
    return copy;
}

} // namespace catalogue
