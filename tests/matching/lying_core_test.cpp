// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/lying_core.h"

#include <gtest/gtest.h>

namespace matching {
namespace {

TEST(LyingCore, LiesAsItIsInRead1AndReversedAndComplementedInRead2) {
    EXPECT_EQ(LyingCore("AACG", false, Side::read1).letters(), "AACG");
    EXPECT_EQ(LyingCore("AACG", false, Side::read2).letters(), "CGTT");
    EXPECT_EQ(LyingCore("acN-", false, Side::read1).letters(), "acN-");
}

TEST(LyingCore, LetsAWholeWindowBeReadWhereverAShortOneBegins) {
    for (const Side side : {Side::read1, Side::read2}) {
        const LyingCore core("ACGT", false, side);
        const std::string readable(core.letters().data(), 4 + LyingCore::kReadableBehind);
        EXPECT_EQ(readable, "ACGT" + std::string(LyingCore::kReadableBehind, '\0'));
    }
}

TEST(LyingCore, GivesTheLettersOfAPlainCoreAsItsChoices) {
    const LyingCore core("AAC", false, Side::read2);
    EXPECT_EQ(core.choices(0), "G");
    EXPECT_EQ(core.choices(2), "T");
    EXPECT_EQ(core.size(), 3u);
}

TEST(LyingCore, CannotBeFoundInATurnedReadWithLettersThatTurningDoesNotGive) {
    EXPECT_FALSE(LyingCore("AaC", false, Side::read2).canBeFound());
    EXPECT_FALSE(LyingCore("ARC", false, Side::read2).canBeFound());
    EXPECT_FALSE(LyingCore("AxC", true, Side::read2).canBeFound());
    EXPECT_TRUE(LyingCore("AaRx", false, Side::read1).canBeFound());
    EXPECT_TRUE(LyingCore("", false, Side::read2).canBeFound());
}

TEST(LyingCore, TakesAnyOtherByteForTheNOfATurnedRead) {
    const LyingCore core("AN", false, Side::read2);
    EXPECT_TRUE(core.canBeFound());
    EXPECT_FALSE(core.isPlain());
    EXPECT_GT(core.choices(0).size(), 16u);
    EXPECT_EQ(core.choices(0).find('A'), std::string_view::npos);
    EXPECT_EQ(core.choices(1), "T");
}

TEST(LyingCore, TellsTheBasesOfAWildcardCore) {
    const LyingCore read1("ARN", true, Side::read1);
    EXPECT_EQ(read1.choices(0), "A");
    EXPECT_EQ(read1.choices(1), "AG");
    EXPECT_EQ(read1.choices(2), "N");
    const LyingCore read2("ARC", true, Side::read2);
    EXPECT_EQ(read2.choices(0), "G");
    EXPECT_EQ(read2.choices(1), "CT");
    EXPECT_EQ(read2.choices(2), "T");
}

} // namespace
} // namespace matching
