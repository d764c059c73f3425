// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Both sides of each limit that the rules about a core by itself have.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/panel_text.h"

namespace catalogue {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

std::vector<std::string> foundInCore(const std::string& core, std::size_t readLength = 150) {
    CheckOptions options;
    options.readLength = readLength;
    return rulesFoundIn("*D control\n" + entryText("entry", core), options);
}

TEST(CoreBases, OfACoreAre20AtLeast) {
    EXPECT_THAT(foundInCore(randomBases(19, 1)), ElementsAre("2 core-short"));
    EXPECT_THAT(foundInCore(randomBases(20, 1)), IsEmpty());
}

TEST(CoreBases, TakeFourFifthsOfAReadAtMost) {
    EXPECT_THAT(foundInCore(randomBases(120, 1)), IsEmpty());
    EXPECT_THAT(foundInCore(randomBases(121, 1)), ElementsAre("2 core-seldom-reached"));
    EXPECT_THAT(foundInCore(randomBases(150, 1)), ElementsAre("2 core-seldom-reached"));
    EXPECT_THAT(foundInCore(randomBases(151, 1)), ElementsAre("2 core-longer-than-read"));
}

TEST(CoreBases, AreHeldAgainstTheLengthOfReadsThatIsGiven) {
    EXPECT_THAT(foundInCore(randomBases(60, 1), 75), IsEmpty());
    EXPECT_THAT(foundInCore(randomBases(61, 1), 75), ElementsAre("2 core-seldom-reached"));
    EXPECT_THAT(foundInCore(randomBases(76, 1), 75), ElementsAre("2 core-longer-than-read"));
    EXPECT_THAT(foundInCore(randomBases(200, 1), 250), IsEmpty());
}

TEST(CoreBases, RepeatSixTimesInARowAtMost) {
    const std::string left = randomBases(20, 1) + "C";
    const std::string right = "C" + randomBases(20, 2);
    EXPECT_THAT(foundInCore(left + std::string(6, 'A') + right), IsEmpty());
    EXPECT_THAT(foundInCore(left + std::string(7, 'A') + right), ElementsAre("2 core-homopolymer"));
}

TEST(CoreBases, OfLowComplexityAreFoundByTheirTriplets) {
    const std::string left = randomBases(10, 1);
    const std::string right = randomBases(10, 2);
    const auto repeat = [&](const std::string& unit, int times) {
        std::string core = left;
        for (int i = 0; i < times; ++i) {
            core += unit;
        }
        return core + right;
    };
    EXPECT_THAT(foundInCore(repeat("CAG", 12)), ElementsAre("2 core-low-complexity"));
    EXPECT_THAT(foundInCore(repeat("AT", 12)), ElementsAre("2 core-low-complexity"));
    EXPECT_THAT(foundInCore(repeat("A", 30)), ElementsAre("2 core-low-complexity"));
    EXPECT_THAT(foundInCore(repeat("CAG", 4)), IsEmpty());
    // Long cores are looked at by windows: their length alone makes no triplet frequent.
    EXPECT_THAT(foundInCore(randomBases(400, 3), 509), IsEmpty());
    EXPECT_THAT(foundInCore(randomBases(200, 3) + repeat("CAG", 16) + randomBases(100, 4), 509),
                ElementsAre("2 core-low-complexity"));
}

/// What is found in a domain of entries with these cores.
std::vector<std::string> foundInCores(const std::vector<std::string>& cores) {
    std::string text = "*D control\n";
    for (const std::string& core : cores) {
        text += entryText("e" + std::to_string(&core - cores.data()), core);
    }
    return rulesFoundIn(text);
}

TEST(CoreBases, ThatEntriesShareAreReportedOnceADomain) {
    const std::string left = randomBases(20, 1) + "C";
    const std::string right = "C" + randomBases(20, 2);
    const std::string run(7, 'A');
    const std::string core = left + run + right;
    EXPECT_THAT(foundInCores({core, withChange(core, 3), withChange(core, 18)}),
                ElementsAre("2 core-homopolymer"));
    // Two junctions with one exon in common.
    EXPECT_THAT(foundInCores({core, randomBases(21, 3) + run + right}),
                ElementsAre("2 core-homopolymer"));
    const std::string repeat = "CAGCAGCAGCAGCAGCAGCAGCAGCAG";
    const std::string poor = randomBases(10, 1) + repeat + randomBases(10, 2);
    EXPECT_THAT(foundInCores({poor, withChange(poor, 3), withChange(poor, 42)}),
                ElementsAre("2 core-low-complexity"));
}

TEST(CoreBases, OfAnotherStretchAreReportedToo) {
    const auto around = [](const std::string& stretch, unsigned seed) {
        return randomBases(19, seed) + "TC" + stretch + "CT" + randomBases(19, seed + 1);
    };
    const std::string sevenA = around("AAAAAAA", 1);
    const std::string sevenElsewhere =
        randomBases(18, 5) + "TGG" + "AAAAAAA" + "GGT" + randomBases(18, 6);
    EXPECT_THAT(foundInCores({sevenA, sevenElsewhere}),
                ElementsAre("2 core-homopolymer", "4 core-homopolymer"));
    EXPECT_THAT(foundInCores({sevenA, around("AAAAAAAA", 1)}),
                ElementsAre("2 core-homopolymer", "4 core-homopolymer"));
    // Another domain is another result.
    EXPECT_THAT(rulesFoundIn("*D control\n" + entryText("a", sevenA) + "*E control\n" +
                             entryText("b", withChange(sevenA, 3))),
                IsSupersetOf({"2 core-homopolymer", "5 core-homopolymer"}));
}

TEST(CoreBases, AreThoseBetweenTheFirstPlacesOfBothFlanks) {
    const std::string core = randomBases(40, 1);
    const std::string before = core.substr(0, 10) + "C";
    const std::string behind = "C" + core.substr(30);
    const auto found = [&core](const std::string& sequence) {
        return rulesFoundIn("*D control\n>e " + core.substr(0, 10) + " " + core.substr(30) +
                            " R1 0.001 0.0001 0.05 1000\n" + sequence + "\n");
    };
    EXPECT_THAT(found(core), IsEmpty());
    EXPECT_THAT(found(before + core), ElementsAre("2 flank-repeated"));
    EXPECT_THAT(found(core + behind), ElementsAre("2 flank-repeated"));
    EXPECT_THAT(found(before + core + behind), ElementsAre("2 flank-repeated", "2 flank-repeated"));
}

} // namespace
} // namespace catalogue
