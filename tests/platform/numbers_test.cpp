// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/numbers.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

/// Puts the process under a comma-decimal locale for a test; fails where that is not installed.
class ScopedCLocale : public testing::Test {
protected:
    void SetUp() override {
        m_previous = std::setlocale(LC_ALL, nullptr);
        ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
            << "the locale de_DE.UTF-8 is needed: install the package locales-all";
        ASSERT_EQ(std::strtod("0.5", nullptr), 0.0) << "the locale has no decimal comma";
    }
    void TearDown() override { std::setlocale(LC_ALL, m_previous.c_str()); }

private:
    std::string m_previous;
};

TEST_F(ScopedCLocale, ScansDecimalPointsUnderACommaLocale) {
    const platform::ScopedCLocale inCLocale;
    double number = 0;
    EXPECT_EQ(std::sscanf("0.001", "%lf", &number), 1);
    EXPECT_EQ(number, 0.001);
    EXPECT_EQ(std::strtod("1e-3", nullptr), 0.001);
}

TEST_F(ScopedCLocale, GivesTheLocaleBackAtItsEnd) {
    {
        const platform::ScopedCLocale outer;
        { const platform::ScopedCLocale inner; }
        EXPECT_EQ(std::strtod("0.5", nullptr), 0.5);
    }
    EXPECT_EQ(std::strtod("0,5", nullptr), 0.5);
}

TEST_F(ScopedCLocale, ConcernsOneThreadOnly) {
    const platform::ScopedCLocale inCLocale;
    double elsewhere = 0;
    std::thread([&elsewhere] { elsewhere = std::strtod("0,5", nullptr); }).join();
    EXPECT_EQ(elsewhere, 0.5);
}

TEST_F(ScopedCLocale, MakesFormattedPrintDecimalPoints) {
    EXPECT_EQ(platform::formatted("%.3f", 1234.5), "1234.500");
    EXPECT_EQ(std::strtod("0,5", nullptr), 0.5);
}

TEST(Formatted, HasNoLimitOfLength) {
    const std::string longText(100000, 'x');
    EXPECT_EQ(platform::formatted("<%s>%d", longText.c_str(), 7), "<" + longText + ">7");
    EXPECT_EQ(platform::formatted("%s", ""), "");
}

} // namespace
