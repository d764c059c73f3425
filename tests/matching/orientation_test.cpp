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

TEST(ReverseString, ReversesWithoutMapping) {
    std::string text = "aB1!";
    reverseString(text.data(), text.size());
    EXPECT_EQ(text, "!1Ba");
}

} // namespace
} // namespace matching
