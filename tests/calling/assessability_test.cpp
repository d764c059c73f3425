// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "calling/assessability.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace calling {
namespace {

std::shared_ptr<catalogue::MutDomain> called(const char* name, const char* type,
                                             const std::vector<const char*>& calls) {
    auto domain = support::domainOf(std::vector<support::Target>(calls.size()));
    domain->name = name;
    domain->type = type;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        domain->mutationMutAr.value()[i]->posNegDetectedOrAlleleType = calls[i];
    }
    return domain;
}

TEST(Assessability, ASomaticDomainIsNotAssessableWhereEveryMutationHadTooFewReads) {
    const auto result = assess(support::catalogueOf({
        called("KRAS", "SomaticDNA", {"", "ND *1", "ND *1"}),
        called("NRAS", "SomaticDNA", {"", "ND *1"}),
    }));
    EXPECT_EQ(result.targets, 2);
    EXPECT_EQ(result.notAssessable, 2);
    ASSERT_EQ(result.kinds.size(), 1u);
    EXPECT_EQ(result.kinds[0].text(), "somatic DNA: not assessable (2 of 2 targets ND *1)");
}

TEST(Assessability, OneAssessableTargetIsEnoughForItsKind) {
    const auto result = assess(support::catalogueOf({
        called("KRAS", "SomaticDNA", {"", "ND *1", "Negative"}),
        called("NRAS", "SomaticDNA", {"", "ND *1"}),
        called("BIM", "Germline", {"Not Determined", ""}),
    }));
    EXPECT_EQ(result.targets, 3);
    EXPECT_EQ(result.notAssessable, 2);
    ASSERT_EQ(result.kinds.size(), 1u);
    EXPECT_EQ(result.kinds[0].text(),
              "allele typing: not assessable (1 of 1 targets Not Determined)");
}

TEST(Assessability, OtherKindsAndDomainsWithoutMutantsAreNoTargets) {
    const auto result = assess(support::catalogueOf({
        called("KRAS", "SomaticDNA", {"ND *1"}),
        called("Other", "Germline", {"Not Determined", ""}),
        called("Fusions", "fusion_RNA", {"ND *1", "ND *1"}),
    }));
    EXPECT_EQ(result.targets, 0);
    EXPECT_TRUE(result.kinds.empty());
    EXPECT_TRUE(assess(catalogue::MutDomains()).kinds.empty());
}

TEST(Assessability, AKindTellsItsDomainsAndItsReason) {
    const auto result = assess(support::catalogueOf({called("KRAS", "SomaticDNA", {"", "ND *1"})}));
    ASSERT_EQ(result.kinds.size(), 1u);
    EXPECT_EQ(result.kinds[0].type, catalogue::DomainType::somaticDNA);
    EXPECT_EQ(result.kinds[0].reason(), "not assessable (1 of 1 targets ND *1)");
}

TEST(Assessability, WhatASavedDocumentLacksIsNoTargetWithTooFewReads) {
    const auto incomplete = called("KRAS", "SomaticDNA", {"", "ND *1", "ND *1"});
    incomplete->mutationMutAr->append(nullptr);
    const auto result = assess(support::catalogueOf({nullptr, incomplete}));
    EXPECT_EQ(result.targets, 1);
    EXPECT_EQ(result.notAssessable, 0);
}

} // namespace
} // namespace calling
