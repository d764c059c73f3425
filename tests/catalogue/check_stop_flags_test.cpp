// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Two domains of one locus; the first has the stop flag, if any.
std::string neighbours(const std::string& flag, std::size_t distance) {
    const std::string locus = randomBases(distance + 60, 2);
    const auto domain = [](const std::string& header, const std::string& name,
                           const std::string& bases, std::size_t begin) {
        return header + entryText(name + "_wt", bases, begin, begin + 30) +
               entryText(name + "_1", withChange(bases, begin + 15), begin, begin + 30);
    };
    return domain("*A SomaticDNA " + flag + "\n", "a", locus, 0) +
           domain("*B SomaticDNA\n", "b", locus, distance);
}

TEST(StopFlags, HideATargetThatTheSamePairCanHold) {
    EXPECT_THAT(rulesFoundIn(neighbours("StopSearchIfMatched", 100)),
                ElementsAre("1 stop-flag-hides-domain"));
    EXPECT_THAT(rulesFoundIn(neighbours("", 100)), IsEmpty());
}

TEST(StopFlags, HideNothingFartherAwayThanTwoReads) {
    // The cores reach over 30 bases more than their distance.
    EXPECT_THAT(rulesFoundIn(neighbours("StopSearchIfMatched", 270)),
                ElementsAre("1 stop-flag-hides-domain"));
    EXPECT_THAT(rulesFoundIn(neighbours("StopSearchIfMatched", 271)), IsEmpty());
    CheckOptions shortReads;
    shortReads.readLength = 75;
    EXPECT_THAT(rulesFoundIn(neighbours("StopSearchIfMatched", 121), shortReads), IsEmpty());
}

TEST(StopFlags, HideNoTranscriptThatOnlySharesAPartner) {
    const std::string partner = randomBases(40, 3);
    const auto panel = [&partner](unsigned seed) {
        return entryText("x" + std::to_string(seed), randomBases(40, seed) + partner, 20, 60);
    };
    EXPECT_THAT(rulesFoundIn("*F fusion_RNA StopSearchIfMatched\n" +
                             entryText("F_control", randomBases(80, 4), 20, 60) + panel(5) +
                             "*N control\n" + panel(6)),
                Each(Not(HasSubstr("stop-flag"))));
}

TEST(StopFlags, HideNothingThatStandsBefore) {
    std::string text = neighbours("", 100);
    const std::string header = "*B SomaticDNA";
    text.replace(text.find(header), header.size(), header + " StopSearchIfMatched");
    EXPECT_THAT(rulesFoundIn(text), IsEmpty());
}

} // namespace
} // namespace catalogue
