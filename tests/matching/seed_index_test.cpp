// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/seed_index.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "matching/made_cores.h"
#include "matching/seed_selection.h"
#include "reads/record_text.h"

namespace matching {
namespace {

using Candidates = std::vector<SeedIndex::Candidate>;

/// Of cores numbered from 0.
SeedIndex indexOf(const std::vector<std::string>& cores, SeedShape shape, Mate mate) {
    SeedSelection selection(shape, cores.size());
    for (const std::string& core : cores) {
        selection.countSeedsOf(OrientedCore(core, true, mate));
    }
    std::vector<CoreSeed> seeds;
    for (std::size_t i = 0; i < cores.size(); ++i) {
        const OrientedCore core(cores[i], true, mate);
        if (const auto first = selection.select(core)) {
            selection.appendSeeds(core, *first, static_cast<std::uint32_t>(i), seeds);
        }
    }
    return {shape, seeds};
}

Candidates candidatesOf(const SeedIndex& index, const std::string& read) {
    const std::string text = read + std::string(reads::RecordText::kReadableBeyond, 'A');
    const std::string_view alone = std::string_view(text).substr(0, read.size());
    std::vector<ReadSeed> seeds(index.maxSeedsIn(alone));
    seeds.resize(static_cast<std::size_t>(index.sample(alone, 4, seeds.data()) - seeds.data()));
    std::vector<std::uint32_t> selected(seeds.size());
    selected.resize(
        static_cast<std::size_t>(index.filter().select(seeds, selected.data()) - selected.data()));
    Candidates candidates;
    for (const std::uint32_t number : selected) {
        candidates.push_back(index.candidateOf(seeds[number]));
    }
    return candidates;
}

/// Each core with each position at which a seed says that it begins.
std::set<std::pair<std::uint32_t, std::size_t>> seedHits(const SeedIndex& index,
                                                         const std::string& read) {
    std::set<std::pair<std::uint32_t, std::size_t>> positions;
    for (const auto& candidate : candidatesOf(index, read)) {
        EXPECT_EQ(candidate.read, 4u);
        for (const auto& posting : index.postingsNear(candidate)) {
            if (SeedIndex::mayMatch(candidate, posting)) {
                positions.insert({posting.record, candidate.position - posting.offset});
            }
        }
    }
    return positions;
}

class EveryShape : public testing::TestWithParam<SeedShape> {};

TEST_P(EveryShape, FindsASeedOfEveryCoreWhereverItOccurs) {
    std::mt19937 random(5);
    std::vector<std::string> cores;
    for (std::size_t i = 0; i < 40; ++i) {
        cores.push_back(randomBases(random, GetParam().minCoreLength() + i % 9));
    }
    cores.push_back(cores[0]); // twice the same
    const SeedIndex index = indexOf(cores, GetParam(), Mate::read1);
    for (std::uint32_t number = 0; number < cores.size(); ++number) {
        for (std::size_t position = 0; position < 40; ++position) {
            const std::string read =
                randomBases(random, position) + cores[number] + randomBases(random, number % 7);
            EXPECT_EQ(seedHits(index, read).count({number, position}), 1u)
                << cores[number] << " at " << position;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, EveryShape,
                         testing::Values(SeedShape{8, 1}, SeedShape{8, 5}, SeedShape{11, 13},
                                         SeedShape{16, 16}, SeedShape{16, 1}, SeedShape{9, 20}));

TEST(SeedIndex, FindsASeedOfTheReverseComplementInRead2InEitherCase) {
    const SeedIndex index = indexOf({"AACCGATTACAGG"}, {8, 6}, Mate::read2);
    EXPECT_EQ(seedHits(index, "TTTCCTGTAATCGGTTA").count({0, 3}), 1u);
    EXPECT_EQ(seedHits(index, "tttcctgtaatcggtta").count({0, 3}), 1u);
    EXPECT_TRUE(seedHits(index, "AACCGATTACAGGTTTT").empty());
}

TEST(SeedIndex, FindsASeedOfEachExpansionOfAWildcardCore) {
    const SeedIndex index = indexOf({"ACRTTGCYACCA"}, {8, 5}, Mate::read1);
    for (const std::string text :
         {"ACATTGCCACCA", "ACATTGCTACCA", "ACGTTGCCACCA", "ACGTTGCTACCA"}) {
        EXPECT_EQ(seedHits(index, "GG" + text).count({0, 2}), 1u) << text;
    }
    EXPECT_TRUE(seedHits(index, "GGACCTTGCGACCA").empty());
}

TEST(SeedIndex, HasHardlyACandidateInReadsWithoutACore) {
    std::mt19937 random(6);
    std::vector<std::string> cores(1000);
    std::generate(cores.begin(), cores.end(), [&] { return randomBases(random, 31); });
    const SeedIndex index = indexOf(cores, {16, 16}, Mate::read1);
    std::size_t candidates = 0;
    for (int i = 0; i < 1000; ++i) {
        candidates += candidatesOf(index, randomBases(random, 150)).size();
    }
    EXPECT_LT(candidates, 300u); // of 9000 seeds
}

TEST(SeedIndex, HasNoCandidatesWithoutCoresOrInShortReads) {
    EXPECT_TRUE(SeedIndex().empty());
    EXPECT_TRUE(candidatesOf(SeedIndex(), "ACGTACGTACGT").empty());
    const SeedIndex index = indexOf({"ACGTACGT"}, {8, 1}, Mate::read1);
    EXPECT_TRUE(candidatesOf(index, "").empty());
    EXPECT_TRUE(candidatesOf(index, "ACGTACG").empty());
    EXPECT_EQ(candidatesOf(index, "ACGTACGT").size(), 1u);
}

} // namespace
} // namespace matching
