// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include <QString>

#include "settings/settings_table.h"

/// What the preferences window knows of each setting, apart from any widget: what it shows beside
/// the settings' table, and what becomes of a number that is typed.
namespace ui {

/// When a changed value is first read.
enum class TakesEffect { nextCall, nextRun, nextWindow };

/// A sentence for the user.
QString takesEffectText(TakesEffect when);

/// The setting's key, which also names its control.
QString settingName(const settings::Setting& setting);

/// A setting that holds a whole number, as text.
struct IntegerPreference {
    settings::Setting setting;
    QString label;
    QString effect;
};

/// A setting that is on or off.
struct BooleanPreference {
    settings::Setting setting;
    TakesEffect when = TakesEffect::nextCall;
    QString label;
    QString effect;
};

IntegerPreference nD1ThresholdPreference();
IntegerPreference nD2ThresholdPreference();
IntegerPreference copyNumberPreference();
BooleanPreference falsePositiveRatePreference();
BooleanPreference failedReadsFilePreference();
BooleanPreference midiWindowPreference();

/// What becomes of a text that was typed for an integer.
struct IntegerVerdict {
    /// The number to store; nullopt for a text that is not stored.
    std::optional<std::int64_t> value;
    /// What the user should know: why the text is not stored, or how the next call repairs the
    /// number. May be empty.
    QString note;
};

/// Judges what was typed. Takes a whole number within the range, and one below it where the next
/// call repairs it.
IntegerVerdict judgeInteger(const IntegerPreference& preference, const QString& typed);

/// The range and the first-run value, as a sentence.
QString rangeText(const IntegerPreference& preference);

/// The number as runs read it from the store; nullopt while nothing is stored.
std::optional<std::int64_t> storedInteger(const settings::SettingsStore& settings,
                                          const IntegerPreference& preference);
/// Stores the number in the setting's form.
void storeInteger(settings::SettingsStore& settings, const IntegerPreference& preference,
                  std::int64_t value);

} // namespace ui
