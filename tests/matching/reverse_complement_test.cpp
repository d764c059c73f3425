// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/reverse_complement.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace matching {
namespace {

TEST(ReverseComplement, IsUpperCaseAndMakesNOfOtherBytes) {
    std::string text = "AaCcGgTtNnR-";
    reverseComplement(text.data(), text.size());
    EXPECT_EQ(text, "NNNNAACCGGTT");
}

TEST(ReverseComplement, LeavesAnEmptyTextEmpty) {
    std::string text;
    reverseComplement(text.data(), text.size());
    EXPECT_EQ(text, "");
}

TEST(AppendReverseComplement, LeavesWhatWasThere) {
    std::string text = "ac";
    appendReverseComplement(text, "AACgx");
    EXPECT_EQ(text, "acNCGTT");
}

TEST(AppendReverseComplement, MapsEveryByteAtEveryPositionOfTextsOfEveryLength) {
    for (std::size_t length = 0; length < 70; ++length) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text;
            for (std::size_t i = 0; i < length; ++i) {
                text += i % 7 == 3 ? static_cast<char>(byte) : "ACGTacgtN"[(i + length) % 9];
            }
            std::string expected(text.rbegin(), text.rend());
            std::transform(expected.begin(), expected.end(), expected.begin(), complement);
            std::string result;
            appendReverseComplement(result, text);
            ASSERT_EQ(result, expected) << byte << " in " << length;
        }
    }
}

TEST(ReverseString, ReversesWithoutMapping) {
    std::string text = "aB1!";
    reverseString(text.data(), text.size());
    EXPECT_EQ(text, "!1Ba");
}

TEST(Read2ReverseComplementer, LeavesRead1AsRead) {
    Read2ReverseComplementer read2;
    const reads::ReadPair pair = read2.onStrandOfRead1({"acR", "AACg", "12", "34567"});
    EXPECT_EQ(pair.read1, "acR");
    EXPECT_EQ(pair.quality1, "12");
    EXPECT_EQ(pair.read2, "CGTT");
    EXPECT_EQ(pair.quality2, "76543");
}

} // namespace
} // namespace matching
