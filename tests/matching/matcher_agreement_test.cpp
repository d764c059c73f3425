// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The fast matcher against the plain one, pair for pair, over made-up catalogues and reads.
#include <random>

#include <gtest/gtest.h>

#include "matching/fast_matcher.h"
#include "matching/plain_matcher.h"
#include "support/matching_case.h"

namespace matching {
namespace {

BatchResult match(const Matcher& matcher, const catalogue::MutDomains& domains,
                  const std::vector<support::PairTexts>& pairs) {
    BatchResult result;
    result.counts.resize(mutationCount(domains));
    matcher.match(support::batchOf(pairs), result);
    return result;
}

bool agree(const BatchResult& a, const BatchResult& b) {
    return a.counts == b.counts && a.processed == b.processed && a.failed == b.failed &&
           a.unassignedPairs == b.unassignedPairs;
}

/// Tells the first pair for which the two differ by itself.
std::string firstDifference(const Matcher& plain, const Matcher& fast,
                            const catalogue::MutDomains& domains,
                            const std::vector<support::PairTexts>& pairs) {
    for (const support::PairTexts& pair : pairs) {
        const BatchResult expected = match(plain, domains, {pair});
        const BatchResult got = match(fast, domains, {pair});
        if (!agree(expected, got)) {
            return "read 1: " + pair.read1 + "\nread 2: " + pair.read2 +
                   "\nquality 1: " + pair.quality1 + "\nquality 2: " + pair.quality2 +
                   "\nplain: " + testing::PrintToString(expected.counts) +
                   "\nfast:  " + testing::PrintToString(got.counts);
        }
    }
    return "only together";
}

void expectAgreement(unsigned seed, std::size_t mostDomains, std::size_t pairCount) {
    std::mt19937 random(seed);
    support::MatchingCaseMaker maker([&](std::size_t limit) { return random() % limit; });
    const catalogue::MutDomains domains = maker.makeCatalogue(mostDomains);
    std::vector<support::PairTexts> pairs(pairCount);
    std::generate(pairs.begin(), pairs.end(), [&] { return maker.makePair(); });
    const PlainMatcher plain(domains);
    const FastMatcher fast(domains);
    ASSERT_TRUE(agree(match(plain, domains, pairs), match(fast, domains, pairs)))
        << "seed " << seed << "\n"
        << firstDifference(plain, fast, domains, pairs);
}

TEST(FastMatcher, AgreesWithThePlainOneOverSmallCatalogues) {
    for (unsigned seed = 1; seed <= 600; ++seed) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(seed, 4, 100));
    }
}

TEST(FastMatcher, AgreesWithThePlainOneOverLargerCatalogues) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        ASSERT_NO_FATAL_FAILURE(expectAgreement(100'000 + seed, 100, 200));
    }
}

} // namespace
} // namespace matching
