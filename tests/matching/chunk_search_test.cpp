// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/chunk_search.h"

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "matching/made_cores.h"
#include "matching/record_text.h"
#include "matching/repeat_of.h"

namespace matching {
namespace {

/// A read with no byte more behind it than a search may read, so that sanitizers see any other.
class ExactRead {
public:
    explicit ExactRead(const std::string& text)
        : m_size(text.size()),
          m_bytes(std::make_unique<char[]>(text.size() + RecordText::kReadableBeyond)) {
        text.copy(m_bytes.get(), text.size());
    }
    std::string_view text() const { return {m_bytes.get(), m_size}; }

private:
    std::size_t m_size;
    std::unique_ptr<char[]> m_bytes;
};

using Places = std::set<std::pair<std::uint32_t, std::uint32_t>>;

Places placesIn(std::string_view read, const std::vector<std::string>& cores) {
    Places places;
    for (std::uint32_t core = 0; core < cores.size(); ++core) {
        for (auto at = read.find(cores[core]); at != std::string_view::npos;
             at = read.find(cores[core], at + 1)) {
            places.insert({core, static_cast<std::uint32_t>(at)});
        }
    }
    return places;
}

Places placesOf(std::span<const Finding> findings) {
    Places places;
    for (const Finding& finding : findings) {
        places.insert({finding.core, finding.place});
    }
    return places;
}

class ChunkSearches : public testing::Test {
protected:
    ChunkSearches() {
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

TEST_F(ChunkSearches, FindWhatStandsInReadsAndReadNothingFarBehindThem) {
    const SideSearch mate(Mate::read1, coresOf(m_cores));
    ASSERT_TRUE(mate.unindexed().empty());
    ChunkSearch chunk(mate);
    for (int round = 0; round < 100; ++round) {
        std::vector<ExactRead> reads;
        for (std::size_t i = 0; i < 1 + m_random() % ChunkSearch::kMostReads; ++i) {
            reads.emplace_back(randomRead());
            chunk.add(reads.back().text());
        }
        const std::size_t most = chunk.collect();
        chunk.findAll();
        std::size_t found = 0;
        for (std::size_t read = 0; read < reads.size(); ++read) {
            const auto findings = chunk.take(read);
            EXPECT_EQ(placesOf(findings), placesIn(reads[read].text(), m_cores));
            found += findings.size();
        }
        EXPECT_LE(found, most);
        chunk.clear();
    }
}

TEST_F(ChunkSearches, FindTheSameInOneReadAfterTheOther) {
    const SideSearch mate(Mate::read1, coresOf(m_cores));
    ChunkSearch chunk(mate);
    std::vector<ExactRead> reads;
    for (std::size_t i = 0; i < ChunkSearch::kMostReads; ++i) {
        reads.emplace_back(i % 5 == 0 ? std::string(i, 'A') : randomRead());
        chunk.add(reads.back().text());
    }
    chunk.collect();
    for (std::size_t read = 0; read < reads.size(); ++read) {
        chunk.findIn(read);
        EXPECT_EQ(placesOf(chunk.take(read)), placesIn(reads[read].text(), m_cores)) << read;
    }
}

TEST_F(ChunkSearches, SayHowManyComparisonsReadsOfAlikeCoresNeed) {
    const std::string repeat = repeatOf(randomBases(m_random, 27), 509);
    std::vector<std::string> texts;
    for (std::size_t length = 60; length < 100; ++length) {
        texts.push_back(repeat.substr(0, length));
    }
    const SideSearch mate(Mate::read1, coresOf(texts));
    ASSERT_TRUE(mate.unindexed().empty());
    ChunkSearch chunk(mate);
    const ExactRead read(repeat);
    chunk.add(read.text());
    // Each core stands at each whole unit that leaves room for it.
    EXPECT_GE(chunk.collect(), 40u * 15);
    chunk.findAll();
    EXPECT_EQ(placesOf(chunk.take(0)), placesIn(read.text(), texts));
}

} // namespace
} // namespace matching
