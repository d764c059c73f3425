// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/read_codes.h"

#include <gtest/gtest.h>

#include "matching/lying_core.h"
#include "platform/avx2.h"

namespace matching {
namespace {

using Way = bool (*)(std::string_view);

class ReadCodes : public testing::TestWithParam<Way> {
protected:
    void SetUp() override {
        if (GetParam() == mayHoldReadCodeByAvx2 && !platform::avx2IsThere()) {
            GTEST_SKIP() << "this processor has no AVX2";
        }
    }
    static bool mayHold(std::string_view read) { return GetParam()(read); }
};

TEST_P(ReadCodes, AreSeenAtEveryPlaceOfReadsOfEveryLength) {
    for (std::size_t length = 1; length < 140; ++length) {
        std::string read(length, 'A');
        for (std::size_t i = 0; i < length; ++i) {
            read[i] = "ACGTN"[i % 5];
        }
        EXPECT_FALSE(mayHold(read)) << length;
        for (std::size_t place = 0; place < length; ++place) {
            const char usual = read[place];
            read[place] = 'R';
            EXPECT_TRUE(mayHold(read)) << place << " of " << length;
            read[place] = usual;
        }
    }
}

TEST_P(ReadCodes, AreAllSeenAndTheUsualLettersAreNone) {
    for (const char code : kReadCodes) {
        EXPECT_TRUE(mayHold(std::string(50, 'A') + code)) << code;
    }
    for (const char letter : {'A', 'C', 'G', 'T', 'N'}) {
        EXPECT_FALSE(mayHold(std::string(50, letter))) << letter;
    }
    EXPECT_FALSE(mayHold(""));
}

INSTANTIATE_TEST_SUITE_P(EveryWay, ReadCodes,
                         testing::Values(mayHoldReadCode, mayHoldReadCodePortably,
                                         mayHoldReadCodeByAvx2));

} // namespace
} // namespace matching
