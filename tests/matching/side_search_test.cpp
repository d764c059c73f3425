// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/side_search.h"

#include <random>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "matching/made_cores.h"
#include "matching/record_text.h"
#include "matching/repeat_of.h"
#include "matching/seed_selection.h"

namespace matching {
namespace {

/// For each window looked at, what it leads to.
std::vector<std::vector<Suspicion>> suspicionsOf(const SideSearch& search,
                                                 const std::string& read) {
    const std::string text = read + std::string(RecordText::kReadableBeyond, 'A');
    const std::string_view alone = std::string_view(text).substr(0, read.size());
    std::vector<ReadSeed> looks(search.index().maxSeedsIn(alone));
    looks.resize(
        static_cast<std::size_t>(search.index().sample(alone, 0, looks.data()) - looks.data()));
    std::vector<std::vector<Suspicion>> suspicions;
    for (const ReadSeed& look : looks) {
        WorkList<Suspicion> found;
        search.suspect(search.index().candidateOf(look), found);
        suspicions.emplace_back(found.all().begin(), found.all().end());
    }
    return suspicions;
}

TEST(SideSearch, IndexesNoCoreThatRepeatsItself) {
    std::vector<std::string> texts;
    for (std::size_t length = 31; length <= 400; ++length) {
        texts.push_back(repeatOf("A", length));
        texts.push_back(repeatOf("AC", length));
        texts.push_back(repeatOf("GATTACAGTC", length));
    }
    const SideSearch search(Mate::read1, coresOf(texts));
    EXPECT_EQ(search.unindexed().size(), texts.size());
    for (const auto& suspicions : suspicionsOf(search, repeatOf("A", 509))) {
        EXPECT_TRUE(suspicions.empty());
    }
}

TEST(SideSearch, SuspectsNoMoreThanSoManyCoresAtALook) {
    std::mt19937 random(7);
    const std::string text = randomBases(random, 500);
    std::vector<std::string> texts;
    for (std::size_t length = 31; length <= 400; ++length) {
        texts.push_back(text.substr(0, length));
    }
    const SideSearch search(Mate::read1, coresOf(texts));
    EXPECT_LE(search.unindexed().size(), texts.size() - SeedSelection::kMaxCoresPerSeed);
    std::size_t all = 0;
    for (const auto& suspicions : suspicionsOf(search, text)) {
        EXPECT_LE(suspicions.size(), SeedSelection::kMaxCoresPerSeed);
        all += suspicions.size();
    }
    EXPECT_GE(all, SeedSelection::kMaxCoresPerSeed);
}

TEST(SideSearch, SuspectsACoreOfALongRepeatOnceAtAPlace) {
    std::mt19937 random(7);
    const std::string unit = randomBases(random, 27);
    const SideSearch search(Mate::read1, coresOf({repeatOf(unit, 60), repeatOf(unit, 90)}));
    ASSERT_TRUE(search.unindexed().empty());
    std::set<std::pair<std::uint32_t, std::uint32_t>> places;
    std::size_t all = 0;
    for (const auto& suspicions : suspicionsOf(search, repeatOf(unit, 509))) {
        for (const Suspicion& suspicion : suspicions) {
            places.insert({suspicion.record, suspicion.place});
            ++all;
        }
    }
    EXPECT_EQ(places.size(), all);
    EXPECT_GT(all, 20u);
}

TEST(SideSearch, IndexesEveryNeighbourOfALongCore) {
    std::mt19937 random(7);
    const std::string wildType = randomBases(random, 600);
    std::vector<std::string> texts = {wildType};
    for (std::size_t place = 0; place < wildType.size(); ++place) {
        for (const char base : {'A', 'C', 'G', 'T'}) {
            if (wildType[place] != base) {
                texts.push_back(wildType);
                texts.back()[place] = base;
            }
        }
    }
    const SideSearch search(Mate::read1, coresOf(texts));
    EXPECT_TRUE(search.unindexed().empty()) << search.unindexed().size();
    for (const auto& suspicions : suspicionsOf(search, texts[900])) {
        EXPECT_LE(suspicions.size(), SeedSelection::kMaxCoresPerSeed);
    }
}

} // namespace
} // namespace matching
