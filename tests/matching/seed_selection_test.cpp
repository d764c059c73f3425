// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/seed_selection.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace matching {
namespace {

TEST(SeedShape, SplitsTheShortestCoreBetweenKAndStride) {
    const SeedShape shape = chooseSeedShape({40, 31, 37});
    EXPECT_EQ(shape.minCoreLength(), 31u);
    EXPECT_EQ(shape.k, 15u);
}

TEST(SeedShape, LeavesOutAFewShortCoresButNotMany) {
    std::vector<std::size_t> lengths(50, 35);
    lengths.push_back(9);
    EXPECT_EQ(chooseSeedShape(lengths).minCoreLength(), 35u);
    lengths.resize(lengths.size() + 30, 9);
    EXPECT_EQ(chooseSeedShape(lengths).minCoreLength(), 9u);
}

TEST(SeedShape, HasALargerKWhereThereAreManyCores) {
    EXPECT_EQ(chooseSeedShape(std::vector<std::size_t>(50, 20)).k, 10u);
    EXPECT_GT(chooseSeedShape(std::vector<std::size_t>(20'000, 20)).k, 10u);
}

TEST(SeedShape, ExistsWithoutCoresThatCanBeIndexed) {
    EXPECT_EQ(chooseSeedShape({}).minCoreLength(), SeedShape::kMinK);
    EXPECT_EQ(chooseSeedShape({0, 3, 7}).minCoreLength(), SeedShape::kMinK);
}

TEST(SeedShape, HasNoLongerStrideThan20WhereCoresAreLong) {
    EXPECT_EQ(chooseSeedShape({500, 700}).stride, 20u);
    EXPECT_EQ(chooseSeedShape({500, 700}).k, 16u);
}

TEST(SeedSelection, TakesNoShortOrAmbiguousCore) {
    const SeedSelection selection({10, 11}, 1);
    const auto can = [&](const std::string& core) {
        return selection.canIndex(OrientedCore(core, true, Mate::read1));
    };
    EXPECT_TRUE(can("ACGTACGTACGTACGTACGT"));
    EXPECT_FALSE(can("ACGTACGTACGTACGTACG"));
    EXPECT_TRUE(can("RRRRACGTACGTACGTACGTACGT"));
    EXPECT_FALSE(can("ACGTACGRRRRRTACGTACG"));
    // The k-mers behind an ambiguous stretch are enough.
    EXPECT_TRUE(can("RRRRRRACGTACGTACGTACGTACGT"));
}

TEST(SeedSelection, TakesTheRunThatIsSharedTheLeast) {
    const SeedShape shape = {8, 3};
    SeedSelection selection(shape, 2);
    const std::string shared = "ACGTTGCAACCA";
    const OrientedCore first(shared + "GATTACAGTC", false, Mate::read1);
    const OrientedCore second(shared + "CCTTGGAATG", false, Mate::read1);
    selection.countSeedsOf(first);
    selection.countSeedsOf(second);
    std::vector<CoreSeed> seeds;
    const auto offset = selection.select(first);
    ASSERT_TRUE(offset);
    selection.appendSeeds(first, *offset, 0, seeds);
    ASSERT_EQ(seeds.size(), 3u);
    for (const CoreSeed& seed : seeds) {
        EXPECT_GE(seed.offset + shape.k, shared.size() + 1);
    }
}

TEST(SeedSelection, TakesNoCoreThatRepeatsItself) {
    SeedSelection selection({8, 5}, 4);
    for (const std::string core : {"AAAAAAAAAAAAAAAA", "ACACACACACACACAC", "GATTGATTGATTGATT"}) {
        EXPECT_FALSE(selection.select(OrientedCore(core, false, Mate::read1))) << core;
    }
    // A core with a run outside of its repeat is known by that run.
    const OrientedCore core("AAAAAAAAAAAACGTCGATTACA", false, Mate::read1);
    selection.countSeedsOf(core);
    EXPECT_TRUE(selection.select(core));
}

TEST(SeedSelection, KnowsNoMoreThanSoManyCoresByOneSeed) {
    const std::string text = "GATTACAGTCCGATTGCAAC";
    SeedSelection selection({8, 5}, 200);
    std::size_t taken = 0;
    for (int i = 0; i < 200; ++i) {
        taken += selection.select(OrientedCore(text, false, Mate::read1)).has_value() ? 1u : 0u;
    }
    EXPECT_EQ(taken, SeedSelection::kMaxCoresPerSeed);
}

TEST(SmallCounts, CountEachIndexByItself) {
    SmallCounts counts(4);
    counts.increase(1);
    counts.increase(3);
    counts.increase(3);
    EXPECT_EQ(counts[0], 0u);
    EXPECT_EQ(counts[1], 1u);
    EXPECT_EQ(counts[2], 0u);
    EXPECT_EQ(counts[3], 2u);
}

TEST(SmallCounts, CountBeyondWhatAByteHolds) {
    SmallCounts counts(3);
    for (std::size_t count = 1; count <= 1000; ++count) {
        counts.increase(1);
        ASSERT_EQ(counts[1], count);
    }
    counts.increase(2);
    EXPECT_EQ(counts[0], 0u);
    EXPECT_EQ(counts[2], 1u);
}

} // namespace
} // namespace matching
