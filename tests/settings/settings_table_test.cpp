// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/settings_table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/setting_values.h"

using setting_values::text;
using settings::MemorySettingsStore;
using settings::SettingValue;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace setting = settings::key;

namespace {

/// Notes what is stored, in order.
class NotingStore : public settings::SettingsStore {
public:
    std::optional<SettingValue> value(std::string_view key) const override {
        return m_values.value(key);
    }
    settings::SettingValues values() const override { return m_values.values(); }
    void setValue(std::string_view key, SettingValue value) override {
        stored.emplace_back(key, value);
        m_values.setValue(key, std::move(value));
    }
    void setMissing(const KeysAndValues& values) override {
        for (const auto& [key, value] : values) {
            if (!m_values.value(key)) {
                setValue(key, value);
            }
        }
    }

    std::vector<std::pair<std::string, SettingValue>> stored;

private:
    MemorySettingsStore m_values;
};

constexpr std::string_view kFirstRunKeys[] = {
    setting::kLeaveIntermediateFiles, setting::kCalculateFalsePositiveRate, setting::kND1Threshold,
    setting::kND2Threshold, setting::kWindowSizeMidi};

} // namespace

TEST(FirstRunValues, AreStoredInOrderForAFreshUser) {
    NotingStore store;
    setting::writeFirstRunValues(store);
    EXPECT_THAT(store.stored,
                ElementsAre(Pair("leaveIntermediateFiles", SettingValue(false)),
                            Pair("calculateFalsePositiveRate", SettingValue(false)),
                            Pair("nD1Threshold", text("500")), Pair("nD2Threshold", text("10")),
                            Pair("windowSizeMidi", SettingValue(false))));
}

TEST(FirstRunValues, LeaveTheInternalControlToTheFirstWindow) {
    NotingStore store;
    setting::writeFirstRunValues(store);
    EXPECT_EQ(store.value("copyNumberOfInternalControl"), std::nullopt);

    store.stored.clear();
    setting::writeFirstWindowValues(store);
    EXPECT_THAT(store.stored, ElementsAre(Pair("copyNumberOfInternalControl", text("100000"))));
}

TEST(FirstRunValues, SayNothingOfTheUnassignedReads) {
    NotingStore store;
    setting::writeFirstRunValues(store);
    setting::writeFirstWindowValues(store);
    EXPECT_EQ(store.value("leaveFileForFailedToBeAssignedReads"), std::nullopt);
}

TEST(FirstRunValues, NeverReplaceAValueWhateverItsType) {
    const std::vector<SettingValue> kinds = {std::monostate{}, true,     std::int64_t{0}, 0.5,
                                             text(""),         text("x")};
    for (const SettingValue& kind : kinds) {
        NotingStore store;
        for (const std::string_view key : kFirstRunKeys) {
            store.setValue(key, kind);
        }
        store.setValue(setting::kCopyNumberOfInternalControl, kind);
        store.stored.clear();
        setting::writeFirstRunValues(store);
        setting::writeFirstWindowValues(store);
        EXPECT_THAT(store.stored, IsEmpty()) << "kind " << kind.index();
    }
}

TEST(FirstRunValues, FillOnlyWhatIsMissing) {
    NotingStore store;
    store.setValue("nD1Threshold", std::int64_t{100});
    store.stored.clear();
    setting::writeFirstRunValues(store);
    EXPECT_THAT(store.stored, ElementsAre(Pair("leaveIntermediateFiles", SettingValue(false)),
                                          Pair("calculateFalsePositiveRate", SettingValue(false)),
                                          Pair("nD2Threshold", text("10")),
                                          Pair("windowSizeMidi", SettingValue(false))));
}

// --- The table

TEST(SettingsTable, HoldsEachKeyOnceInTheOrderInWhichTheCommandLineNamesThem) {
    std::vector<std::string_view> keys;
    for (const settings::Setting& setting : settings::kSettings) {
        keys.push_back(setting.key);
    }
    EXPECT_THAT(keys,
                ElementsAre("nD1Threshold", "nD2Threshold", "calculateFalsePositiveRate",
                            "copyNumberOfInternalControl", "leaveFileForFailedToBeAssignedReads",
                            "leaveIntermediateFiles", "windowSizeMidi"));
}

TEST(SettingsTable, GivesEveryIntegerAUsableFirstRunValue) {
    for (const settings::Setting& setting : settings::kSettings) {
        if (setting.type == settings::Setting::Type::integer) {
            EXPECT_GE(setting.firstRunValue.value_or(0), settings::kLeastUsableInteger)
                << setting.key;
        }
    }
}

TEST(RepairInteger, StoresTheRepairValueAsANumberInPlaceOfOneBelowOne) {
    for (const SettingValue& unusable : {text("0"), text("-3"), text("none"), text("")}) {
        MemorySettingsStore store;
        store.setValue(setting::kND1Threshold, unusable);
        EXPECT_EQ(settings::repairInteger(store, setting::kND1Threshold), 100);
        EXPECT_EQ(store.value("nD1Threshold"), setting_values::number(100));
    }
    MemorySettingsStore store;
    EXPECT_EQ(settings::repairInteger(store, setting::kND2Threshold), 10);
    EXPECT_EQ(store.value("nD2Threshold"), setting_values::number(10));
}

TEST(RepairInteger, LeavesAUsableNumberAsItIsStored) {
    NotingStore store;
    store.setValue(setting::kND1Threshold, text("1"));
    store.stored.clear();
    EXPECT_EQ(settings::repairInteger(store, setting::kND1Threshold), 1);
    EXPECT_THAT(store.stored, IsEmpty());
}

TEST(RepairInteger, LeavesANumberThatHasNoRepair) {
    NotingStore store;
    store.setValue(setting::kCopyNumberOfInternalControl, text("0"));
    store.stored.clear();
    EXPECT_EQ(settings::repairInteger(store, setting::kCopyNumberOfInternalControl), 0);
    EXPECT_THAT(store.stored, IsEmpty());
}

TEST(SettingIsOn, FollowsTheTypeOfTheSetting) {
    MemorySettingsStore store;
    for (const SettingValue& value : {text("YES"), setting_values::number(1)}) {
        store.setValue(setting::kWindowSizeMidi, value);
        store.setValue(setting::kLeaveFileForFailedToBeAssignedReads, value);
        EXPECT_TRUE(settings::isOn(store, setting::kWindowSizeMidi));
        EXPECT_FALSE(settings::isOn(store, setting::kLeaveFileForFailedToBeAssignedReads));
    }
    store.setValue(setting::kLeaveFileForFailedToBeAssignedReads, true);
    EXPECT_TRUE(settings::isOn(store, setting::kLeaveFileForFailedToBeAssignedReads));
}
