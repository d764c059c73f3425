// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/pair_assignment.h"

#include <array>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace matching {
namespace {

constexpr reads::ReadPair kPair = {"ACGTACGT", "ACGTACGT", "IIIIIIII", "IIIIIIII"};

CoreEntry entryOf(std::uint32_t mutation, std::uint32_t domain, bool stops = false) {
    CoreEntry entry;
    entry.mutation = mutation;
    entry.domain = domain;
    entry.coreLength = 4;
    entry.strand = Strand::read1;
    entry.stops = stops;
    return entry;
}

/// The counts of four mutations for a pair whose read 1 holds all cores.
std::vector<std::int64_t> countsOf(const std::vector<CoreEntry>& entries) {
    std::vector<CoreHit> inRead1;
    for (std::uint32_t core = 0; core < entries.size(); ++core) {
        inRead1.push_back({core, 1});
    }
    PairAssignment assignment(entries);
    assignment.begin(kPair, inRead1, {});
    std::vector<std::int64_t> counts(4);
    EXPECT_TRUE(assignment.count(counts.data()));
    return counts;
}

using Counts = std::vector<std::int64_t>;

TEST(PairAssignment, CountsTheFirstMutationOfEachDomainWhateverTheOrderOfTheCores) {
    EXPECT_EQ(countsOf({entryOf(0, 0), entryOf(1, 0), entryOf(2, 1), entryOf(3, 1)}),
              (Counts{1, 0, 1, 0}));
    EXPECT_EQ(countsOf({entryOf(3, 1), entryOf(1, 0), entryOf(2, 1), entryOf(0, 0)}),
              (Counts{1, 0, 1, 0}));
}

TEST(PairAssignment, CountsNothingBehindADomainThatStopsWhateverTheOrderOfTheCores) {
    EXPECT_EQ(countsOf({entryOf(1, 1, true), entryOf(2, 2)}), (Counts{0, 1, 0, 0}));
    EXPECT_EQ(countsOf({entryOf(2, 2), entryOf(1, 1, true)}), (Counts{0, 1, 0, 0}));
    EXPECT_EQ(countsOf({entryOf(2, 2), entryOf(1, 1, true), entryOf(0, 0)}), (Counts{1, 1, 0, 0}));
}

TEST(PairAssignment, TakesEachPairByItself) {
    const std::vector<CoreEntry> entries = {entryOf(0, 0)};
    PairAssignment assignment(entries);
    std::array<CoreHit, 1> found = {{{0, 1}}};
    std::int64_t count = 0;
    assignment.begin(kPair, found, {});
    EXPECT_TRUE(assignment.count(&count));
    assignment.begin(kPair, {}, {});
    EXPECT_FALSE(assignment.count(&count));
    EXPECT_EQ(count, 1);
}

} // namespace
} // namespace matching
