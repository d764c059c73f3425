// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The fast matcher against the plain one, pair for pair, over made-up catalogues and reads. More of
// them are tried by fuzz/matcher_fuzz.cpp.
#include <random>

#include <gtest/gtest.h>

#include "matching/fast_matcher.h"
#include "matching/plain_matcher.h"
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

class MatcherAgreement : public testing::TestWithParam<Share> {};

TEST_P(MatcherAgreement, HoldsPairForPair) {
    const auto [name, firstSeed, catalogues, mostDomains, pairCount] = GetParam();
    std::int64_t mapped = 0;
    std::int64_t all = 0;
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
        mapped += result.processed - result.failed;
        all += result.processed;
    }
    // The reads are worth being compared: many carry something, many do not.
    EXPECT_GT(mapped, all / 5);
    EXPECT_LT(mapped, all * 4 / 5);
}

// 200,000 pairs in all.
INSTANTIATE_TEST_SUITE_P(Catalogues, MatcherAgreement,
                         testing::Values(Share{"Tiny", 1, 500, 2, 100},
                                         Share{"Small", 1001, 300, 6, 200},
                                         Share{"SmallWithManyPairs", 2001, 80, 6, 1000},
                                         Share{"Large", 3001, 10, 100, 1000}),
                         [](const auto& share) { return share.param.name; });

} // namespace
} // namespace matching
