// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/pair_judgement.h"

#include <array>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace matching {
namespace {

constexpr ReadPair kPair = {"ACGTACGT", "ACGTACGT", "IIIIIIII", "IIIIIIII"};

CoreUse useBy(std::uint32_t mutation, std::uint32_t domain, bool stops = false) {
    CoreUse use;
    use.mutation = mutation;
    use.domain = domain;
    use.coreLength = 4;
    use.strand = Strand::read1;
    use.stops = stops;
    return use;
}

/// The counts of four mutations for a pair whose read 1 holds all cores.
std::vector<std::int64_t> countsOf(const std::vector<CoreUse>& uses) {
    std::vector<Finding> inRead1;
    for (std::uint32_t core = 0; core < uses.size(); ++core) {
        inRead1.push_back({core, 1});
    }
    PairJudgement judgement(uses);
    judgement.begin(kPair, inRead1, {});
    std::vector<std::int64_t> counts(4);
    EXPECT_TRUE(judgement.count(counts.data()));
    return counts;
}

using Counts = std::vector<std::int64_t>;

TEST(PairJudgement, CountsTheFirstMutationOfEachDomainWhateverTheOrderOfTheCores) {
    EXPECT_EQ(countsOf({useBy(0, 0), useBy(1, 0), useBy(2, 1), useBy(3, 1)}), (Counts{1, 0, 1, 0}));
    EXPECT_EQ(countsOf({useBy(3, 1), useBy(1, 0), useBy(2, 1), useBy(0, 0)}), (Counts{1, 0, 1, 0}));
}

TEST(PairJudgement, CountsNothingBehindADomainThatStopsWhateverTheOrderOfTheCores) {
    EXPECT_EQ(countsOf({useBy(1, 1, true), useBy(2, 2)}), (Counts{0, 1, 0, 0}));
    EXPECT_EQ(countsOf({useBy(2, 2), useBy(1, 1, true)}), (Counts{0, 1, 0, 0}));
    EXPECT_EQ(countsOf({useBy(2, 2), useBy(1, 1, true), useBy(0, 0)}), (Counts{1, 1, 0, 0}));
}

TEST(PairJudgement, JudgesEachPairForItself) {
    const std::vector<CoreUse> uses = {useBy(0, 0)};
    PairJudgement judgement(uses);
    std::array<Finding, 1> found = {{{0, 1}}};
    std::int64_t count = 0;
    judgement.begin(kPair, found, {});
    EXPECT_TRUE(judgement.count(&count));
    judgement.begin(kPair, {}, {});
    EXPECT_FALSE(judgement.count(&count));
    EXPECT_EQ(count, 1);
}

} // namespace
} // namespace matching
