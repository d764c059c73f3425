// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/orientation.h"

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

TEST(ReverseString, ReversesWithoutMapping) {
    std::string text = "aB1!";
    reverseString(text.data(), text.size());
    EXPECT_EQ(text, "!1Ba");
}

TEST(Read2Turner, LeavesRead1AsRead) {
    Read2Turner turner;
    const ReadPair pair = turner.turned({"acR", "AACg", "12", "34567"});
    EXPECT_EQ(pair.read1, "acR");
    EXPECT_EQ(pair.quality1, "12");
    EXPECT_EQ(pair.read2, "CGTT");
    EXPECT_EQ(pair.quality2, "76543");
}

} // namespace
} // namespace matching
