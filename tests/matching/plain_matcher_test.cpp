// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/matcher.h"

#include <gtest/gtest.h>

#include "matching/reverse_complement.h"
#include "support/batch_of_pairs.h"
#include "support/catalogue_builder.h"

namespace matching {
namespace {

using support::catalogueOf;
using support::domainOf;
using Counts = std::vector<std::int64_t>;

struct Pair {
    std::string read1;
    std::string read2; // on the strand of read 1
    std::string quality1 = std::string(40, 'I');
    std::string quality2 = std::string(40, 'I');
};

BatchResult match(const catalogue::MutDomains& domains, const std::vector<Pair>& pairs) {
    std::vector<support::PairTexts> asInTheFile;
    for (Pair pair : pairs) {
        reverseComplement(pair.read2.data(), pair.read2.size());
        reverseString(pair.quality2.data(), pair.quality2.size());
        asInTheFile.push_back({pair.read1, pair.read2, pair.quality1, pair.quality2});
    }
    BatchResult result;
    result.counts.resize(mutationCount(domains));
    PlainMatcher(domains).match(support::batchOf(asInTheFile), result);
    return result;
}

TEST(PlainMatcher, CountsAPairWithAnEmptyReadNowhere) {
    const auto result = match(catalogueOf({domainOf({{"R1", ""}})}), {{"", "ACGT"}, {"ACGT", ""}});
    EXPECT_EQ(result.counts, Counts{0});
    EXPECT_EQ(result.processed, 0);
    EXPECT_EQ(result.failed, 0);
    EXPECT_EQ(result.unassignedPairs, "");
}

TEST(PlainMatcher, NeedsTheCoreInBothReadsForR1R2) {
    const auto domains = catalogueOf({domainOf({{"R1R2", "ACGT"}})});
    EXPECT_EQ(match(domains, {{"TACGTT", "TTTTTT"}}).counts, Counts{0});
    EXPECT_EQ(match(domains, {{"TTTTTT", "TACGTT"}}).counts, Counts{0});
    EXPECT_EQ(match(domains, {{"TACGTT", "TACGTT"}}).counts, Counts{1});
}

TEST(PlainMatcher, LooksAtTheReadThatTheStrandWordNames) {
    const auto domains = catalogueOf({domainOf({{"R1", "ACGT"}}), domainOf({{"R2", "ACGT"}})});
    EXPECT_EQ(match(domains, {{"TACGT", "TTT"}}).counts, (Counts{1, 0}));
    EXPECT_EQ(match(domains, {{"TTT", "TACGT"}}).counts, (Counts{0, 1}));
}

TEST(PlainMatcher, NeverMatchesAnotherStrandWord) {
    const auto domains = catalogueOf({domainOf({{"r1", "ACGT"}, {"R2R1", "ACGT"}, {"", "ACGT"}})});
    EXPECT_EQ(match(domains, {{"TACGT", "TACGT"}}).counts, (Counts{0, 0, 0}));
}

TEST(PlainMatcher, CountsOnlyTheFirstMatchingMutationOfADomain) {
    const auto domains = catalogueOf({domainOf({{"R1", "GGG"}, {"R1", "CGT"}, {"R1", "ACG"}})});
    EXPECT_EQ(match(domains, {{"TACGT", "T"}}).counts, (Counts{0, 1, 0}));
}

TEST(PlainMatcher, HidesAPairFromLaterDomainsOnlyAfterAStoppingMatch) {
    const auto domainsWith = [](bool stop) {
        return catalogueOf({domainOf({{"R1", "ACG"}}, stop), domainOf({{"R1", "CGT"}})});
    };
    EXPECT_EQ(match(domainsWith(true), {{"TACGT", "T"}}).counts, (Counts{1, 0}));
    EXPECT_EQ(match(domainsWith(false), {{"TACGT", "T"}}).counts, (Counts{1, 1}));
    EXPECT_EQ(match(domainsWith(true), {{"TCGT", "T"}}).counts, (Counts{0, 1}));
}

TEST(PlainMatcher, HeedsTheCaseOfRead1) {
    EXPECT_EQ(match(catalogueOf({domainOf({{"R1", "ACGT"}})}), {{"Tacgt", "T"}}).counts, Counts{0});
}

TEST(PlainMatcher, GatesRead2ByRead1sQualityForAWildcardCoreInBothReads) {
    const std::string low(8, '!');
    const std::string high(8, 'I');
    const auto wild = catalogueOf({domainOf({{"R1R2", "ACRT", true}})});
    EXPECT_EQ(match(wild, {{"ACGT", "ACGT", high, low}}).counts, Counts{1});
    EXPECT_EQ(match(wild, {{"TTTTACGT", "ACGT", low, high}}).counts, Counts{0});
    const auto exact = catalogueOf({domainOf({{"R1R2", "ACGT"}})});
    EXPECT_EQ(match(exact, {{"ACGT", "ACGT", high, low}}).counts, Counts{0});
    EXPECT_EQ(match(exact, {{"TTTTACGT", "ACGT", low, high}}).counts, Counts{1});
}

TEST(PlainMatcher, KeepsRead1AsReadAndRead2ReverseComplementedOfUnassignedPairs) {
    const auto result = match(catalogueOf({domainOf({{"R1", "ACGT"}})}),
                              {{"gg", "TT"}, {"TACGT", "C"}, {"C", "AN"}});
    EXPECT_EQ(result.processed, 3);
    EXPECT_EQ(result.failed, 2);
    EXPECT_EQ(result.unassignedPairs, "gg\nTT\nC\nAN\n");
}

TEST(PlainMatcher, LeavesEveryPairUnassignedWithoutACatalogue) {
    EXPECT_EQ(match(std::nullopt, {{"A", "C"}}).failed, 1);
}

} // namespace
} // namespace matching
