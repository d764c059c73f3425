// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Where the rules about wild types must be silent, and where they end. What they find stands in
// tests/data/catalogue.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kLocus = randomBases(40, 1);

/// A domain of three variants of one locus under these names; the first has no change.
std::string domainOf(const std::string& first, const std::string& second,
                     const std::string& third = "third") {
    return "*D SomaticDNA\n" + entryText(first, kLocus) +
           entryText(second, withChange(kLocus, 15)) + entryText(third, withChange(kLocus, 25));
}

TEST(WildTypes, AreKnownByTheUsualNames) {
    for (const char* const name : {"KRAS_wt", "WT", "wt-KRAS", "KRAS.WT", "KRASwt", "KRAS12wt",
                                   "wildtype", "KRAS_WildType", "wild_type", "Wild-Type"}) {
        EXPECT_THAT(rulesFoundIn(domainOf("first", name)), ElementsAre("4 wild-type-not-first"))
            << name;
        EXPECT_THAT(rulesFoundIn(domainOf(name, "second")), IsEmpty()) << name;
    }
}

TEST(WildTypes, AreNotSeenInNamesThatOnlyHoldTheLetters) {
    for (const char* const name : {"GROWTH1", "WTX", "newt", "wta"}) {
        EXPECT_THAT(rulesFoundIn(domainOf("first", name)), IsEmpty()) << name;
    }
}

TEST(WildTypes, AreMissedWhereTheFirstEntryIsNamedAsAMutant) {
    for (const char* const name : {"G12D", "KRAS_G12D", "p.V600E", "TP53_R213*", "E746_A750del_a",
                                   "L747_P753delinsS", "A775_G776insYVMA"}) {
        EXPECT_THAT(rulesFoundIn(domainOf(name, "second")),
                    ElementsAre("2 first-entry-named-as-mutant"))
            << name;
        EXPECT_THAT(rulesFoundIn(domainOf(std::string(name) + "_wt", "second")), IsEmpty()) << name;
    }
}

TEST(WildTypes, AreNotMissedWhereTheFirstNameIsAGeneOrAPlace) {
    for (const char* const name : {"B2M", "KRAS", "EGFR_exon21", "codon12", "H3", "reference"}) {
        EXPECT_THAT(rulesFoundIn(domainOf(name, "second")), IsEmpty()) << name;
    }
}

TEST(WildTypes, HaveOneChangeToEachMutantOfAnyLength) {
    const std::string deletion = kLocus.substr(0, 13) + kLocus.substr(25);
    const std::string insertion = kLocus.substr(0, 20) + "TCATCATCATCA" + kLocus.substr(20);
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("a", kLocus) +
                             entryText("b", withChange(kLocus, 15)) + entryText("c", deletion) +
                             entryText("d", insertion)),
                IsEmpty());
}

TEST(WildTypes, MayStandBehindAMutantOnlyWhereTheirNameSaysSo) {
    // A double mutant is two changes from the wild type, and one from a single mutant.
    const std::string single = withChange(kLocus, 15);
    const std::string twice = withChange(single, 25);
    const auto domain = [&](const std::string& first) {
        return "*D SomaticDNA\n" + entryText(first, kLocus) + entryText("single", single) +
               entryText("double", twice);
    };
    EXPECT_THAT(rulesFoundIn(domain("wt")), IsEmpty());
    EXPECT_THAT(rulesFoundIn(domain("first")), ElementsAre("2 first-entry-unlike-others"));
}

TEST(WildTypes, AreNoMatterOfFusionsAndTranscripts) {
    for (const char* const type : {"fusion_RNA", "germline_mRNA", "control"}) {
        const auto found = rulesFoundIn("*D " + std::string(type) + "\n" +
                                        entryText("a_control", randomBases(40, 2)) +
                                        entryText("b_wt", randomBases(50, 3), "R2") +
                                        entryText("c", randomBases(60, 4), 10, 50));
        EXPECT_THAT(found, testing::Each(testing::Not(testing::HasSubstr("wild-type")))) << type;
        EXPECT_THAT(found, testing::Each(testing::Not(testing::HasSubstr("differ")))) << type;
    }
}

TEST(WildTypes, MayHaveOtherFlanksThanTheSecondAllele) {
    const std::string deleted = kLocus.substr(0, 20) + randomBases(20, 5);
    const std::string entries = entryText("wt", kLocus) + entryText("del", deleted);
    EXPECT_THAT(rulesFoundIn("*BIM Germline\n" + entries), IsEmpty());
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entries), ElementsAre("4 flanks-differ"));
}

TEST(WildTypes, MayHaveFlanksOfAnotherLengthThatMarkTheSamePlace) {
    const std::string mutant = withChange(kLocus, 20);
    EXPECT_THAT(rulesFoundIn("*D SomaticDNA\n" + entryText("wt", kLocus) + ">m " +
                             mutant.substr(0, 15) + " " + mutant.substr(28) +
                             " R1 0.001 0.0001 0.05 1000\n" + mutant + "\n"),
                IsEmpty());
}

TEST(WildTypes, AreComparedWithThoseOfOtherDomains) {
    const std::string other = randomBases(60, 6);
    const std::string mutant = withChange(other, 30);
    const std::string panel = "*A SomaticDNA\n" + entryText("a_wt", randomBases(60, 7)) +
                              entryText("stray", mutant) + "*B SomaticDNA\n" +
                              entryText("b_wt", other) + entryText("b1", withChange(other, 20));
    EXPECT_THAT(rulesFoundIn(panel), Contains("4 nearer-to-another-wild-type"));
    // Two domains of one exon: each mutant is as near to its own wild type as to the other.
    EXPECT_THAT(rulesFoundIn("*A SomaticDNA\n" + entryText("a_wt", other, 0, 30) +
                             entryText("a1", withChange(other, 15), 0, 30) + "*B SomaticDNA\n" +
                             entryText("b_wt", other, 32, 60) +
                             entryText("b1", withChange(other, 45), 32, 60)),
                IsEmpty());
}

} // namespace
} // namespace catalogue
