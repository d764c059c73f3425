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
