// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Cores, wildcard flags, and the mutations whose core or numbers are not defined.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/definition_file.h"
#include "catalogue/load_text.h"

namespace catalogue {
namespace {

/// A catalogue of one mutation "m" on line 2, with the numbers given.
Catalogue loadMutation(const std::string& left, const std::string& right, const std::string& seq,
                       const std::string& numbers = "0.1 0.1 0.1 1") {
    return loadText("*D T\n>m " + left + " " + right + " R1 " + numbers + "\n" + seq + "\n");
}

std::vector<std::string> messagesOf(const Catalogue& catalogue) {
    std::vector<std::string> messages;
    for (const CatalogueFault& fault : catalogue.faults) {
        messages.push_back(fault.message);
    }
    return messages;
}

using Messages = std::vector<std::string>;

TEST(CoreSequence, ReachesFromTheLeftFlankToTheEndOfTheRightOne) {
    const Catalogue catalogue =
        loadMutation("ACGTACGT", "GGGGCCCC", "TTTTACGTACGTNNNNGGGGCCCCAAAA");
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.coreSeq, "ACGTACGTNNNNGGGGCCCC");
    EXPECT_TRUE(mutation.seqContainsWildCard);
    EXPECT_TRUE(mutation.coreSeqContainsWildCard);
}

TEST(CoreSequence, FlankWithRFindsAOrG) {
    EXPECT_EQ(mutationOf(loadMutation("CRC", "GG", "TCACTTGG"), 0, 0).coreSeq, "CACTTGG");
    EXPECT_EQ(mutationOf(loadMutation("CRC", "TT", "TCGCTT"), 0, 0).coreSeq, "CGCTT");
}

TEST(CoreSequence, FlankWithAFindsRInTheSequence) {
    EXPECT_EQ(mutationOf(loadMutation("CAC", "GG", "TCRCTTGG"), 0, 0).coreSeq, "CRCTTGG");
}

TEST(CoreSequence, WildcardFlagsLookAtTheirOwnText) {
    const Catalogue outside = loadMutation("AC", "GT", "NNACGTNN");
    EXPECT_TRUE(mutationOf(outside, 0, 0).seqContainsWildCard);
    EXPECT_FALSE(mutationOf(outside, 0, 0).coreSeqContainsWildCard);
    const Catalogue lowerCase = loadMutation("ac", "gt", "acgt");
    EXPECT_FALSE(mutationOf(lowerCase, 0, 0).seqContainsWildCard);
}

TEST(CoreSequence, BothFlanksAreLookedForFromTheBeginning) {
    // The right flank's leftmost place lies inside the left flank: the core is the shorter stretch.
    EXPECT_EQ(mutationOf(loadMutation("ACGTT", "GT", "AACGTTCCGT"), 0, 0).coreSeq, "ACGT");
}

TEST(CoreSequence, BothFlanksEmptyGiveAnEmptyCore) {
    const Catalogue catalogue = loadText("*\n>\nACGT\n");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).coreSeq, "");
    EXPECT_FALSE(mutationOf(catalogue, 0, 0).coreSeqContainsWildCard);
    EXPECT_TRUE(catalogue.faults.empty());
}

TEST(CatalogueFault, NamesFileLineMutationAndTheLeftFlankThatIsNotFound) {
    const Catalogue catalogue = loadMutation("ACGT", "GG", "TTTTGG");
    EXPECT_EQ(
        messagesOf(catalogue),
        Messages{"panel.txt:2: mutation m: the left flank ACGT is not found in its sequence"});
    EXPECT_EQ(catalogue.faults[0].line, 2U);
    EXPECT_EQ(mutationOf(catalogue, 0, 0).coreSeq, "");
}

TEST(CatalogueFault, NamesTheRightFlankThatIsNotFound) {
    EXPECT_EQ(
        messagesOf(loadMutation("TT", "ACGT", "TTTTGG")),
        Messages{"panel.txt:2: mutation m: the right flank ACGT is not found in its sequence"});
}

TEST(CatalogueFault, IsOneLineForAMutationWithSeveralReasons) {
    EXPECT_EQ(messagesOf(loadMutation("AC", "CA", "GGGG", "0.1 nan 0.1 1")),
              Messages{"panel.txt:2: mutation m: the left flank AC is not found in its sequence; "
                       "the right flank CA is not found in its sequence; "
                       "its false-positive rate is not a finite number"});
}

TEST(CatalogueFault, IsARightFlankThatEndsWhereTheLeftOneBeginsOrBefore) {
    const std::string message =
        "panel.txt:2: mutation m: the right flank GG ends before the left flank AC begins";
    EXPECT_EQ(messagesOf(loadMutation("AC", "GG", "GGAC")), Messages{message});
    EXPECT_EQ(messagesOf(loadMutation("AC", "GG", "GGTTAC")), Messages{message});
    EXPECT_TRUE(loadMutation("GA", "GG", "GGA").faults.empty());
}

TEST(CatalogueFault, IsAnEmptyRightFlankBesideALeftOne) {
    const Catalogue catalogue = loadText("*D\n>m AC\nTAC\n");
    ASSERT_EQ(catalogue.faults.size(), 1U);
    EXPECT_NE(catalogue.faults[0].message.find("ends before"), std::string::npos);
}

TEST(CatalogueFault, IsEveryNumberThatIsNotFinite) {
    EXPECT_EQ(messagesOf(loadMutation("A", "C", "AC", "inf 0.1 0.1 1")),
              Messages{"panel.txt:2: mutation m: its reference frequency is not a finite number"});
    EXPECT_EQ(messagesOf(loadMutation("A", "C", "AC", "0.1 1e999 0.1 1")),
              Messages{"panel.txt:2: mutation m: its false-positive rate is not a finite number"});
    EXPECT_EQ(messagesOf(loadMutation("A", "C", "AC", "0.1 0.1 -nan 1")),
              Messages{"panel.txt:2: mutation m: its false-negative rate is not a finite number"});
}

TEST(CatalogueFault, DoesNotEndLoading) {
    const Catalogue catalogue =
        loadText("*D T\n>m ACGT GG R1 0 0 0 0\nTT\n>n AC GT R1 0 0 0 0\nACGT\n"
                 ">o ACGT GG R1 0 0 0 0\nTT\n");
    EXPECT_EQ(mutationCountOf(catalogue, 0), 3U);
    EXPECT_EQ(mutationOf(catalogue, 0, 1).coreSeq, "ACGT");
    ASSERT_EQ(catalogue.faults.size(), 2U);
    EXPECT_EQ(catalogue.faults[1].line, 6U);
}

} // namespace
} // namespace catalogue
