// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_index.h"

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "matching/made_cores.h"
#include "matching/record_text.h"
#include "matching/window_choice.h"

namespace matching {
namespace {

using Candidates = std::vector<WindowIndex::Candidate>;

/// Of cores numbered from 0.
WindowIndex indexOf(const std::vector<std::string>& cores, WindowShape shape, Mate mate) {
    WindowChoice choice(shape, cores.size());
    for (const std::string& core : cores) {
        choice.announce(OrientedCore(core, true, mate));
    }
    std::vector<CoreWindow> windows;
    for (std::size_t i = 0; i < cores.size(); ++i) {
        const OrientedCore core(cores[i], true, mate);
        if (const auto first = choice.choose(core)) {
            choice.addWindows(core, *first, static_cast<std::uint32_t>(i), windows);
        }
    }
    return {shape, windows};
}

Candidates candidatesOf(const WindowIndex& index, const std::string& read) {
    const std::string text = read + std::string(RecordText::kReadableBeyond, 'A');
    WorkList<Look> looks;
    index.addLooks(std::string_view(text).substr(0, read.size()), 4, looks);
    std::vector<std::uint32_t> selected(looks.size());
    selected.resize(static_cast<std::size_t>(index.filter().select(looks.all(), selected.data()) -
                                             selected.data()));
    Candidates candidates;
    for (const std::uint32_t number : selected) {
        candidates.push_back(index.candidateAt(looks[number]));
    }
    return candidates;
}

/// Where the index has the cores begin in a read.
std::set<std::pair<std::uint32_t, std::size_t>> suspected(const WindowIndex& index,
                                                          const std::string& read) {
    std::set<std::pair<std::uint32_t, std::size_t>> places;
    for (const auto& candidate : candidatesOf(index, read)) {
        EXPECT_EQ(candidate.read, 4u);
        for (const auto& posting : index.postingsNear(candidate)) {
            if (WindowIndex::leadsTo(candidate, posting)) {
                places.insert({posting.record, candidate.place - posting.offset});
            }
        }
    }
    return places;
}

TEST(WindowShape, SplitsTheShortestCoreBetweenWindowAndStride) {
    const WindowShape shape = chooseShape({40, 31, 37});
    EXPECT_EQ(shape.lettersThatShow(), 31u);
    EXPECT_EQ(shape.length, 15u);
}

TEST(WindowShape, LeavesOutAFewShortCoresButNotMany) {
    std::vector<std::size_t> lengths(50, 35);
    lengths.push_back(9);
    EXPECT_EQ(chooseShape(lengths).lettersThatShow(), 35u);
    lengths.resize(lengths.size() + 30, 9);
    EXPECT_EQ(chooseShape(lengths).lettersThatShow(), 9u);
}

TEST(WindowShape, LooksAtMoreLettersWhereThereAreManyCores) {
    EXPECT_EQ(chooseShape(std::vector<std::size_t>(50, 20)).length, 10u);
    EXPECT_GT(chooseShape(std::vector<std::size_t>(20'000, 20)).length, 10u);
}

TEST(WindowShape, IsThereWithoutCoresThatCanBeIndexed) {
    EXPECT_EQ(chooseShape({}).lettersThatShow(), WindowShape::kShortest);
    EXPECT_EQ(chooseShape({0, 3, 7}).lettersThatShow(), WindowShape::kShortest);
}

TEST(WindowChoice, TakesNoShortOrAmbiguousCore) {
    const WindowChoice choice({10, 11}, 1);
    const auto can = [&](const std::string& core) {
        return choice.canIndex(OrientedCore(core, true, Mate::read1));
    };
    EXPECT_TRUE(can("ACGTACGTACGTACGTACGT"));
    EXPECT_FALSE(can("ACGTACGTACGTACGTACG"));
    EXPECT_TRUE(can("RRRRACGTACGTACGTACGTACGT"));
    EXPECT_FALSE(can("ACGTACGRRRRRTACGTACG"));
    // The windows to the right of an ambiguous stretch are enough.
    EXPECT_TRUE(can("RRRRRRACGTACGTACGTACGTACGT"));
}

TEST(WindowChoice, TakesTheStretchThatIsSharedTheLeast) {
    const WindowShape shape = {8, 3};
    WindowChoice choice(shape, 2);
    const std::string shared = "ACGTTGCAACCA";
    const OrientedCore first(shared + "GATTACAGTC", false, Mate::read1);
    const OrientedCore second(shared + "CCTTGGAATG", false, Mate::read1);
    choice.announce(first);
    choice.announce(second);
    std::vector<CoreWindow> windows;
    const auto stretch = choice.choose(first);
    ASSERT_TRUE(stretch);
    choice.addWindows(first, *stretch, 0, windows);
    ASSERT_EQ(windows.size(), 3u);
    for (const CoreWindow& window : windows) {
        EXPECT_GE(window.offset + shape.length, shared.size() + 1);
    }
}

TEST(WindowShape, LooksAtNoFewerWindowsWhereCoresAreLong) {
    EXPECT_EQ(chooseShape({500, 700}).stride, 20u);
    EXPECT_EQ(chooseShape({500, 700}).length, 16u);
}

TEST(WindowChoice, TakesNoCoreThatRepeatsItself) {
    WindowChoice choice({8, 5}, 4);
    for (const std::string core : {"AAAAAAAAAAAAAAAA", "ACACACACACACACAC", "GATTGATTGATTGATT"}) {
        EXPECT_FALSE(choice.choose(OrientedCore(core, false, Mate::read1))) << core;
    }
    // A core that has a stretch besides its repeat is known by that one.
    const OrientedCore core("AAAAAAAAAAAACGTCGATTACA", false, Mate::read1);
    choice.announce(core);
    EXPECT_TRUE(choice.choose(core));
}

TEST(WindowChoice, KnowsNoMoreThanSoManyCoresByOneWindow) {
    const std::string text = "GATTACAGTCCGATTGCAAC";
    WindowChoice choice({8, 5}, 200);
    std::size_t taken = 0;
    for (int i = 0; i < 200; ++i) {
        taken += choice.choose(OrientedCore(text, false, Mate::read1)).has_value() ? 1u : 0u;
    }
    EXPECT_EQ(taken, WindowChoice::kMostAlike);
}

class EveryShape : public testing::TestWithParam<WindowShape> {};

TEST_P(EveryShape, SuspectsEveryCoreWhereverItStands) {
    std::mt19937 random(5);
    std::vector<std::string> cores;
    for (std::size_t i = 0; i < 40; ++i) {
        cores.push_back(randomBases(random, GetParam().lettersThatShow() + i % 9));
    }
    cores.push_back(cores[0]); // twice the same
    const WindowIndex index = indexOf(cores, GetParam(), Mate::read1);
    for (std::uint32_t number = 0; number < cores.size(); ++number) {
        for (std::size_t place = 0; place < 40; ++place) {
            const std::string read =
                randomBases(random, place) + cores[number] + randomBases(random, number % 7);
            EXPECT_EQ(suspected(index, read).count({number, place}), 1u)
                << cores[number] << " at " << place;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, EveryShape,
                         testing::Values(WindowShape{8, 1}, WindowShape{8, 5}, WindowShape{11, 13},
                                         WindowShape{16, 16}, WindowShape{16, 1},
                                         WindowShape{9, 20}));

TEST(WindowIndex, SuspectsACoreInRead2AsItLiesInEitherCase) {
    const WindowIndex index = indexOf({"AACCGATTACAGG"}, {8, 6}, Mate::read2);
    EXPECT_EQ(suspected(index, "TTTCCTGTAATCGGTTA").count({0, 3}), 1u);
    EXPECT_EQ(suspected(index, "tttcctgtaatcggtta").count({0, 3}), 1u);
    EXPECT_TRUE(suspected(index, "AACCGATTACAGGTTTT").empty());
}

TEST(WindowIndex, SuspectsAWildcardCoreForEachOfItsTexts) {
    const WindowIndex index = indexOf({"ACRTTGCYACCA"}, {8, 5}, Mate::read1);
    for (const std::string text :
         {"ACATTGCCACCA", "ACATTGCTACCA", "ACGTTGCCACCA", "ACGTTGCTACCA"}) {
        EXPECT_EQ(suspected(index, "GG" + text).count({0, 2}), 1u) << text;
    }
    EXPECT_TRUE(suspected(index, "GGACCTTGCGACCA").empty());
}

TEST(WindowIndex, HasHardlyACandidateInReadsWithoutACore) {
    std::mt19937 random(6);
    std::vector<std::string> cores(1000);
    std::generate(cores.begin(), cores.end(), [&] { return randomBases(random, 31); });
    const WindowIndex index = indexOf(cores, {16, 16}, Mate::read1);
    std::size_t candidates = 0;
    for (int i = 0; i < 1000; ++i) {
        candidates += candidatesOf(index, randomBases(random, 150)).size();
    }
    EXPECT_LT(candidates, 300u); // of 9000 windows
}

TEST(WindowIndex, HasNoCandidatesWithoutCoresOrInShortReads) {
    EXPECT_TRUE(WindowIndex().empty());
    EXPECT_TRUE(candidatesOf(WindowIndex(), "ACGTACGTACGT").empty());
    const WindowIndex index = indexOf({"ACGTACGT"}, {8, 1}, Mate::read1);
    EXPECT_TRUE(candidatesOf(index, "").empty());
    EXPECT_TRUE(candidatesOf(index, "ACGTACG").empty());
    EXPECT_EQ(candidatesOf(index, "ACGTACGT").size(), 1u);
}

} // namespace
} // namespace matching
