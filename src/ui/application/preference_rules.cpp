// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/preference_rules.h"

#include <string>

#include <QCoreApplication>
#include <QLocale>

#include "settings/settings_table.h"

namespace ui {

namespace {

namespace setting = settings::key;

constexpr std::int64_t kMostReads = 1'000'000'000;
constexpr std::int64_t kMostCopies = 1'000'000'000;

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

IntegerPreference nD1ThresholdPreference() {
    return {
        setting::kND1Threshold,
        1,
        kMostReads,
        500,
        100,
        preferenceText("ND *&1 threshold (read pairs)"),
        preferenceText(
            "The fewest informative read pairs, normal and mutant together, with which a somatic "
            "DNA mutation is called. Below it the call is \"ND *1\".")};
}

IntegerPreference nD2ThresholdPreference() {
    return {
        setting::kND2Threshold,
        1,
        kMostReads,
        10,
        10,
        preferenceText("ND *&2 threshold (read pairs)"),
        preferenceText("Kept with the settings and checked by each run. No call depends on it.")};
}

IntegerPreference copyNumberPreference() {
    return {
        setting::kCopyNumberOfInternalControl,
        1,
        kMostCopies,
        100'000,
        std::nullopt,
        preferenceText("Copies of the &internal control"),
        preferenceText(
            "How many copies of the fusion panel's control were put into the sample. The limit "
            "in the comment of a negative fusion result, such as \"<4500 copies\", is worked out "
            "from it.")};
}

BooleanPreference falsePositiveRatePreference() {
    return {
        setting::kCalculateFalsePositiveRate, TakesEffect::nextCall, false,
        preferenceText("Calculate the &false positive rate"),
        preferenceText(
            "Adds to each positive somatic DNA call the probability of its reads by chance alone. "
            "Off at first.")};
}

BooleanPreference failedReadsFilePreference() {
    return {
        setting::kLeaveFileForFailedToBeAssignedReads, TakesEffect::nextCall, true,
        preferenceText("&Keep the file of reads that matched nothing"),
        preferenceText(
            "Leaves the read pairs of a patient that no mutation claimed in a file beside the "
            "inputs, whose name ends in \".failedToBeAssignedReads\". Off at first. Inputs that "
            "are read where they are give no such file.")};
}

BooleanPreference midiWindowPreference() {
    return {setting::kWindowSizeMidi, TakesEffect::nextWindow, false,
            preferenceText("Use the &Midi window"),
            preferenceText("Opens documents in the second window layout. Off at first.")};
}

namespace {

QString noteBelowRange(const IntegerPreference& preference, std::int64_t value) {
    return preferenceText("The next call will replace %1 by %2 and use that.")
        .arg(value)
        .arg(*preference.repairedValue);
}

QString noteOutsideRange(const IntegerPreference& preference) {
    const QLocale locale;
    return preferenceText("Not stored: a whole number from %1 to %2 is needed.")
        .arg(locale.toString(preference.least), locale.toString(preference.most));
}

} // namespace

IntegerVerdict judgeInteger(const IntegerPreference& preference, const QString& typed) {
    bool isNumber = false;
    const std::int64_t value = typed.trimmed().toLongLong(&isNumber);
    if (!isNumber) {
        return {std::nullopt, noteOutsideRange(preference)};
    }
    if (value < preference.least && preference.repairedValue) {
        return {value, noteBelowRange(preference, value)};
    }
    if (value < preference.least || value > preference.most) {
        return {std::nullopt, noteOutsideRange(preference)};
    }
    return {value, {}};
}

QString rangeText(const IntegerPreference& preference) {
    const QLocale locale;
    return preferenceText("From %1 to %2; the first value is %3.")
        .arg(locale.toString(preference.least), locale.toString(preference.most),
             locale.toString(preference.firstRunValue));
}

std::optional<std::int64_t> storedInteger(const settings::SettingsStore& settings,
                                          const IntegerPreference& preference) {
    if (!settings.value(preference.key)) {
        return std::nullopt;
    }
    return settings::integerSetting(settings, preference.key);
}

void storeInteger(settings::SettingsStore& settings, const IntegerPreference& preference,
                  std::int64_t value) {
    settings.setValue(preference.key, std::to_string(value));
}

bool storedBoolean(const settings::SettingsStore& settings, const BooleanPreference& preference) {
    return preference.onlyStoredTrue ? settings::isStoredTrue(settings, preference.key)
                                     : settings::booleanSetting(settings, preference.key);
}

} // namespace ui
