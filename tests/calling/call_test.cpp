// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "calling/call.h"

#include <optional>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace calling {
namespace {

TEST(Call, IsFoundAgainByItsWord) {
    std::set<std::string> words;
    for (std::size_t value = 0; value < kCallWords.size(); ++value) {
        const auto call = static_cast<Call>(value);
        if (call != Call::none && call != Call::unknown) {
            EXPECT_EQ(callOf(wordOf(call)), call) << wordOf(call);
            EXPECT_TRUE(words.insert(wordOf(call)).second) << wordOf(call);
        }
    }
    EXPECT_EQ(words.size(), kCallWords.size() - 2);
}

TEST(Call, HasTheWordsOfDocumentsAndExports) {
    EXPECT_STREQ(wordOf(Call::homozygousWildType), "wt/wt");
    EXPECT_STREQ(wordOf(Call::heterozygous), "wt/mut");
    EXPECT_STREQ(wordOf(Call::homozygousMutant), "mut/mut");
    EXPECT_STREQ(wordOf(Call::notDetermined), "Not Determined");
    EXPECT_STREQ(wordOf(Call::positive), "Positive");
    EXPECT_STREQ(wordOf(Call::negative), "Negative");
    EXPECT_STREQ(wordOf(Call::nd0), "ND *0");
    EXPECT_STREQ(wordOf(Call::nd1), "ND *1");
    EXPECT_STREQ(wordOf(Call::nd2), "ND *2");
    EXPECT_STREQ(wordOf(Call::ndNegative), "NDNegative");
    EXPECT_STREQ(wordOf(Call::tooFewReads), "Too few reads");
    EXPECT_STREQ(wordOf(Call::detected), "Detected");
    EXPECT_STREQ(wordOf(Call::notDetected), "NotDetected");
    EXPECT_STREQ(wordOf(Call::rnaNotDegraded), "RNA not degraded");
    EXPECT_STREQ(wordOf(Call::rnaDegraded), "RNA degraded");
    EXPECT_STREQ(wordOf(Call::controlNotWorking), "Control Not Working");
    EXPECT_STREQ(wordOf(Call::nothingDetected), "Not Detected");
}

TEST(Call, IsNoneForAnAbsentOrEmptyText) {
    EXPECT_EQ(callOf(std::nullopt), Call::none);
    EXPECT_EQ(callOf(""), Call::none);
    EXPECT_STREQ(wordOf(Call::none), "");
}

TEST(Call, IsUnknownForATextThatNoRuleWrites) {
    for (const char* text : {"positive", "Positive ", " Positive", "ND *3", "RNA", "unknown"}) {
        EXPECT_EQ(callOf(text), Call::unknown) << text;
    }
    EXPECT_EQ(callOf(std::string("Positive\0", 9)), Call::unknown);
    EXPECT_STREQ(wordOf(Call::unknown), "");
}

} // namespace
} // namespace calling
