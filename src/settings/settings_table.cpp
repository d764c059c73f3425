// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules that follow from the table alone: what a first start stores, in which form, and what
// becomes of a number that no rule can use.
//
// First-run values go into the file itself, so that a user finds every setting there to edit, and
// so that a later version with other first-run values changes nobody's calls. The file keeps the
// order in which they are stored; that order is fixed, and it is not the table's. Integers are
// stored as text and a repair as a number: both read alike, and the difference shows in the file
// who wrote it.
//
// Tested by settings_table_test.cpp; the calls' use of the repair by calling/calls_test.cpp.
#include "settings/settings_table.h"

#include <initializer_list>
#include <string>

namespace settings {

namespace {

void storeMissing(SettingsStore& store, std::initializer_list<Setting> settings) {
    SettingsStore::KeysAndValues values;
    for (const Setting& setting : settings) {
        if (setting.firstRunValue) {
            values.emplace_back(setting.key, storedForm(setting, *setting.firstRunValue));
        }
    }
    store.setMissing(values);
}

} // namespace

void key::writeFirstRunValues(SettingsStore& store) {
    storeMissing(store, {kLeaveIntermediateFiles, kCalculateFalsePositiveRate, kND1Threshold,
                         kND2Threshold, kWindowSizeMidi});
}

void key::writeFirstWindowValues(SettingsStore& store) {
    storeMissing(store, {kCopyNumberOfInternalControl});
}

SettingValue storedForm(const Setting& setting, std::int64_t value) {
    if (setting.type == Setting::Type::integer) {
        return std::to_string(value);
    }
    return value != 0;
}

bool isOn(const SettingsStore& store, const Setting& setting) {
    return setting.type == Setting::Type::exactlyTrue ? isStoredTrue(store, setting)
                                                      : booleanSetting(store, setting);
}

std::vector<SettingInForce> settingsInForce(const SettingsStore& store) {
    MemorySettingsStore now;
    for (const auto& [key, value] : store.values()) {
        now.setValue(key, value);
    }
    std::vector<SettingInForce> all;
    for (const Setting& setting : kSettings) {
        const std::int64_t value = setting.type == Setting::Type::integer
                                       ? setting.repaired(integerSetting(now, setting))
                                       : isOn(now, setting);
        all.push_back(
            {setting, value, now.value(setting) ? store.origin(setting) : SettingOrigin::notSet});
    }
    return all;
}

std::int64_t repairInteger(SettingsStore& store, const Setting& setting) {
    const std::int64_t stored = integerSetting(store, setting);
    if (setting.needsRepair(stored)) {
        store.setValue(setting, setting.repaired(stored));
    }
    return setting.repaired(stored);
}

} // namespace settings
