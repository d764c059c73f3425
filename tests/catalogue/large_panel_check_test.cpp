// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Ten thousand targets, each held against all the others by look-ups. A comparison of each with
// each would show in the time of these tests.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

/// A core of 40 bases in the middle, with flanks so long that none is repeated by chance.
std::string entry(const std::string& name, const std::string& sequence) {
    return ">" + name + " " + sequence.substr(40, 14) + " " + sequence.substr(66, 14) +
           " R1 0.001 0.0001 0.05 1000\n" + sequence + "\n";
}

TEST(LargePanel, OfTenThousandEntriesIsCheckedWithoutAFinding) {
    // 2,000 domains of a wild type and four mutants each.
    std::string text;
    for (unsigned domain = 0; domain < 2000; ++domain) {
        const std::string locus = randomBases(120, domain + 1);
        const std::string name = "d" + std::to_string(domain);
        text += "*" + name + " SomaticDNA\n" + entry(name + "_wt", locus);
        for (const std::size_t place : {54U, 57U, 60U, 63U}) {
            text += entry(name + "_" + std::to_string(place), withChange(locus, place));
        }
    }
    EXPECT_THAT(rulesFoundIn(text), testing::IsEmpty());
}

TEST(LargePanel, OfOneLocusTypedInTenThousandTimesIsChecked) {
    // The worst for look-ups: every k-mer has ten thousand places.
    const std::string locus = randomBases(120, 1);
    std::string text;
    for (unsigned domain = 0; domain < 10'000; ++domain) {
        const std::string name = "d" + std::to_string(domain);
        text += "*" + name + " control\n" + entry(name, locus);
    }
    const std::vector<std::string> found = rulesFoundIn(text);
    EXPECT_EQ(found.size(), 9999U);
    EXPECT_THAT(found, testing::Each(testing::HasSubstr("core-in-two-domains")));
}

} // namespace
} // namespace catalogue
