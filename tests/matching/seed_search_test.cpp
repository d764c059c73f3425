// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/seed_search.h"

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "matching/made_cores.h"
#include "matching/seed_selection.h"
#include "reads/record_text.h"

namespace matching {
namespace {

/// A read with no byte more behind it than a search may read, so that sanitizers see any other.
class ExactRead {
public:
    explicit ExactRead(const std::string& text)
        : m_size(text.size()),
          m_bytes(std::make_unique<char[]>(text.size() + reads::RecordText::kReadableBeyond)) {
        text.copy(m_bytes.get(), text.size());
    }
    std::string_view text() const { return {m_bytes.get(), m_size}; }

private:
    std::size_t m_size;
    std::unique_ptr<char[]> m_bytes;
};

using Positions = std::set<std::pair<std::uint32_t, std::uint32_t>>;

Positions positionsIn(std::string_view read, const std::vector<std::string>& cores) {
    Positions positions;
    for (std::uint32_t core = 0; core < cores.size(); ++core) {
        for (auto at = read.find(cores[core]); at != std::string_view::npos;
             at = read.find(cores[core], at + 1)) {
            positions.insert({core, static_cast<std::uint32_t>(at)});
        }
    }
    return positions;
}

Positions positionsOf(std::span<const CoreHit> hits) {
    Positions positions;
    for (const CoreHit& hit : hits) {
        positions.insert({hit.core, hit.position});
    }
    return positions;
}

/// The seed hits of each seed of a read.
std::vector<std::vector<SeedHit>> seedHitsOf(const MateIndex& index, const std::string& read) {
    const std::string text = read + std::string(reads::RecordText::kReadableBeyond, 'A');
    const std::string_view alone = std::string_view(text).substr(0, read.size());
    std::vector<ReadSeed> seeds(index.seeds().maxSeedsIn(alone));
    seeds.resize(
        static_cast<std::size_t>(index.seeds().sample(alone, 0, seeds.data()) - seeds.data()));
    const SeedSearch search(index);
    std::vector<std::vector<SeedHit>> hits;
    for (const ReadSeed& seed : seeds) {
        AppendBuffer<SeedHit> found;
        search.expand(index.seeds().candidateOf(seed), found);
        hits.emplace_back(found.all().begin(), found.all().end());
    }
    return hits;
}

class SeedSearches : public testing::Test {
protected:
    SeedSearches() {
        for (std::size_t length = 31; length < 120; length += 3) {
            m_cores.push_back(randomBases(m_random, length));
            m_cores.push_back(m_cores.back());
            m_cores.back()[length / 2] = m_cores.back()[length / 2] == 'A' ? 'C' : 'A';
        }
    }

    /// With whole cores, and with ends of cores at its own ends.
    std::string randomRead() {
        const auto core = [&] { return m_cores[m_random() % m_cores.size()]; };
        std::string read = core().substr(m_random() % 31);
        for (std::size_t i = m_random() % 3; i > 0; --i) {
            read += core() + randomBases(m_random, m_random() % 20);
        }
        const std::string last = core();
        return (read + last.substr(0, m_random() % last.size())).substr(0, 509);
    }

    std::mt19937 m_random{8};
    std::vector<std::string> m_cores;
};

TEST_F(SeedSearches, FindWhatOccursInReadsAndReadNothingFarBehindThem) {
    const MateIndex index(Mate::read1, coresOf(m_cores));
    ASSERT_TRUE(index.unindexed().empty());
    SeedSearch search(index);
    for (int round = 0; round < 100; ++round) {
        std::vector<ExactRead> reads;
        for (std::size_t i = 0; i < 1 + m_random() % SeedSearch::kGroupSize; ++i) {
            reads.emplace_back(randomRead());
            search.add(reads.back().text());
        }
        const std::size_t most = search.collect();
        search.findAll();
        std::size_t found = 0;
        for (std::size_t read = 0; read < reads.size(); ++read) {
            const auto hits = search.take(read);
            EXPECT_EQ(positionsOf(hits), positionsIn(reads[read].text(), m_cores));
            found += hits.size();
        }
        EXPECT_LE(found, most);
        search.clear();
    }
}

TEST_F(SeedSearches, FindTheSameInOneReadAfterTheOther) {
    const MateIndex index(Mate::read1, coresOf(m_cores));
    SeedSearch search(index);
    std::vector<ExactRead> reads;
    for (std::size_t i = 0; i < SeedSearch::kGroupSize; ++i) {
        reads.emplace_back(i % 5 == 0 ? std::string(i, 'A') : randomRead());
        search.add(reads.back().text());
    }
    search.collect();
    for (std::size_t read = 0; read < reads.size(); ++read) {
        search.findIn(read);
        EXPECT_EQ(positionsOf(search.take(read)), positionsIn(reads[read].text(), m_cores)) << read;
    }
}

TEST_F(SeedSearches, SayHowManyVerificationsReadsOfAlikeCoresNeed) {
    const std::string repeat = repeatOf(randomBases(m_random, 27), 509);
    std::vector<std::string> texts;
    for (std::size_t length = 60; length < 100; ++length) {
        texts.push_back(repeat.substr(0, length));
    }
    const MateIndex index(Mate::read1, coresOf(texts));
    ASSERT_TRUE(index.unindexed().empty());
    SeedSearch search(index);
    const ExactRead read(repeat);
    search.add(read.text());
    // Each core occurs at each whole unit that leaves room for it.
    EXPECT_GE(search.collect(), 40u * 15);
    search.findAll();
    EXPECT_EQ(positionsOf(search.take(0)), positionsIn(read.text(), texts));
}

TEST(MateIndex, IndexesNoCoreThatRepeatsItself) {
    std::vector<std::string> texts;
    for (std::size_t length = 31; length <= 400; ++length) {
        texts.push_back(repeatOf("A", length));
        texts.push_back(repeatOf("AC", length));
        texts.push_back(repeatOf("GATTACAGTC", length));
    }
    const MateIndex index(Mate::read1, coresOf(texts));
    EXPECT_EQ(index.unindexed().size(), texts.size());
    EXPECT_TRUE(index.seeds().empty());
    EXPECT_TRUE(seedHitsOf(index, repeatOf("A", 509)).empty());
}

TEST(MateIndex, HasNoMoreThanSoManyHitsForASeed) {
    std::mt19937 random(7);
    const std::string text = randomBases(random, 500);
    std::vector<std::string> texts;
    for (std::size_t length = 31; length <= 400; ++length) {
        texts.push_back(text.substr(0, length));
    }
    const MateIndex index(Mate::read1, coresOf(texts));
    EXPECT_LE(index.unindexed().size(), texts.size() - SeedSelection::kMaxCoresPerSeed);
    std::size_t all = 0;
    for (const auto& hits : seedHitsOf(index, text)) {
        EXPECT_LE(hits.size(), SeedSelection::kMaxCoresPerSeed);
        all += hits.size();
    }
    EXPECT_GE(all, SeedSelection::kMaxCoresPerSeed);
}

TEST(MateIndex, HasOneHitForACoreOfALongRepeatAtAPosition) {
    std::mt19937 random(7);
    const std::string unit = randomBases(random, 27);
    const MateIndex index(Mate::read1, coresOf({repeatOf(unit, 60), repeatOf(unit, 90)}));
    ASSERT_TRUE(index.unindexed().empty());
    std::set<std::pair<std::uint32_t, std::uint32_t>> positions;
    std::size_t all = 0;
    for (const auto& hits : seedHitsOf(index, repeatOf(unit, 509))) {
        for (const SeedHit& hit : hits) {
            positions.insert({hit.record, hit.position});
            ++all;
        }
    }
    EXPECT_EQ(positions.size(), all);
    EXPECT_GT(all, 20u);
}

TEST(MateIndex, IndexesEveryNeighbourOfALongCore) {
    std::mt19937 random(7);
    const std::string wildType = randomBases(random, 600);
    std::vector<std::string> texts = {wildType};
    for (std::size_t position = 0; position < wildType.size(); ++position) {
        for (const char base : {'A', 'C', 'G', 'T'}) {
            if (wildType[position] != base) {
                texts.push_back(wildType);
                texts.back()[position] = base;
            }
        }
    }
    const MateIndex index(Mate::read1, coresOf(texts));
    EXPECT_TRUE(index.unindexed().empty()) << index.unindexed().size();
    std::size_t all = 0;
    for (const auto& hits : seedHitsOf(index, texts[900])) {
        EXPECT_LE(hits.size(), SeedSelection::kMaxCoresPerSeed);
        all += hits.size();
    }
    EXPECT_GT(all, 0U);
}

} // namespace
} // namespace matching
