// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Near cores at every place and of several lengths, and where the rules must be silent.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/iupac.h"
#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What the rules about near cores find where the core of domain B stands beside that of domain A.
std::vector<std::string> foundBetween(const std::string& a, const std::string& b,
                                      const std::string& strandOfB = "R1") {
    std::vector<std::string> found = rulesFoundIn("*A control\n" + entryText("a", a) +
                                                  "*B control\n" + entryText("b", b, strandOfB));
    const auto isOther = [](const std::string& rule) {
        return rule.find("another") == std::string::npos;
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
}

TEST(NearCores, AreFoundWhereverTheMismatchStands) {
    for (const std::size_t length : {20U, 21U, 24U, 40U, 61U}) {
        const std::string core = randomBases(length, 1);
        for (std::size_t place = 0; place < length; ++place) {
            const std::string near = withChange(core, place);
            EXPECT_THAT(foundBetween(core, near), ElementsAre("5 core-near-another"))
                << length << ", " << place;
            EXPECT_THAT(foundBetween(core, otherStrand(near)),
                        ElementsAre("5 core-reversed-in-another"))
                << length << ", " << place;
        }
    }
}

TEST(NearCores, AreFoundWhereverOneLiesInTheOther) {
    const std::string longer = randomBases(60, 1);
    for (std::size_t begin = 0; begin + 24 <= longer.size(); ++begin) {
        const std::string shorter = longer.substr(begin, 24);
        EXPECT_THAT(foundBetween(longer, shorter), ElementsAre("5 core-inside-another")) << begin;
        EXPECT_THAT(foundBetween(shorter, longer), ElementsAre("5 core-inside-another")) << begin;
        EXPECT_THAT(foundBetween(longer, withChange(shorter, 11)),
                    ElementsAre("5 core-near-another"))
            << begin;
        EXPECT_THAT(foundBetween(longer, otherStrand(shorter)),
                    ElementsAre("5 core-reversed-in-another"))
            << begin;
    }
}

TEST(NearCores, AreFoundAmongShortOnes) {
    const std::string longer = randomBases(60, 1);
    for (std::size_t length = 10; length < 20; ++length) {
        EXPECT_THAT(foundBetween(longer, longer.substr(20, length)),
                    ElementsAre("5 core-inside-another"))
            << length;
    }
}

TEST(NearCores, DifferInOneBaseAtMost) {
    const std::string core = randomBases(40, 1);
    EXPECT_THAT(foundBetween(core, withChange(withChange(core, 10), 30)), IsEmpty());
    EXPECT_THAT(foundBetween(core, withChange(withChange(core, 2), 3)), IsEmpty());
    EXPECT_THAT(foundBetween(core, core.substr(0, 20) + core.substr(21)), IsEmpty());
}

TEST(NearCores, AgreeWhereACodeStandsForTheBase) {
    const std::string core = randomBases(40, 1);
    std::string coded = core;
    coded[15] = core[15] == 'A' || core[15] == 'G' ? 'R' : 'Y';
    EXPECT_THAT(foundBetween(core, coded), ElementsAre("5 core-inside-another"));
    coded[15] = core[15] == 'A' || core[15] == 'G' ? 'Y' : 'R';
    EXPECT_THAT(foundBetween(core, coded), ElementsAre("5 core-near-another"));
}

TEST(NearCores, OfOneLocusInTwoDomainsAreOneFinding) {
    const std::string core = randomBases(40, 1);
    const auto domain = [](const std::string& name, const std::string& bases, std::size_t place) {
        return "*" + name + " SomaticDNA\n" + entryText(name + "_wt", bases) +
               entryText(name + "_1", withChange(bases, place)) +
               entryText(name + "_2", withChange(bases, place + 3));
    };
    EXPECT_THAT(rulesFoundIn(domain("A", core, 12) + domain("B", core, 22)),
                ElementsAre("9 core-in-two-domains"));
}

TEST(NearCores, AreNoMatterOfOneDomainAsTheyStand) {
    const std::string core = randomBases(40, 1);
    EXPECT_THAT(
        rulesFoundIn("*A control\n" + entryText("a", core) + entryText("b", withChange(core, 20))),
        IsEmpty());
}

} // namespace
} // namespace catalogue
