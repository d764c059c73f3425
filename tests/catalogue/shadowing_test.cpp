// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/catalogue_check.h"

#include <gtest/gtest.h>

#include "catalogue/core_sequence.h"

namespace catalogue {
namespace {

struct Entry {
    const char* core;
    const char* strand;
};

bool shadowsEntry(const Entry& earlier, const Entry& later) {
    Mutation first;
    first.coreSeq = earlier.core;
    first.coreSeqContainsWildCard = containsWildCard(earlier.core);
    first.strandRequiredToRead = earlier.strand;
    Mutation second;
    second.coreSeq = later.core;
    second.coreSeqContainsWildCard = containsWildCard(later.core);
    second.strandRequiredToRead = later.strand;
    return shadows(first, second);
}

TEST(Shadowing, IsACoreInsideALaterCore) {
    EXPECT_TRUE(shadowsEntry({"CGT", "R1"}, {"ACGTA", "R1"}));
    EXPECT_TRUE(shadowsEntry({"CGT", "R1"}, {"CGT", "R1"}));
    EXPECT_FALSE(shadowsEntry({"ACGTA", "R1"}, {"CGT", "R1"}));
    EXPECT_FALSE(shadowsEntry({"CCC", "R1"}, {"ACGTA", "R1"}));
}

TEST(Shadowing, AsksForNoReadThatTheLaterEntryDoesNotAskFor) {
    EXPECT_TRUE(shadowsEntry({"C", "R1"}, {"C", "R1R2"}));
    EXPECT_TRUE(shadowsEntry({"C", "R2"}, {"C", "R1R2"}));
    EXPECT_TRUE(shadowsEntry({"C", "R1R2"}, {"C", "R1R2"}));
    EXPECT_FALSE(shadowsEntry({"C", "R1R2"}, {"C", "R1"}));
    EXPECT_FALSE(shadowsEntry({"C", "R1"}, {"C", "R2"}));
}

TEST(Shadowing, IsNotDoneByAnEntryThatNeverMatches) {
    EXPECT_FALSE(shadowsEntry({"C", "r1"}, {"C", "r1"}));
    EXPECT_FALSE(shadowsEntry({"C", "R1"}, {"C", ""}));
}

TEST(Shadowing, CodeInTheEarlierCoreCoversItsBases) {
    EXPECT_TRUE(shadowsEntry({"ARC", "R1"}, {"AGC", "R1"}));
    EXPECT_FALSE(shadowsEntry({"ARC", "R1"}, {"ATC", "R1"}));
    EXPECT_TRUE(shadowsEntry({"AYC", "R1"}, {"GATCG", "R1"}));
}

TEST(Shadowing, CodeInTheEarlierCoreCoversOnlyWhatReadsAreSearchedFor) {
    // B in a core agrees with C and G, not with T.
    EXPECT_TRUE(shadowsEntry({"ABC", "R1"}, {"AGC", "R1"}));
    EXPECT_FALSE(shadowsEntry({"ABC", "R1"}, {"ATC", "R1"}));
    EXPECT_TRUE(shadowsEntry({"AMC", "R1"}, {"AVC", "R1"}));
}

TEST(Shadowing, CodeInTheLaterCoreNeedsAllItsBasesCovered) {
    EXPECT_FALSE(shadowsEntry({"AGC", "R1"}, {"ARC", "R1"}));
    EXPECT_TRUE(shadowsEntry({"ARC", "R1"}, {"ARC", "R1"}));
    EXPECT_FALSE(shadowsEntry({"ARC", "R1"}, {"AYC", "R1"}));
}

TEST(Shadowing, NCoversOnlyN) {
    EXPECT_TRUE(shadowsEntry({"ANC", "R1"}, {"ANC", "R1"}));
    EXPECT_FALSE(shadowsEntry({"ANC", "R1"}, {"AGC", "R1"}));
}

TEST(Shadowing, EmptyCoreShadowsEverything) {
    EXPECT_TRUE(shadowsEntry({"", "R1"}, {"ACGT", "R1"}));
}

} // namespace
} // namespace catalogue
