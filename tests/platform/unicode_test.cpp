// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/unicode.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using platform::toValidUtf8;

/// U+FFFD, `count` times.
std::string replaced(int count) {
    std::string text;
    for (int number = 0; number < count; ++number) {
        text += "\xEF\xBF\xBD";
    }
    return text;
}

TEST(ToValidUtf8, KeepsValidText) {
    // The first and the last character of each length, and those beside the surrogates.
    for (const char* text : {"", "ACGT", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80",
                             "\xEF\xBF\xBF", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF0\x90\x80\x80",
                             "\xF4\x8F\xBF\xBF", "a\xC3\xA4\xE6\xBC\xA2z"}) {
        EXPECT_EQ(toValidUtf8(text), text);
    }
    const std::string withNul("a\0b", 3);
    EXPECT_EQ(toValidUtf8(withNul), withNul);
}

TEST(ToValidUtf8, ReplacesStrayAndImpossibleBytesOneByOne) {
    EXPECT_EQ(toValidUtf8("a\x80z"), "a" + replaced(1) + "z");
    EXPECT_EQ(toValidUtf8("\xBF\x80"), replaced(2));
    EXPECT_EQ(toValidUtf8("\xFE\xFF"), replaced(2));
    EXPECT_EQ(toValidUtf8("\xF5\x80\x80\x80"), replaced(4));
}

TEST(ToValidUtf8, ReplacesEachByteOfOverlongForms) {
    EXPECT_EQ(toValidUtf8("\xC0\xAF"), replaced(2));
    EXPECT_EQ(toValidUtf8("\xC1\xBF"), replaced(2));
    EXPECT_EQ(toValidUtf8("\xE0\x80\xAF"), replaced(3));
    EXPECT_EQ(toValidUtf8("\xE0\x9F\xBF"), replaced(3));
    EXPECT_EQ(toValidUtf8("\xF0\x80\x80\xAF"), replaced(4));
    EXPECT_EQ(toValidUtf8("\xF0\x8F\xBF\xBF"), replaced(4));
}

TEST(ToValidUtf8, ReplacesEachByteOfSurrogates) {
    EXPECT_EQ(toValidUtf8("\xED\xA0\x80"), replaced(3));
    EXPECT_EQ(toValidUtf8("\xED\xBF\xBF"), replaced(3));
}

TEST(ToValidUtf8, ReplacesEachByteAboveTheLastCodePoint) {
    EXPECT_EQ(toValidUtf8("\xF4\x90\x80\x80"), replaced(4));
    EXPECT_EQ(toValidUtf8("\xF4\x91\x92\x93"), replaced(4));
}

TEST(ToValidUtf8, ReplacesATruncatedCharacterOnce) {
    EXPECT_EQ(toValidUtf8("a\xC3"), "a" + replaced(1));
    EXPECT_EQ(toValidUtf8("\xE1\x80z"), replaced(1) + "z");
    EXPECT_EQ(toValidUtf8("\xF1\x80\x80"), replaced(1));
    EXPECT_EQ(toValidUtf8("\xF0\x90\x80"
                          "A"),
              replaced(1) + "A");
    EXPECT_EQ(toValidUtf8("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF"
                          "A"),
              replaced(4) + "A");
}

TEST(ToValidUtf8, EndsACharacterAtTheFirstByteThatCannotContinueIt) {
    for (const std::string& begun :
         {"\xC2"s, "\xDF"s, "\xE0"s, "\xE1"s, "\xED"s, "\xEE"s, "\xEF"s, "\xF0"s, "\xF1"s, "\xF4"s,
          "\xE0\xA0"s, "\xED\x80"s, "\xEF\xBF"s, "\xF0\x90"s, "\xF4\x8F"s, "\xF0\x90\x80"s,
          "\xF4\x8F\xBF"s}) {
        // The bytes on both sides of those that continue a character.
        EXPECT_EQ(toValidUtf8(begun + "\x7F"), replaced(1) + "\x7F");
        EXPECT_EQ(toValidUtf8(begun + "\xC0"), replaced(2));
    }
}

} // namespace
