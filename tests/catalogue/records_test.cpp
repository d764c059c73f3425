// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/mut_domain.h"
#include "support/archive_round_trip.h"
#include "support/record_printer.h"

using archive::RecordList;
using catalogue::Mutation;
using catalogue::MutDomain;
using support::archivedAndBack;
using support::archivedWithoutKey;
using support::keysOf;
using support::printed;
using testing::ElementsAre;

namespace {

/// A mutation in which no two values are the same and none is a default.
std::shared_ptr<Mutation> calledMutation() {
    auto mutation = std::make_shared<Mutation>();
    mutation->name = "V600E";
    mutation->referenceFrequencyOfTheMutantReads = 0.5;
    mutation->allowableFalsePositiveRate = 0.01;
    mutation->allowableFalseNegativeRate = 0.05;
    mutation->minimumRequiredNumberOfInformativeReads = 30;
    mutation->seq = "ACGTNACGT";
    mutation->seqContainsWildCard = true;
    mutation->coreSeq = "GTNAC";
    mutation->coreSeqContainsWildCard = true;
    mutation->before10bp = "GT";
    mutation->after10bp = "AC";
    mutation->strandRequiredToRead = "R1R2";
    mutation->match = 77;
    mutation->posNegDetectedOrAlleleType = "Positive";
    mutation->mutantCellRatio = "60.0%";
    mutation->comment = "0.0000001000";
    return mutation;
}

std::shared_ptr<MutDomain> domainOf(const std::shared_ptr<Mutation>& mutation) {
    auto domain = std::make_shared<MutDomain>();
    domain->name = "BRAF";
    domain->type = "SomaticDNA";
    domain->mutationMutAr = RecordList<Mutation>::of({mutation});
    domain->canStopSearchIfMatched = true;
    domain->totalNumberOfNormalReads = 1000;
    domain->totalNumberOfMutantReads = 77;
    return domain;
}

} // namespace

// --- Mutation

TEST(MutationRecord, StartsWithEmptyResultsAndNothingElse) {
    EXPECT_EQ(printed(std::make_shared<Mutation>()),
              "Mutation{name=null referenceFrequencyOfTheMutantReads=0x0p+0 "
              "allowableFalsePositiveRate=0x0p+0 allowableFalseNegativeRate=0x0p+0 "
              "minimumRequiredNumberOfInformativeReads=0 seq=null seqContainsWildCard=false "
              "coreSeq=null coreSeqContainsWildCard=false before10bp=null after10bp=null "
              "strandRequiredToRead=null match=0 posNegDetectedOrAlleleType=\"\" "
              "mutantCellRatio=\"\" comment=\"\" }");
}

TEST(MutationRecord, ArchivesEmptyResultsAndNoMatchWhenFresh) {
    const auto back = archivedAndBack(std::make_shared<Mutation>());
    EXPECT_EQ(back->posNegDetectedOrAlleleType, "");
    EXPECT_EQ(back->mutantCellRatio, "");
    EXPECT_EQ(back->comment, "");
    EXPECT_EQ(back->match, 0);
    EXPECT_EQ(back->name, std::nullopt);
}

TEST(MutationRecord, ListsItsFieldsInArchiveOrder) {
    EXPECT_EQ(Mutation::kClassName, "Mutation");
    EXPECT_THAT(keysOf(Mutation()),
                ElementsAre("name", "referenceFrequencyOfTheMutantReads",
                            "allowableFalsePositiveRate", "allowableFalseNegativeRate",
                            "minimumRequiredNumberOfInformativeReads", "seq", "seqContainsWildCard",
                            "coreSeq", "coreSeqContainsWildCard", "before10bp", "after10bp",
                            "strandRequiredToRead", "match", "posNegDetectedOrAlleleType",
                            "mutantCellRatio", "comment"));
}

TEST(MutationRecord, ArchivesEveryValueAsItWas) {
    const auto mutation = calledMutation();
    const auto back = archivedAndBack(mutation);
    EXPECT_NE(back, mutation);
    EXPECT_EQ(printed(back), printed(mutation));
}

TEST(MutationRecord, DecodesFromTheArchiveAloneAndNotFromTheDefaults) {
    for (const char* key : {"posNegDetectedOrAlleleType", "mutantCellRatio", "comment"}) {
        const auto back = archivedWithoutKey(std::make_shared<Mutation>(), key);
        std::size_t nulls = 0;
        for (const archive::Text* text :
             {&back->posNegDetectedOrAlleleType, &back->mutantCellRatio, &back->comment}) {
            nulls += text->has_value() ? 0 : 1;
        }
        EXPECT_EQ(nulls, 1U) << key;
    }
    EXPECT_EQ(archivedWithoutKey(std::make_shared<Mutation>(), "comment")->comment, std::nullopt);
}

TEST(MutationRecord, HasByteStringsOfItsOwnTextsOnceDecoded) {
    const auto mutation = calledMutation();
    const auto back = archivedAndBack(mutation);
    EXPECT_STREQ(back->seqC(), "ACGTNACGT");
    EXPECT_STREQ(back->coreSeqC(), "GTNAC");
    EXPECT_EQ(back->seqC(), back->seq->c_str());
    EXPECT_EQ(back->coreSeqC(), back->coreSeq->c_str());

    // Bytes beyond ASCII are kept as they are.
    mutation->seq = "A\xc3\xa4\xff";
    EXPECT_STREQ(archivedAndBack(mutation)->seqC(), "A\xc3\xa4\xff");
}

TEST(MutationRecord, HasNoByteStringsWithoutTexts) {
    const Mutation mutation;
    EXPECT_EQ(mutation.seqC(), nullptr);
    EXPECT_EQ(mutation.coreSeqC(), nullptr);
}

TEST(MutationRecord, HasByteStringsOfItsCurrentTexts) {
    Mutation mutation;
    mutation.seq = "ACGT";
    mutation.coreSeq = "CG";
    mutation.seq = "TTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTT";
    mutation.coreSeq = "GGG";
    EXPECT_STREQ(mutation.seqC(), "TTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTTT");
    EXPECT_STREQ(mutation.coreSeqC(), "GGG");
}

TEST(MutationRecord, CarriesItsMinimumReadNumberAsTheFrequencyOfACopy) {
    const auto mutation = calledMutation();
    ASSERT_EQ(mutation->minimumRequiredNumberOfInformativeReads, 30);
    ASSERT_EQ(mutation->referenceFrequencyOfTheMutantReads, 0.5);
    const auto copy = mutation->copyWithZone();
    EXPECT_EQ(copy->referenceFrequencyOfTheMutantReads, 30.0);
    EXPECT_EQ(copy->minimumRequiredNumberOfInformativeReads, 30);
    EXPECT_EQ(mutation->referenceFrequencyOfTheMutantReads, 0.5);
}

TEST(MutationRecord, CopiesEveryOtherValue) {
    const auto mutation = calledMutation();
    const auto copy = mutation->copyWithZone();
    copy->referenceFrequencyOfTheMutantReads = mutation->referenceFrequencyOfTheMutantReads;
    EXPECT_EQ(printed(copy), printed(mutation));
}

TEST(MutationRecord, CopiesNullAsNull) {
    const auto decoded = Mutation::forDecoding();
    const auto copy = decoded->copyWithZone();
    EXPECT_EQ(printed(copy), printed(decoded));
    EXPECT_EQ(copy->comment, std::nullopt);
}

TEST(MutationRecord, HasACopyWithTextsOfItsOwn) {
    const auto mutation = calledMutation();
    const auto copy = mutation->copyWithZone();
    EXPECT_NE(copy->seqC(), mutation->seqC());
    EXPECT_EQ(copy->seqC(), copy->seq->c_str());
    EXPECT_EQ(copy->coreSeqC(), copy->coreSeq->c_str());
    mutation->seq = "changed";
    EXPECT_STREQ(copy->seqC(), "ACGTNACGT");
}

TEST(MutationRecord, KeepsItsWildcardFlagsWhateverItsTextsHold) {
    auto mutation = std::make_shared<Mutation>();
    mutation->seq = "NNN";
    mutation->coreSeq = "ACGT";
    mutation->coreSeqContainsWildCard = true;
    for (const auto& other : {mutation->copyWithZone(), archivedAndBack(mutation)}) {
        EXPECT_FALSE(other->seqContainsWildCard);
        EXPECT_TRUE(other->coreSeqContainsWildCard);
    }
}

// --- Domain

TEST(DomainRecord, StartsEmpty) {
    EXPECT_EQ(printed(std::make_shared<MutDomain>()),
              "MutDomain{name=null type=null mutationMutAr=null canStopSearchIfMatched=false "
              "totalNumberOfNormalReads=0 totalNumberOfMutantReads=0 }");
}

TEST(DomainRecord, ListsItsFieldsInArchiveOrder) {
    EXPECT_EQ(MutDomain::kClassName, "MutDomain");
    EXPECT_THAT(keysOf(MutDomain()),
                ElementsAre("name", "type", "mutationMutAr", "canStopSearchIfMatched",
                            "totalNumberOfNormalReads", "totalNumberOfMutantReads"));
}

TEST(DomainRecord, ArchivesEveryValueAsItWas) {
    const auto domain = domainOf(calledMutation());
    const auto back = archivedAndBack(domain);
    EXPECT_EQ(printed(back), printed(domain));
    EXPECT_NE((*back->mutationMutAr)[0], (*domain->mutationMutAr)[0]);
}

TEST(DomainRecord, SharesItsMutationsWithACopy) {
    const auto domain = domainOf(calledMutation());
    const auto copy = domain->copyWithZone();
    EXPECT_EQ((*copy->mutationMutAr)[0], (*domain->mutationMutAr)[0]);
    (*copy->mutationMutAr)[0]->match += 5;
    EXPECT_EQ((*domain->mutationMutAr)[0]->match, 82);
}

TEST(DomainRecord, GivesACopyAFixedListOfItsOwn) {
    const auto domain = domainOf(calledMutation());
    const auto copy = domain->copyWithZone();
    EXPECT_THROW(copy->mutationMutAr->append(calledMutation()), std::logic_error);
    domain->mutationMutAr->append(calledMutation());
    EXPECT_EQ(copy->mutationMutAr->size(), 1U);
    EXPECT_EQ(domain->mutationMutAr->size(), 2U);
}

TEST(DomainRecord, CopiesEveryOtherValue) {
    const auto domain = domainOf(calledMutation());
    const auto copy = domain->copyWithZone();
    EXPECT_NE(copy, domain);
    copy->mutationMutAr = domain->mutationMutAr;
    EXPECT_EQ(printed(copy), printed(domain));
    EXPECT_EQ(printed(MutDomain().copyWithZone()), printed(std::make_shared<MutDomain>()));
}
