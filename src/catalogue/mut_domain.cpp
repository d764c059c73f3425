// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How records begin, and two kinds of copies. The copy of a mutation shares nothing with it and has
// one value from another field, which is wanted. The copy of a domain has its own list of the very
// same mutations. What a patient's run counts in is neither: it comes from archive::deepCopy(),
// which keeps every value. Tested by records_test.cpp.
#include "catalogue/mut_domain.h"

namespace catalogue {

Mutation::Mutation() : posNegDetectedOrAlleleType(""), mutantCellRatio(""), comment("") {}

std::shared_ptr<Mutation> Mutation::forDecoding() {
    auto record = std::make_shared<Mutation>();
    record->posNegDetectedOrAlleleType.reset();
    record->mutantCellRatio.reset();
    record->comment.reset();
    return record;
}

std::shared_ptr<Mutation> Mutation::copyWithZone() const {
    auto copy = std::make_shared<Mutation>();
    copy->name = name;
    copy->referenceFrequencyOfTheMutantReads =
        static_cast<double>(minimumRequiredNumberOfInformativeReads);
    copy->allowableFalsePositiveRate = allowableFalsePositiveRate;
    copy->allowableFalseNegativeRate = allowableFalseNegativeRate;
    copy->minimumRequiredNumberOfInformativeReads = minimumRequiredNumberOfInformativeReads;
    copy->seq = seq;
    copy->seqContainsWildCard = seqContainsWildCard;
    copy->coreSeq = coreSeq;
    copy->coreSeqContainsWildCard = coreSeqContainsWildCard;
    copy->before10bp = before10bp;
    copy->after10bp = after10bp;
    copy->strandRequiredToRead = strandRequiredToRead;
    copy->match = match;
    copy->posNegDetectedOrAlleleType = posNegDetectedOrAlleleType;
    copy->mutantCellRatio = mutantCellRatio;
    copy->comment = comment;
    return copy;
}

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
