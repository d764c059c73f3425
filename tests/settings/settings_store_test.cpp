// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/settings_store.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "settings/setting_values.h"

using setting_values::number;
using setting_values::text;
using settings::booleanSetting;
using settings::integerSetting;
using settings::isStoredTrue;
using settings::MemorySettingsStore;
using settings::OverlaySettingsStore;
using settings::SettingValue;

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();

std::int64_t readAsInteger(const SettingValue& value) {
    MemorySettingsStore store;
    store.setValue("key", value);
    return integerSetting(store, "key");
}

bool readAsBoolean(const SettingValue& value) {
    MemorySettingsStore store;
    store.setValue("key", value);
    return booleanSetting(store, "key");
}

bool isTrueItself(const SettingValue& value) {
    MemorySettingsStore store;
    store.setValue("key", value);
    return isStoredTrue(store, "key");
}

} // namespace

// --- Conversions

TEST(IntegerSetting, ReadsTheDigitsAtTheStartOfAText) {
    const std::map<std::string, std::int64_t> cases = {
        {"500", 500}, {"-7", -7}, {"+7", 7},   {" \t\n\v\f\r42", 42}, {"12abc", 12}, {"3.9", 3},
        {"007", 7},   {"1e3", 1}, {"0x10", 0}, {"1,000", 1},          {"-0", 0},     {"5 6", 5},
    };
    for (const auto& [stored, expected] : cases) {
        EXPECT_EQ(readAsInteger(text(stored)), expected) << '"' << stored << '"';
    }
}

TEST(IntegerSetting, IsZeroForAnEmptyTextAndANonNumber) {
    for (const char* stored : {"", " ", "x", "abc12", "-", "+", "--5", "+-5", "- 5", ".5"}) {
        EXPECT_EQ(readAsInteger(text(stored)), 0) << '"' << stored << '"';
    }
}

TEST(IntegerSetting, SaturatesATextBeyondSixtyFourBits) {
    EXPECT_EQ(readAsInteger(text("9223372036854775807")), kHighest);
    EXPECT_EQ(readAsInteger(text("9223372036854775808")), kHighest);
    EXPECT_EQ(readAsInteger(text("-9223372036854775808")), kLowest);
    EXPECT_EQ(readAsInteger(text("-9223372036854775809")), kLowest);
    EXPECT_EQ(readAsInteger(text(std::string(400, '9'))), kHighest);
    EXPECT_EQ(readAsInteger(text("-" + std::string(400, '9'))), kLowest);
}

TEST(IntegerSetting, ReadsNumbersAndTruncatesReals) {
    EXPECT_EQ(readAsInteger(number(100)), 100);
    EXPECT_EQ(readAsInteger(number(kLowest)), kLowest);
    EXPECT_EQ(readAsInteger(2.9), 2);
    EXPECT_EQ(readAsInteger(-2.9), -2);
    EXPECT_EQ(readAsInteger(1e30), kHighest);
    EXPECT_EQ(readAsInteger(9223372036854775808.0), kHighest);
    EXPECT_EQ(readAsInteger(-9223372036854775808.0), kLowest);
    EXPECT_EQ(readAsInteger(-1e30), kLowest);
    EXPECT_EQ(readAsInteger(std::nan("")), 0);
    EXPECT_EQ(readAsInteger(std::numeric_limits<double>::infinity()), kHighest);
}

TEST(IntegerSetting, ReadsBooleansAsZeroOrOneAndOtherKindsAsZero) {
    EXPECT_EQ(readAsInteger(true), 1);
    EXPECT_EQ(readAsInteger(false), 0);
    EXPECT_EQ(readAsInteger(std::monostate{}), 0);
    EXPECT_EQ(integerSetting(MemorySettingsStore(), "missing"), 0);
}

TEST(BooleanSetting, ReadsTextsByTheirFirstTellingCharacter) {
    for (const char* stored : {"1", "Y", "y", "T", "t", "yes", "true", "TRUE", "9", "007", "-1",
                               "+1", " \t1", "0y", "-0007", "12abc"}) {
        EXPECT_TRUE(readAsBoolean(text(stored))) << '"' << stored << '"';
    }
    for (const char* stored : {"", " ", "0", "000", "no", "NO", "false", "x1", "+", "0.1", "on"}) {
        EXPECT_FALSE(readAsBoolean(text(stored))) << '"' << stored << '"';
    }
}

TEST(BooleanSetting, ReadsNumbersAsNotZero) {
    EXPECT_TRUE(readAsBoolean(number(1)));
    EXPECT_TRUE(readAsBoolean(number(-3)));
    EXPECT_FALSE(readAsBoolean(number(0)));
    EXPECT_TRUE(readAsBoolean(0.5));
    EXPECT_FALSE(readAsBoolean(0.0));
    EXPECT_FALSE(readAsBoolean(-0.0));
}

TEST(BooleanSetting, ReadsBooleansAsTheyAreAndOtherKindsAsFalse) {
    EXPECT_TRUE(readAsBoolean(true));
    EXPECT_FALSE(readAsBoolean(false));
    EXPECT_FALSE(readAsBoolean(std::monostate{}));
    EXPECT_FALSE(booleanSetting(MemorySettingsStore(), "missing"));
}

TEST(StoredTrue, IsTheBooleanItselfAndNothingThatCountsAsTrue) {
    EXPECT_TRUE(isTrueItself(true));
    EXPECT_FALSE(isTrueItself(false));
    EXPECT_FALSE(isTrueItself(number(1)));
    EXPECT_FALSE(isTrueItself(1.0));
    EXPECT_FALSE(isTrueItself(text("1")));
    EXPECT_FALSE(isTrueItself(text("true")));
    EXPECT_FALSE(isTrueItself(text("YES")));
    EXPECT_FALSE(isTrueItself(std::monostate{}));
    EXPECT_FALSE(isStoredTrue(MemorySettingsStore(), "missing"));
}

// --- Stores

TEST(MemorySettingsStore, GivesBackWhatWasStoredLast) {
    MemorySettingsStore store;
    EXPECT_EQ(store.value("a"), std::nullopt);
    store.setValue("a", text("1"));
    store.setValue("b", true);
    EXPECT_EQ(store.value("a"), text("1"));
    store.setValue("a", number(1));
    EXPECT_EQ(store.value("a"), number(1));
    EXPECT_EQ(store.value("b"), SettingValue(true));
}

TEST(OverlaySettingsStore, ReadsAGivenKeyHereAndOthersBelow) {
    MemorySettingsStore below;
    below.setValue("given", text("below"));
    below.setValue("other", text("below"));
    const OverlaySettingsStore overlay(below, {{"given", number(7)}});
    EXPECT_EQ(overlay.value("given"), number(7));
    EXPECT_EQ(overlay.value("other"), text("below"));
    EXPECT_EQ(overlay.value("missing"), std::nullopt);
}

TEST(OverlaySettingsStore, KeepsTheRepairOfAGivenKeyHere) {
    MemorySettingsStore below;
    below.setValue("given", text("500"));
    OverlaySettingsStore overlay(below, {{"given", number(0)}});
    overlay.setValue("given", number(100));
    EXPECT_EQ(overlay.value("given"), number(100));
    EXPECT_EQ(below.value("given"), text("500"));
}

TEST(OverlaySettingsStore, StoresEveryOtherKeyBelow) {
    MemorySettingsStore below;
    OverlaySettingsStore overlay(below, {{"given", number(0)}});
    overlay.setValue("other", number(5));
    EXPECT_EQ(below.value("other"), number(5));
    EXPECT_EQ(overlay.value("other"), number(5));
    EXPECT_EQ(below.value("given"), std::nullopt);
}

TEST(MemorySettingsStore, StoresOnlyWhatIsMissing) {
    MemorySettingsStore store;
    store.setValue("a", text("kept"));
    store.setMissing({{"a", number(1)}, {"b", number(2)}});
    EXPECT_EQ(store.value("a"), text("kept"));
    EXPECT_EQ(store.value("b"), number(2));
}

TEST(OverlaySettingsStore, StoresBelowWhatIsNeitherGivenNorThere) {
    MemorySettingsStore below;
    below.setValue("there", text("kept"));
    OverlaySettingsStore overlay(below, {{"given", number(7)}});
    overlay.setMissing({{"given", number(1)}, {"there", number(2)}, {"missing", number(3)}});
    EXPECT_EQ(overlay.value("given"), number(7));
    EXPECT_EQ(below.value("given"), std::nullopt);
    EXPECT_EQ(below.value("there"), text("kept"));
    EXPECT_EQ(below.value("missing"), number(3));
}
