// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Where the rules about strands must be silent, and what they blame. What they find stands in
// tests/data/catalogue.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/iupac.h"
#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string kLocus = randomBases(60, 1);

TEST(Strands, TheOtherOneIsTheReverseComplementWithItsCodes) {
    EXPECT_EQ(otherStrand("AACGTRYKMBVDHSWN"), "NWSDHBVKMRYACGTT");
    EXPECT_EQ(otherStrand(""), "");
}

TEST(Strands, AHairpinIsOnNoOtherStrand) {
    const std::string arm = kLocus.substr(0, 30);
    const std::string hairpin = arm + "ACTTC" + otherStrand(arm);
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", hairpin) +
                             entryText("mutant", withChange(hairpin, 31))),
                Each(Not(HasSubstr("strand"))));
}

TEST(Strands, AMutantUnlikeItsWildTypeOnEitherStrandIsNotOfThisRule) {
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLocus) +
                             entryText("mutant", randomBases(60, 2))),
                Each(Not(HasSubstr("strand"))));
}

TEST(Strands, EveryMutantTypedInReversedIsFound) {
    for (std::size_t place = 12; place < 48; ++place) {
        EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLocus) +
                                 entryText("mutant", otherStrand(withChange(kLocus, place)))),
                    Contains("4 core-on-other-strand"))
            << place;
    }
    const std::string deletion = kLocus.substr(0, 20) + kLocus.substr(35);
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLocus) +
                             entryText("mutant", otherStrand(deletion))),
                Contains("4 core-on-other-strand"));
}

/// The sequence with the stretch from `begin` to `end` on the other strand.
std::string withTurned(const std::string& sequence, std::size_t begin, std::size_t end) {
    return sequence.substr(0, begin) + otherStrand(sequence.substr(begin, end - begin)) +
           sequence.substr(end);
}

const std::string kLongLocus = randomBases(120, 21);

TEST(Strands, ACoreTypedInReversedIsFoundWhateverStandsAroundIt) {
    for (std::size_t around = 0; around <= 40; ++around) {
        const std::string locus = kLongLocus.substr(40 - around, 40 + 2 * around);
        const std::size_t end = around + 40;
        const std::string mutant = withTurned(withChange(locus, around + 20), around, end);
        EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", locus, around, end) +
                                 entryText("mutant", mutant, around, end)),
                    ElementsAre("4 core-on-other-strand"))
            << around;
    }
}

TEST(Strands, AnInversionBetweenTheFlanksOfItsWildTypeIsNoMistake) {
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLongLocus, 30, 90) +
                             entryText("inversion", withTurned(kLongLocus, 40, 80), 30, 90)),
                IsEmpty());
}

TEST(Strands, FlanksOnTheOtherStrandAreReportedWhereTheCoreIsNot) {
    // What stands between these flanks is like the wild type on neither strand.
    const std::string inserted = otherStrand(kLongLocus.substr(80, 10)) + randomBases(150, 22) +
                                 otherStrand(kLongLocus.substr(30, 10));
    const std::string mutant = kLongLocus.substr(0, 30) + inserted + kLongLocus.substr(90);
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLongLocus, 30, 90) +
                             entryText("mutant", mutant, 30, 200)),
                Contains("4 flanks-differ"));
}

/// 45 bases on either side of a junction; the core reaches from 25 to 65.
std::string junction(unsigned seed) {
    return randomBases(45, seed) + randomBases(45, 30);
}

std::string junctionText(const std::string& name, const std::string& sequence,
                         const std::string& strand = "R1") {
    return entryText(name, sequence, 25, 65, strand);
}

TEST(Strands, OfTwoJunctionsWithOneCoreReversedTheLaterOneIsReported) {
    const std::string turned = withTurned(junction(31), 25, 65);
    EXPECT_THAT(rulesFoundIn("*A control\n" + junctionText("turned", turned) + "*B control\n" +
                             junctionText("right", junction(32))),
                ElementsAre("5 sequence-on-other-strand"));
}

TEST(Strands, OfManyJunctionsTheOneWithItsCoreReversedIsReported) {
    const std::string turned = withTurned(junction(31), 25, 65);
    EXPECT_THAT(rulesFoundIn("*A control\n" + junctionText("turned", turned) + "*B control\n" +
                             junctionText("one", junction(32)) + junctionText("two", junction(33))),
                ElementsAre("2 sequence-on-other-strand"));
}

TEST(Strands, CoresOnBothStrandsOfSequencesThatShareNothingElseAreFine) {
    // A repeat that stands in two targets, once on either strand.
    const std::string repeat = randomBases(20, 41);
    const auto around = [](const std::string& bases, unsigned seed) {
        return randomBases(35, seed) + bases + randomBases(35, seed + 1);
    };
    EXPECT_THAT(rulesFoundIn("*A control\n" + junctionText("one", around(repeat, 42)) +
                             junctionText("two", around(otherStrand(repeat), 44))),
                IsEmpty());
}

TEST(Strands, AFusionAgainstItsNeighboursIsBlamedAlone) {
    const std::string partner = randomBases(40, 3);
    const auto fusion = [&partner](unsigned seed) { return randomBases(40, seed) + partner; };
    EXPECT_THAT(rulesFoundIn("*F fusion_RNA\n" + entryText("F_control", randomBases(80, 4)) +
                             entryText("one", otherStrand(fusion(5)), 20, 60) +
                             entryText("two", fusion(6), 20, 60) +
                             entryText("three", fusion(7), 20, 60)),
                ElementsAre("1 type-called-not-counted", "4 sequence-on-other-strand"));
}

TEST(Strands, TargetsThatOverlapAsTheyStandAreFine) {
    EXPECT_THAT(rulesFoundIn("*A SomaticDNA\n" + entryText("a_wt", kLocus, 0, 25) +
                             entryText("a1", withChange(kLocus, 12), 0, 25) + "*B SomaticDNA\n" +
                             entryText("b_wt", kLocus, 30, 60) +
                             entryText("b1", withChange(kLocus, 45), 30, 60)),
                IsEmpty());
}

TEST(Strands, OneDomainOfTwoIsNotOutvoted) {
    const auto domain = [](const std::string& name, unsigned seed, const std::string& strand) {
        const std::string bases = randomBases(40, seed);
        return "*" + name + " SomaticDNA\n" + entryText(name + "_wt", bases, strand) +
               entryText(name + "_mutant", withChange(bases, 20), strand);
    };
    const std::string two = domain("A", 11, "R1") + domain("B", 12, "R2");
    EXPECT_THAT(rulesFoundIn(two), IsEmpty());
    EXPECT_THAT(rulesFoundIn(two + domain("C", 13, "R1")),
                ElementsAre("6 domain-strand-word-differs"));
    // Two against two: nobody can tell.
    EXPECT_THAT(rulesFoundIn(two + domain("C", 13, "R1") + domain("D", 14, "R2")), IsEmpty());
}

TEST(Strands, AnEntryAsksForTheReadOfMostOfItsDomain) {
    const auto entries = [](const std::vector<std::string>& words) {
        std::string text = "*J control\n";
        for (unsigned i = 0; i < words.size(); ++i) {
            text += entryText("j" + std::to_string(i), randomBases(40, 50 + i), words[i]);
        }
        return text;
    };
    EXPECT_THAT(rulesFoundIn(entries({"R2", "R1", "R2", "R2"})),
                ElementsAre("4 strand-word-differs"));
    EXPECT_THAT(rulesFoundIn(entries({"R1", "R2", "R2", "R2"})),
                ElementsAre("2 strand-word-differs"));
    // No clear majority.
    EXPECT_THAT(rulesFoundIn(entries({"R2", "R1", "R2"})), IsEmpty());
    EXPECT_THAT(rulesFoundIn(entries({"R1", "R1", "R2", "R2", "R2"})), IsEmpty());
    // A word that is none is reported as such, and does not count.
    EXPECT_THAT(rulesFoundIn(entries({"r2", "R2", "R2", "R2"})),
                ElementsAre("2 strand-word-unknown"));
}

} // namespace
} // namespace catalogue
