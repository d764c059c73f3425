// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The preferences' texts, and what becomes of a typed number.
//
// A number below the range is stored where the next call repairs it, with a note that says so.
// Where no rule repairs, such a number would go into the results, so it is refused. First-run and
// repair values come from the settings' table.
//
// Tested by preference_rules_test.cpp.
#include "ui/application/preference_rules.h"

#include <QCoreApplication>
#include <QLocale>

#include "settings/settings_table.h"

namespace ui {

namespace {

namespace setting = settings::key;

/// Nobody means more reads or copies than this; a longer number is a slip of the keyboard.
constexpr std::int64_t kMostInteger = 1'000'000'000;

QString preferenceText(const char* text) {
    return QCoreApplication::translate("Preferences", text);
}

} // namespace

QString takesEffectText(TakesEffect when) {
    switch (when) {
    case TakesEffect::nextCall:
        return preferenceText("Takes effect at once, also for patients of a run that is going on.");
    case TakesEffect::nextRun:
        return preferenceText("Takes effect from the next run on.");
    case TakesEffect::nextWindow:
        break;
    }
    return preferenceText("Takes effect for documents opened from now on.");
}

QString settingName(const settings::Setting& setting) {
    return QString::fromUtf8(setting.key.data(), static_cast<int>(setting.key.size()));
}

IntegerPreference nD1ThresholdPreference() {
    return {
        setting::kND1Threshold, preferenceText("ND *&1 threshold (read pairs)"),
        preferenceText(
            "The fewest informative read pairs, normal and mutant together, with which a somatic "
            "DNA mutation is called. Below it the call is \"ND *1\".")};
}

IntegerPreference nD2ThresholdPreference() {
    return {
        setting::kND2Threshold, preferenceText("ND *&2 threshold (read pairs)"),
        preferenceText("Kept with the settings and checked by each run. No call depends on it.")};
}

IntegerPreference copyNumberPreference() {
    return {
        setting::kCopyNumberOfInternalControl, preferenceText("Copies of the &internal control"),
        preferenceText(
            "How many copies of the fusion panel's control were put into the sample. The limit "
            "in the comment of a negative fusion result, such as \"<4500 copies\", is worked out "
            "from it.")};
}

BooleanPreference falsePositiveRatePreference() {
    return {
        setting::kCalculateFalsePositiveRate, TakesEffect::nextCall,
        preferenceText("Calculate the &false positive rate"),
        preferenceText(
            "Adds to each positive somatic DNA call the probability of its reads by chance alone. "
            "Off at first.")};
}

BooleanPreference failedReadsFilePreference() {
    return {
        setting::kLeaveFileForFailedToBeAssignedReads, TakesEffect::nextCall,
        preferenceText("&Keep the file of reads that matched nothing"),
        preferenceText(
            "Leaves the read pairs of a patient that no mutation claimed in a file beside the "
            "inputs, whose name ends in \".failedToBeAssignedReads\". Off at first. Inputs that "
            "are read where they are give no such file.")};
}

BooleanPreference midiWindowPreference() {
    return {setting::kWindowSizeMidi, TakesEffect::nextWindow,
            preferenceText("Use the &Midi window"),
            preferenceText("Opens documents in the second window layout. Off at first.")};
}

namespace {

QString noteBelowRange(const IntegerPreference& preference, std::int64_t value) {
    return preferenceText("The next call will replace %1 by %2 and use that.")
        .arg(value)
        .arg(preference.setting.repaired(value));
}

QString noteOutsideRange() {
    const QLocale locale;
    return preferenceText("Not stored: a whole number from %1 to %2 is needed.")
        .arg(locale.toString(settings::kLeastUsableInteger), locale.toString(kMostInteger));
}

} // namespace

IntegerVerdict judgeInteger(const IntegerPreference& preference, const QString& typed) {
    bool isNumber = false;
    const std::int64_t value = typed.trimmed().toLongLong(&isNumber);
    if (isNumber && preference.setting.needsRepair(value)) {
        return {value, noteBelowRange(preference, value)};
    }
    if (!isNumber || value < settings::kLeastUsableInteger || value > kMostInteger) {
        return {std::nullopt, noteOutsideRange()};
    }
    return {value, {}};
}

QString rangeText(const IntegerPreference& preference) {
    const QLocale locale;
    return preferenceText("From %1 to %2; the first value is %3.")
        .arg(locale.toString(settings::kLeastUsableInteger), locale.toString(kMostInteger),
             locale.toString(*preference.setting.firstRunValue));
}

std::optional<std::int64_t> storedInteger(const settings::SettingsStore& settings,
                                          const IntegerPreference& preference) {
    if (!settings.value(preference.setting)) {
        return std::nullopt;
    }
    return settings::integerSetting(settings, preference.setting);
}

void storeInteger(settings::SettingsStore& settings, const IntegerPreference& preference,
                  std::int64_t value) {
    settings.setValue(preference.setting, settings::storedForm(preference.setting, value));
}

} // namespace ui
