// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The fast matcher against the plain one, pair for pair, over made-up catalogues and reads. More of
// them are tried by fuzz/matcher_fuzz.cpp.
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "matching/fast_matcher.h"
#include "matching/made_cores.h"
#include "matching/matcher.h"
#include "matching/reverse_complement.h"
#include "support/matcher_agreement.h"
#include "support/matching_case.h"

namespace matching {
namespace {

struct Share {
    const char* name;
    unsigned firstSeed;
    unsigned catalogues;
    std::size_t mostDomains;
    std::size_t pairs;
};

struct Mapped {
    std::int64_t mapped = 0;
    std::int64_t all = 0;
};

class MatcherAgreement : public testing::TestWithParam<Share> {};

TEST_P(MatcherAgreement, HoldsPairForPair) {
    const auto [name, firstSeed, catalogues, mostDomains, pairCount] = GetParam();
    std::map<std::size_t, Mapped> byShortestCore;
    for (unsigned seed = firstSeed; seed < firstSeed + catalogues; ++seed) {
        std::mt19937 random(seed);
        support::MatchingCaseMaker maker([&](std::size_t limit) { return random() % limit; });
        const catalogue::MutDomains domains = maker.makeCatalogue(mostDomains);
        std::vector<support::PairTexts> pairs(pairCount);
        std::generate(pairs.begin(), pairs.end(), [&] { return maker.makePair(); });
        const PlainMatcher plain(domains);
        const FastMatcher fast(domains);
        ASSERT_EQ(support::difference(plain, fast, domains, pairs), "") << "seed " << seed;
        const BatchResult result = support::matched(fast, domains, pairs);
        Mapped& kind = byShortestCore[maker.shortestCore()];
        kind.mapped += result.processed - result.failed;
        kind.all += result.processed;
    }
    // The reads are worth being compared, whatever the cores: many carry something, many do not.
    Mapped sum;
    for (const auto& [shortest, kind] : byShortestCore) {
        EXPECT_GT(kind.mapped, kind.all / 8) << "cores of " << shortest << " and more";
        sum = {sum.mapped + kind.mapped, sum.all + kind.all};
    }
    EXPECT_LT(sum.mapped, sum.all * 4 / 5);
}

// 200,000 pairs in all.
INSTANTIATE_TEST_SUITE_P(Catalogues, MatcherAgreement,
                         testing::Values(Share{"Tiny", 1, 500, 2, 100},
                                         Share{"Small", 1001, 300, 6, 200},
                                         Share{"SmallWithManyPairs", 2001, 80, 6, 1000},
                                         Share{"Large", 3001, 10, 100, 1000}),
                         [](const auto& share) { return share.param.name; });

void expectAgreement(const catalogue::MutDomains& domains,
                     const std::vector<support::PairTexts>& pairs, std::int64_t leastMapped) {
    const PlainMatcher plain(domains);
    const FastMatcher fast(domains);
    ASSERT_EQ(support::difference(plain, fast, domains, pairs), "");
    const BatchResult result = support::matched(fast, domains, pairs);
    EXPECT_GE(result.processed - result.failed, leastMapped);
    EXPECT_GT(result.failed, 0);
}

support::PairTexts pairOfTexts(const std::string& fragment) {
    const std::string quality(fragment.size(), 'I');
    support::PairTexts pair = {fragment, fragment, quality, quality};
    reverseComplement(pair.read2.data(), pair.read2.size());
    return pair;
}

class SelfSimilarCores : public testing::TestWithParam<const char*> {};

TEST_P(SelfSimilarCores, HoldPairForPair) {
    const std::string unit = GetParam();
    std::mt19937 random(3);
    std::vector<std::shared_ptr<catalogue::MutDomain>> domains;
    for (std::size_t length = 31; length <= 400; ++length) {
        const char* const strand = length % 5 == 0 ? "R1" : length % 7 == 0 ? "R2" : "R1R2";
        // From the longest to the shortest, so that more than the first entry wins.
        domains.push_back(support::domainOf({{strand, repeatOf(unit, 431 - length)}}));
    }
    domains.push_back(support::domainOf({{"R1R2", repeatOf(unit, 31)}}));
    std::vector<support::PairTexts> pairs;
    for (std::size_t i = 0; i < 60; ++i) {
        std::string fragment = repeatOf(unit, i % 6 == 0 ? 30 : 31 + random() % 479);
        if (i % 3 == 1) {
            fragment[random() % fragment.size()] = "ACGTN"[random() % 5];
        }
        pairs.push_back(pairOfTexts(fragment));
        if (i % 4 == 0) {
            pairs.back().quality1[random() % 20] = '!';
        }
    }
    expectAgreement(support::catalogueOf(std::move(domains)), pairs, 30);
}

INSTANTIATE_TEST_SUITE_P(Units, SelfSimilarCores,
                         testing::Values("A", "AC", "GAT", "GATTACAGTC", "GATTACAGTCCGATTGCAA",
                                         "GATTACAGTCCGATTGCAACTTGGAC"));

// 5,000 neighbours that differ in one letter: an index with a bitmap far beyond the smallest one.
TEST(MatcherAgreementOfManyNeighbours, HoldsPairForPair) {
    std::mt19937 random(4);
    std::vector<std::shared_ptr<catalogue::MutDomain>> domains;
    std::vector<std::string> cores;
    for (std::size_t family = 0; family < 10; ++family) {
        std::string wildType(family == 0 ? 500 : 500 + random() % 500, 'A');
        for (char& base : wildType) {
            base = "ACGT"[random() % 4];
        }
        std::vector<support::Target> targets = {{"R1R2", wildType}};
        for (std::size_t i = 0; i < 500; ++i) {
            targets.push_back({"R1R2", wildType});
            char& base = targets.back().core[random() % wildType.size()];
            base = base == 'A' ? 'C' : 'A';
        }
        for (const support::Target& target : targets) {
            if (target.core.size() <= 505) {
                cores.push_back(target.core);
            }
        }
        domains.push_back(support::domainOf(targets));
    }
    std::vector<support::PairTexts> pairs;
    for (std::size_t i = 0; i < 60; ++i) {
        std::string fragment = std::string(i % 5, 'G') + cores[random() % cores.size()];
        if (i % 4 == 0) {
            fragment[random() % fragment.size()] = "ACGT"[random() % 4];
        }
        pairs.push_back(pairOfTexts(fragment));
    }
    expectAgreement(support::catalogueOf(std::move(domains)), pairs, 40);
}

} // namespace
} // namespace matching
