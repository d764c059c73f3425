// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/oriented_core.h"

#include <gtest/gtest.h>

#include "platform/avx2.h"

namespace matching {
namespace {

TEST(OrientedCore, IsAsItIsForRead1AndReverseComplementedForRead2) {
    EXPECT_EQ(OrientedCore("AACG", false, Mate::read1).bases(), "AACG");
    EXPECT_EQ(OrientedCore("AACG", false, Mate::read2).bases(), "CGTT");
    EXPECT_EQ(OrientedCore("acN-", false, Mate::read1).bases(), "acN-");
}

TEST(OrientedCore, LetsALongSeedBeReadWhereverAShortOneBegins) {
    for (const Mate mate : {Mate::read1, Mate::read2}) {
        const OrientedCore core("ACGT", false, mate);
        const std::string readable(core.bases().data(), 4 + OrientedCore::kReadableBeyond);
        EXPECT_EQ(readable, "ACGT" + std::string(OrientedCore::kReadableBeyond, '\0'));
    }
}

TEST(OrientedCore, GivesTheBasesOfAnUnambiguousCoreAsItsChoices) {
    const OrientedCore core("AAC", false, Mate::read2);
    EXPECT_EQ(core.choices(0), "G");
    EXPECT_EQ(core.choices(2), "T");
    EXPECT_EQ(core.size(), 3u);
}

TEST(OrientedCore, CannotBeFoundInRead2WithBytesThatAReverseComplementNeverHolds) {
    EXPECT_FALSE(OrientedCore("AaC", false, Mate::read2).canBeFound());
    EXPECT_FALSE(OrientedCore("ARC", false, Mate::read2).canBeFound());
    EXPECT_FALSE(OrientedCore("AxC", true, Mate::read2).canBeFound());
    EXPECT_TRUE(OrientedCore("AaRx", false, Mate::read1).canBeFound());
    EXPECT_TRUE(OrientedCore("", false, Mate::read2).canBeFound());
}

TEST(OrientedCore, TakesAnyByteThatIsNoBaseForTheNOfAReverseComplement) {
    const OrientedCore core("AN", false, Mate::read2);
    EXPECT_TRUE(core.canBeFound());
    EXPECT_FALSE(core.isUnambiguous());
    EXPECT_GT(core.choices(0).size(), 16u);
    EXPECT_EQ(core.choices(0).find('A'), std::string_view::npos);
    EXPECT_EQ(core.choices(1), "T");
}

TEST(OrientedCore, TellsTheBasesOfAWildcardCore) {
    const OrientedCore read1("ARN", true, Mate::read1);
    EXPECT_EQ(read1.choices(0), "A");
    EXPECT_EQ(read1.choices(1), "AG");
    EXPECT_EQ(read1.choices(2), "N");
    const OrientedCore read2("ARC", true, Mate::read2);
    EXPECT_EQ(read2.choices(0), "G");
    EXPECT_EQ(read2.choices(1), "CT");
    EXPECT_EQ(read2.choices(2), "T");
}

using Way = bool (*)(std::string_view);

class AmbiguityCodesOfReads : public testing::TestWithParam<Way> {
protected:
    void SetUp() override {
        if (GetParam() == mayHoldAmbiguityCodeByAvx2 && !platform::avx2IsThere()) {
            GTEST_SKIP() << "this processor has no AVX2";
        }
    }
    static bool mayHold(std::string_view read) { return GetParam()(read); }
};

TEST_P(AmbiguityCodesOfReads, AreSeenAtEveryPositionOfReadsOfEveryLength) {
    for (std::size_t length = 1; length < 140; ++length) {
        std::string read(length, 'A');
        for (std::size_t i = 0; i < length; ++i) {
            read[i] = "ACGTN"[i % 5];
        }
        EXPECT_FALSE(mayHold(read)) << length;
        for (std::size_t position = 0; position < length; ++position) {
            const char usual = read[position];
            read[position] = 'R';
            EXPECT_TRUE(mayHold(read)) << position << " of " << length;
            read[position] = usual;
        }
    }
}

TEST_P(AmbiguityCodesOfReads, AreAllSeenAndBasesAndNAreNone) {
    for (const char code : kAmbiguityCodesOfReads) {
        EXPECT_TRUE(mayHold(std::string(50, 'A') + code)) << code;
    }
    for (const char base : {'A', 'C', 'G', 'T', 'N'}) {
        EXPECT_FALSE(mayHold(std::string(50, base))) << base;
    }
    EXPECT_FALSE(mayHold(""));
}

INSTANTIATE_TEST_SUITE_P(EveryWay, AmbiguityCodesOfReads,
                         testing::Values(mayHoldAmbiguityCode, mayHoldAmbiguityCodePortably,
                                         mayHoldAmbiguityCodeByAvx2));

} // namespace
} // namespace matching
