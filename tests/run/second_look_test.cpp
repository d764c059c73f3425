// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/second_look.h"

#include "match_read_pairs.h"

namespace run {
namespace {

// No base of one core is that of another at the same place, and none is its own reverse complement.
const std::string kCore = "ACTTGTGGTAGTTGGAGCTG";
const std::string kTurned = "CAGCTCCAACTACCACAAGT";
const std::string kOther = "GGATTCCCAATCCGTTAACA";
const std::string kNothing = "TTTTTTTTTTTTTTTTTTTTTTTT";

std::string record(const std::string& sequence, char quality = 'I') {
    return "@x\n" + sequence + "\n+\n" + std::string(sequence.size(), quality) + "\n";
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

class SecondLookTest : public MatchReadPairs {
protected:
    SecondLookTest() {
        domains = support::catalogueOf({support::domainOf({{"R1", kCore}, {"R1", kOther}})});
        domains.value()[0]->mutationMutAr.value()[0]->name = "wt";
        domains.value()[0]->mutationMutAr.value()[1]->name = "mut";
    }
    /// 2,000 pairs without a core, and 24 of these.
    SecondLook lookAt(const std::string& record1, const std::string& record2) {
        runTexts(repeated(record(kNothing), 2000) + repeated(record1, 24),
                 repeated(record(kNothing), 2000) + repeated(record2, 24));
        return lookAgain(
            {directory.file("r1"), directory.file("r2"), reads::ReadsEncoding::plain, std::nullopt},
            domains, counters);
    }
    static void expectFound(const SecondLook& look, ElsewhereInPair place) {
        ASSERT_EQ(look.found.size(), 1u);
        EXPECT_EQ(look.found[0].place, place);
        EXPECT_EQ(look.found[0].mutation, "wt");
        EXPECT_EQ(look.found[0].pairs, 24);
        EXPECT_EQ(look.pairsLookedAt, 2024);
    }
};

TEST_F(SecondLookTest, FindsCoresOnTheOtherStrand) {
    expectFound(lookAt(record("A" + kTurned + "C"), record(kNothing)),
                ElsewhereInPair::otherStrand);
}

TEST_F(SecondLookTest, FindsCoresInTheOtherRead) {
    // Read 2 is searched as its reverse complement.
    expectFound(lookAt(record(kNothing), record("A" + kTurned + "C")), ElsewhereInPair::otherMate);
}

TEST_F(SecondLookTest, FindsCoresInExchangedFiles) {
    expectFound(lookAt(record(kNothing), record("A" + kCore + "C")),
                ElsewhereInPair::otherStrandOfOtherMate);
}

TEST_F(SecondLookTest, FindsCoresThatTheQualityGateRefuses) {
    expectFound(lookAt(record(kCore + "A", '#'), record(kNothing)), ElsewhereInPair::lowQuality);
}

TEST_F(SecondLookTest, FindsNothingWhereThereIsNothing) {
    EXPECT_TRUE(lookAt(record(kNothing), record(kNothing)).found.empty());
}

TEST_F(SecondLookTest, ChangesNoCount) {
    lookAt(record("A" + kTurned + "C"), record(kNothing));
    EXPECT_EQ(matchOf(0, 0), 0);
    EXPECT_EQ(counters.readsMapped, 0);
    EXPECT_EQ(counters.totalNumberOfReads, 2024);
}

TEST_F(SecondLookTest, IsCalledForWhereFewerThanOnePairInAThousandIsMapped) {
    const auto asked = [&](int pairs, int mapped) {
        runTexts(repeated(record(kNothing), pairs - mapped) + repeated(record("A" + kCore), mapped),
                 repeated(record(kNothing), pairs));
        return callsForSecondLook(domains, counters);
    };
    EXPECT_TRUE(asked(1000, 0));
    EXPECT_TRUE(asked(2001, 2));
    EXPECT_FALSE(asked(999, 0)) << "too few pairs to wonder";
    EXPECT_FALSE(asked(1000, 1));
}

TEST_F(SecondLookTest, IsCalledForWhereOneDomainAloneIsWithoutInformativePairs) {
    domains = support::catalogueOf(
        {support::domainOf({{"R1", kCore}}), support::domainOf({{"R1", kOther}})});
    runTexts(repeated(record("A" + kCore), 10), repeated(record(kNothing), 10));
    EXPECT_TRUE(callsForSecondLook(domains, counters));
    runTexts(record("A" + kCore) + record("A" + kOther), repeated(record(kNothing), 2));
    EXPECT_FALSE(callsForSecondLook(domains, counters));
}

TEST(SecondLook, SaysWhatToCheck) {
    EXPECT_EQ(lineOf({ElsewhereInPair::otherStrand, "BRAF_600_wt", 24}),
              "24 pairs hold BRAF_600_wt on the other strand: check the strand word or the "
              "library's orientation");
    EXPECT_EQ(lineOf({ElsewhereInPair::otherMate, "x", 1}).substr(0, 31),
              "1 pair holds x in the other rea");
}

} // namespace
} // namespace run
