// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "settings/settings_store.h"

/// Keys of the settings store. The spellings live in files: never change them.
namespace settings::key {

/// Boolean, first-run value false. Kept for the preferences; no run reads it.
inline constexpr std::string_view kLeaveIntermediateFiles = "leaveIntermediateFiles";
/// Boolean, first-run value false: a positive somatic call gets its chance probability as comment.
inline constexpr std::string_view kCalculateFalsePositiveRate = "calculateFalsePositiveRate";
/// Integer as text, first-run value "500": least informative reads for a somatic call.
inline constexpr std::string_view kND1Threshold = "nD1Threshold";
/// Integer as text, first-run value "10": read and repaired, used for nothing else.
inline constexpr std::string_view kND2Threshold = "nD2Threshold";
/// Boolean, first-run value false: documents open with the second window layout.
inline constexpr std::string_view kWindowSizeMidi = "windowSizeMidi";
/// Integer as text, "100000" once a document window was opened: copies of the internal control.
inline constexpr std::string_view kCopyNumberOfInternalControl = "copyNumberOfInternalControl";
/// Boolean, no first-run value: exactly true keeps the file of read pairs that nothing claimed.
inline constexpr std::string_view kLeaveFileForFailedToBeAssignedReads =
    "leaveFileForFailedToBeAssignedReads";

/// Stores the application's first-run values, each only where nothing is stored yet.
void writeFirstRunValues(SettingsStore& store);
/// Stores what a document window stores when it loads, only where nothing is stored yet.
void writeFirstWindowValues(SettingsStore& store);

} // namespace settings::key
