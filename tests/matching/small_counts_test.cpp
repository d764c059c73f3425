// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/small_counts.h"

#include <gtest/gtest.h>

namespace matching {
namespace {

TEST(SmallCounts, CountEachPlaceByItself) {
    SmallCounts counts(4);
    counts.increase(1);
    counts.increase(3);
    counts.increase(3);
    EXPECT_EQ(counts[0], 0u);
    EXPECT_EQ(counts[1], 1u);
    EXPECT_EQ(counts[2], 0u);
    EXPECT_EQ(counts[3], 2u);
}

TEST(SmallCounts, CountBeyondWhatAByteHolds) {
    SmallCounts counts(3);
    for (std::size_t count = 1; count <= 1000; ++count) {
        counts.increase(1);
        ASSERT_EQ(counts[1], count);
    }
    counts.increase(2);
    EXPECT_EQ(counts[0], 0u);
    EXPECT_EQ(counts[2], 1u);
}

} // namespace
} // namespace matching
