// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/core_search.h"

#include <gtest/gtest.h>

namespace matching {
namespace {

using std::nullopt;

std::optional<std::size_t> find(std::string_view read, std::string_view core,
                                std::string_view quality) {
    return findCoreSeq(read, core, quality, kQualityThreshold);
}

std::optional<std::size_t> findWild(std::string_view read, std::string_view core,
                                    std::string_view quality) {
    return findCoreSeqWithWildCard(read, core, quality, kQualityThreshold);
}

TEST(FindCoreSeq, CountsACoreAtPosition3WhateverItsQualities) {
    EXPECT_EQ(find("TTTACGT", "ACGT", "!!!!!!!"), 3u);
}

TEST(FindCoreSeq, RejectsACoreAtPosition0WithOneLowQualityAndLooksNoFurther) {
    EXPECT_EQ(find("ACGTACGT", "ACGT", "@@?@@@@@"), nullopt);
    EXPECT_EQ(find("ACGTACGT", "ACGT", "@@@@!!!!"), 0u);
}

TEST(FindCoreSeq, ComparesQualitiesAsSignedBytes) {
    EXPECT_EQ(find("ACGT", "ACGT", "@@@\xff"), nullopt);
    EXPECT_EQ(find("ACGT", "ACGT", "@@@\x7f"), 0u);
}

TEST(FindCoreSeq, TakesAMissingQualityByteForTooLow) {
    EXPECT_EQ(find("ACGT", "ACGT", "@@@"), nullopt);
}

TEST(FindCoreSeq, FindsTheLeftmostPositionAndHeedsCase) {
    EXPECT_EQ(find("TACTAC", "AC", ""), 1u);
    EXPECT_EQ(find("Tacac", "AC", ""), nullopt);
    EXPECT_EQ(find("AC", "ACG", "@@@"), nullopt);
}

TEST(FindCoreSeq, FindsAnEmptyCoreAtPosition0InBothSearches) {
    EXPECT_EQ(find("ACGT", "", ""), 0u);
    EXPECT_EQ(findWild("ACGT", "", ""), 0u);
}

TEST(FindCoreSeqWithWildCard, KeepsTheAsymmetricAmbiguityRules) {
    const std::string_view good = "@@@@";
    EXPECT_EQ(findWild("ACGT", "ACNT", good), nullopt);
    EXPECT_EQ(findWild("ACAT", "ACRT", good), 0u);
    EXPECT_EQ(findWild("ACGT", "ACRT", good), 0u);
    EXPECT_EQ(findWild("ACCT", "ACBT", good), 0u);
    EXPECT_EQ(findWild("ACGT", "ACBT", good), 0u);
    EXPECT_EQ(findWild("ACTT", "ACBT", good), nullopt);
    EXPECT_EQ(findWild("ACBT", "ACTT", good), 0u);
}

TEST(FindCoreSeqWithWildCard, LooksAtQualitiesFromThePositionToTheCoreLengthOnly) {
    EXPECT_EQ(findWild("TACRT", "ACRT", "!@@@!"), 1u);
    EXPECT_EQ(findWild("TACRT", "ACRT", "@@@!@"), nullopt);
    EXPECT_EQ(findWild("TTTTACRT", "ACRT", "!!!!!!!!"), 4u);
}

TEST(FindCoreSeqWithWildCard, TriesNoLaterPositionAfterARejectedOne) {
    EXPECT_EQ(findWild("ACGTACGTACGT", "ACGT", "!@@@@@@@@@@@"), nullopt);
}

TEST(BaseAgrees, FollowsTheTableForEveryPairOfBytes) {
    struct Row {
        char code;
        std::string_view asRead;
        std::string_view asCore;
    };
    const Row rows[] = {{'B', "CGT", "CG"}, {'D', "AGT", "AG"}, {'H', "ACT", "AC"},
                        {'K', "GT", "GT"},  {'M', "AC", "AC"},  {'R', "AG", "AG"},
                        {'S', "CG", "CG"},  {'V', "ACG", "AC"}, {'W', "AT", "AT"},
                        {'Y', "CT", "CT"}};
    for (int r = 0; r < 256; ++r) {
        for (int c = 0; c < 256; ++c) {
            const char read = static_cast<char>(r);
            const char core = static_cast<char>(c);
            bool expected = read == core;
            for (const Row& row : rows) {
                expected |= read == row.code && row.asRead.find(core) != row.asRead.npos;
                expected |= core == row.code && row.asCore.find(read) != row.asCore.npos;
            }
            EXPECT_EQ(baseAgrees(read, core), expected) << r << " against " << c;
        }
    }
}

} // namespace
} // namespace matching
