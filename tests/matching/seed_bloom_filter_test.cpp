// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/seed_bloom_filter.h"

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "platform/avx2.h"
#include "reads/record_text.h"

namespace matching {
namespace {

std::string randomText(std::mt19937& random, std::size_t length, std::string_view alphabet) {
    std::string text;
    while (text.size() < length) {
        text += alphabet[random() % alphabet.size()];
    }
    return text;
}

std::uint32_t codeOf(std::string kmer) {
    const std::size_t length = kmer.size();
    kmer.append(reads::RecordText::kReadableBeyond, 'T');
    return seedCode(kmer.data(), length);
}

/// A text and the seed at each position of it.
struct SeededText {
    explicit SeededText(std::string given) : text(std::move(given)) {
        const std::size_t positions = text.size();
        text.append(reads::RecordText::kReadableBeyond, 'C');
        for (std::size_t position = 0; position < positions; ++position) {
            seeds.push_back({text.data() + position, 1, static_cast<std::uint16_t>(position)});
        }
    }
    SeededText(const SeededText&) = delete;

    std::string text;
    std::vector<ReadSeed> seeds;
};

using Indexes = std::vector<std::uint32_t>;

template <class Select>
Indexes indexesOf(std::size_t seeds, Select select) {
    Indexes indexes(seeds);
    indexes.resize(static_cast<std::size_t>(select(indexes.data()) - indexes.data()));
    return indexes;
}

/// Of the first `count` seeds, in both ways.
Indexes selected(const SeedBloomFilter& filter, const SeededText& text, std::size_t count) {
    const std::span<const ReadSeed> seeds(text.seeds.data(), count);
    Indexes indexes = indexesOf(count, [&](auto* to) { return filter.select(seeds, to); });
    EXPECT_EQ(indexesOf(count, [&](auto* to) { return filter.selectPortably(seeds, to); }),
              indexes);
    if (platform::avx2IsThere()) {
        EXPECT_EQ(indexesOf(count, [&](auto* to) { return filter.selectByAvx2(seeds, to); }),
                  indexes);
    }
    return indexes;
}

std::vector<CoreSeed> seedsOf(const std::string& text, std::size_t length) {
    std::vector<CoreSeed> seeds;
    for (std::size_t position = 0; position + length <= text.size(); ++position) {
        seeds.push_back({hashOfSeedCode(codeOf(text.substr(position, length))), 0, 0});
    }
    return seeds;
}

TEST(SeedCode, HasTwoBitsOfEachBaseTheFirstOnesLowest) {
    EXPECT_EQ(codeOf("AAAAAAAA"), 0u);
    EXPECT_EQ(codeOf("CAAAAAAA"), 1u);
    EXPECT_EQ(codeOf("TAAAAAAA"), 2u);
    EXPECT_EQ(codeOf("GAAAAAAA"), 3u);
    EXPECT_EQ(codeOf("AAAAAAAAC"), 1u << 16);
    EXPECT_EQ(codeOf("CCCCCCCCCCCCCCCC"), 0x55555555u);
    EXPECT_EQ(codeOf("cgatcgat"), codeOf("CGATCGAT"));
}

TEST(SeedHash, IsDifferentForEachCode) {
    std::set<std::uint32_t> hashes;
    for (std::uint32_t code = 0; code < 1u << 16; ++code) {
        hashes.insert(hashOfSeedCode(code << 8));
    }
    EXPECT_EQ(hashes.size(), 1u << 16);
}

TEST(SeedBloomFilter, SelectsNothingWithoutCores) {
    std::mt19937 random(1);
    const SeededText text(randomText(random, 100, "ACGT"));
    EXPECT_TRUE(selected(SeedBloomFilter(), text, 100).empty());
    EXPECT_TRUE(selected(SeedBloomFilter(), text, 0).empty());
}

class EveryK : public testing::TestWithParam<std::size_t> {};

TEST_P(EveryK, SelectsEverySeedOfACoreAndFewOthers) {
    std::mt19937 random(2);
    const std::string core = randomText(random, 60, "ACGT");
    const SeedBloomFilter filter(GetParam(), seedsOf(core, GetParam()));
    const SeededText text(randomText(random, 1000, "ACGT") + core +
                          randomText(random, 1000, "ACGT"));
    const Indexes indexes = selected(filter, text, text.seeds.size());
    for (std::uint32_t position = 1000; position + GetParam() <= 1060; ++position) {
        EXPECT_TRUE(std::binary_search(indexes.begin(), indexes.end(), position)) << position;
    }
    EXPECT_LT(indexes.size(), 61 - GetParam() + 40);
}

INSTANTIATE_TEST_SUITE_P(Ks, EveryK, testing::Values(8u, 9u, 12u, 15u, 16u));

TEST(SeedBloomFilter, SelectsTheSameInBothWaysWhateverTheTextHolds) {
    std::mt19937 random(3);
    std::string bytes(256, ' ');
    std::generate(bytes.begin(), bytes.end(),
                  [byte = 0]() mutable { return static_cast<char>(byte++); });
    const std::string core = randomText(random, 300, "ACGTN");
    const SeedBloomFilter filter(11, seedsOf(core, 11));
    const SeededText text(randomText(random, 200, bytes) + core + randomText(random, 200, "acgtn"));
    for (std::size_t count = 0; count < text.seeds.size(); ++count) {
        const Indexes indexes = selected(filter, text, count);
        EXPECT_EQ(std::count_if(indexes.begin(), indexes.end(),
                                [](std::uint32_t number) { return number >= 200 && number < 490; }),
                  count < 200
                      ? 0
                      : std::min<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(count) - 200, 290))
            << count;
    }
}

} // namespace
} // namespace matching
