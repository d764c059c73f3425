// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/kmer_index.h"

#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace catalogue {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::vector<std::pair<Kmer, std::size_t>> kmersOf(std::string_view text, std::size_t k) {
    std::vector<std::pair<Kmer, std::size_t>> kmers;
    forEachKmer(text, k, [&kmers](Kmer kmer, std::size_t at) { kmers.emplace_back(kmer, at); });
    return kmers;
}

TEST(Kmers, AreTwoBitsABase) {
    EXPECT_THAT(kmersOf("ACGT", 2), ElementsAre(Pair(1, 0), Pair(6, 1), Pair(11, 2)));
    EXPECT_THAT(kmersOf("TTTT", 4), ElementsAre(Pair(255, 0)));
    EXPECT_TRUE(kmersOf("ACG", 4).empty());
}

TEST(Kmers, HoldNoOtherLetterThanBases) {
    EXPECT_THAT(kmersOf("ACNGTa", 2), ElementsAre(Pair(1, 0), Pair(11, 3)));
}

TEST(Kmers, MayHave31Bases) {
    const std::string text = "G" + std::string(31, 'T');
    const auto kmers = kmersOf(text, kLongestKmer);
    ASSERT_EQ(kmers.size(), 2U);
    EXPECT_EQ(kmers[1].first, (Kmer{1} << 62) - 1);
    EXPECT_NE(kmers[0].first, kmers[1].first);
}

TEST(Kmers, SharedOnesAreCountedOnce) {
    EXPECT_EQ(sharedKmerCount(distinctKmers("ACACAC", 2), distinctKmers("CACA", 2)), 2U);
    EXPECT_EQ(sharedKmerCount(distinctKmers("ACGT", 2), distinctKmers("GGCC", 2)), 0U);
    EXPECT_EQ(sharedKmerCount(distinctKmers("ACGTA", 2), distinctKmers("GTACC", 2)), 3U);
}

TEST(KmerIndex, TellsEveryPlaceInEveryText) {
    const KmerIndex index(3, {"ACGACG", "TT", "NACG"});
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
    for (const KmerIndex::Place& place : index.placesOf(distinctKmers("ACG", 3).front())) {
        places.emplace_back(place.text, place.at);
    }
    EXPECT_THAT(places, ElementsAre(Pair(0, 0), Pair(0, 3), Pair(2, 1)));
    EXPECT_TRUE(index.placesOf(distinctKmers("TTT", 3).front()).empty());
}

} // namespace
} // namespace catalogue
