// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "settings/settings_store.h"

/// Every setting of the system, in one table: key, type, first-run value, repair value, meaning.
///
/// The first start, the repair before a call, the preferences window and --set all read this table,
/// so a new setting is one row here. A first-run value is written into the store itself; it is no
/// fallback, and a missing value reads as 0 or false. A repair value replaces a number below 1.
namespace settings {

/// The least number that a rule can use; a smaller one is repaired where the setting says how.
inline constexpr std::int64_t kLeastUsableInteger = 1;

/// A row of the table.
struct Setting {
    /// How rules read the value.
    enum class Type {
        boolean,     ///< booleanSetting()
        exactlyTrue, ///< isStoredTrue(): a number 1 or a text does not count
        integer      ///< integerSetting(); stored as text
    };

    std::string_view key;
    Type type;
    /// What is stored before the user has chosen, 0 for false; nullopt for nothing.
    std::optional<std::int64_t> firstRunValue;
    /// Stored in place of a number below kLeastUsableInteger; nullopt: such a number is used.
    std::optional<std::int64_t> repairValue;

    /// A setting stands for its key wherever a store is asked.
    constexpr operator std::string_view() const noexcept { return key; }

    /// Whether a call replaces the number.
    constexpr bool needsRepair(std::int64_t number) const noexcept {
        return number < kLeastUsableInteger && repairValue;
    }
    /// Whether results depend on it.
    constexpr bool changesResults() const noexcept;
    /// The number that a call uses where `number` is stored.
    constexpr std::int64_t repaired(std::int64_t number) const noexcept {
        return needsRepair(number) ? *repairValue : number;
    }
};

/// The rows by name. The keys live in files: never change their spelling.
namespace key {

/// The fewest informative reads, normal and mutant together, with which a somatic DNA mutation is
/// called. Deliberate: repaired to 100 and not to the first-run value.
inline constexpr Setting kND1Threshold = {"nD1Threshold", Setting::Type::integer, 500, 100};
/// Read and repaired by each call; no rule uses the value.
inline constexpr Setting kND2Threshold = {"nD2Threshold", Setting::Type::integer, 10, 10};
/// A positive somatic call gets its probability by chance alone as comment.
inline constexpr Setting kCalculateFalsePositiveRate = {
    "calculateFalsePositiveRate", Setting::Type::boolean, false, std::nullopt};
/// How many copies of the fusion panel's internal control are in the sample. Stored when a document
/// window loads, not at the first start.
inline constexpr Setting kCopyNumberOfInternalControl = {
    "copyNumberOfInternalControl", Setting::Type::integer, 100'000, std::nullopt};
/// Keeps the file of read pairs that no mutation claimed. Deliberate: only the boolean true itself
/// keeps it, so that no slip leaves patients' reads lying about.
inline constexpr Setting kLeaveFileForFailedToBeAssignedReads = {
    "leaveFileForFailedToBeAssignedReads", Setting::Type::exactlyTrue, std::nullopt, std::nullopt};
/// Kept in the file; no rule reads it.
inline constexpr Setting kLeaveIntermediateFiles = {"leaveIntermediateFiles",
                                                    Setting::Type::boolean, false, std::nullopt};
/// Documents open with the second window layout.
inline constexpr Setting kWindowSizeMidi = {"windowSizeMidi", Setting::Type::boolean, false,
                                            std::nullopt};

/// Stores the application's first-run values, each only where nothing is stored yet.
void writeFirstRunValues(SettingsStore& store);
/// Stores what a document window stores when it loads, only where nothing is stored yet.
void writeFirstWindowValues(SettingsStore& store);

} // namespace key

/// The table, in the order in which the command line names the keys.
inline constexpr std::array kSettings = {
    key::kND1Threshold,
    key::kND2Threshold,
    key::kCalculateFalsePositiveRate,
    key::kCopyNumberOfInternalControl,
    key::kLeaveFileForFailedToBeAssignedReads,
    key::kLeaveIntermediateFiles,
    key::kWindowSizeMidi,
};

/// The value in the form in which this setting stores it: a boolean, or an integer as text.
SettingValue storedForm(const Setting& setting, std::int64_t value);

/// Whether the setting is on, as its type says. REQUIRES: the setting is no integer.
bool isOn(const SettingsStore& store, const Setting& setting);

constexpr bool Setting::changesResults() const noexcept {
    return key == settings::key::kND1Threshold.key ||
           key == settings::key::kCalculateFalsePositiveRate.key ||
           key == settings::key::kCopyNumberOfInternalControl.key;
}

/// A setting as rules read it now.
struct SettingInForce {
    Setting setting;
    /// The number that a call uses, repaired where it would repair it; 0 or 1 for what is off or
    /// on.
    std::int64_t value = 0;
    SettingOrigin origin = SettingOrigin::notSet;

    bool operator==(const SettingInForce& other) const {
        return setting.key == other.setting.key && value == other.value;
    }
};

/// Every setting of the table, in its order. Stores nothing.
std::vector<SettingInForce> settingsInForce(const SettingsStore& store);

/// The number that a call uses. Stores the repair value, as a number, where the call needs it.
std::int64_t repairInteger(SettingsStore& store, const Setting& setting);

} // namespace settings
