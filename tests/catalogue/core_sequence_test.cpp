// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/core_sequence.h"

#include <map>
#include <string>

#include <gtest/gtest.h>

namespace {

using catalogue::findFlank;

const std::map<char, std::string> kBasesOfCode = {
    {'B', "CGT"}, {'D', "AGT"}, {'H', "ACT"}, {'K', "GT"}, {'M', "AC"},
    {'R', "AG"},  {'S', "CG"},  {'V', "ACG"}, {'W', "AT"}, {'Y', "CT"}};

bool shouldMatch(char a, char b) {
    const auto stands = [](char code, char base) {
        const auto found = kBasesOfCode.find(code);
        return found != kBasesOfCode.end() && found->second.find(base) != std::string::npos;
    };
    return a == b || stands(a, b) || stands(b, a);
}

TEST(FlankSearch, AgreesWithTheTableForEveryPairOfBytes) {
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const std::string text(1, static_cast<char>(a));
            const std::string pattern(1, static_cast<char>(b));
            EXPECT_EQ(findFlank(text, pattern).has_value(), shouldMatch(text[0], pattern[0]))
                << "text byte " << a << ", pattern byte " << b;
        }
    }
}

TEST(FlankSearch, CodeInTheFlankMatchesItsBasesInTheText) {
    EXPECT_EQ(findFlank("TTCAGTT", "CRG"), 2U);
    EXPECT_EQ(findFlank("TTCGGTT", "CRG"), 2U);
    EXPECT_EQ(findFlank("TTCTGTT", "CRG"), std::nullopt);
}

TEST(FlankSearch, BaseInTheFlankMatchesACodeInTheText) {
    EXPECT_EQ(findFlank("TTCRGTT", "CAG"), 2U);
    EXPECT_EQ(findFlank("TTCRGTT", "CTG"), std::nullopt);
}

TEST(FlankSearch, DifferentCodesNeverMatchEachOther) {
    EXPECT_EQ(findFlank("R", "D"), std::nullopt);
    EXPECT_EQ(findFlank("R", "R"), 0U);
}

TEST(FlankSearch, NMatchesOnlyN) {
    EXPECT_EQ(findFlank("ACGT", "N"), std::nullopt);
    EXPECT_EQ(findFlank("ACNT", "N"), 2U);
    EXPECT_EQ(findFlank("N", "A"), std::nullopt);
}

TEST(FlankSearch, LowerCaseMatchesOnlyItself) {
    EXPECT_EQ(findFlank("ACGT", "cg"), std::nullopt);
    EXPECT_EQ(findFlank("acgt", "cg"), 1U);
    EXPECT_EQ(findFlank("A", "r"), std::nullopt);
}

TEST(FlankSearch, GivesTheLeftmostPlace) {
    EXPECT_EQ(findFlank("AACACACA", "CA"), 2U);
}

TEST(FlankSearch, EmptyPatternMatchesAtTheBeginning) {
    EXPECT_EQ(findFlank("ACGT", ""), 0U);
    EXPECT_EQ(findFlank("", ""), 0U);
}

TEST(FlankSearch, PatternLongerThanTheTextIsNotFound) {
    EXPECT_EQ(findFlank("ACG", "ACGT"), std::nullopt);
    EXPECT_EQ(findFlank("", "A"), std::nullopt);
}

TEST(FlankSearch, FindsAPatternThatIsTheWholeTextOrItsEnd) {
    EXPECT_EQ(findFlank("ACGT", "ACGT"), 0U);
    EXPECT_EQ(findFlank("ACGT", "GT"), 2U);
}

} // namespace
