// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/result.h"
#include "settings/json_settings_store.h"
#include "settings/settings_store.h"

/// The settings of a command: a file, the per-user one or that of --settings, under the values of
/// --set.
namespace cli {

/// A value as given by --set.
struct SettingArgument {
    std::string key;
    settings::SettingValue value;
};

/// Reads KEY=VALUE: "true" and "false" are booleans, digits with an optional "-" an integer,
/// everything else a text. Refuses a key that is no setting: a misspelled one would let a run go on
/// with another threshold than the one asked for.
platform::Result<SettingArgument> parseSetting(const std::string& text);

/// The settings file of a command: that of --settings, or the per-user one.
std::string settingsPath(const Arguments& arguments);

/// Refuses a file that cannot be read: first-run values would stand in for what it holds. Refuses,
/// too, a file of --settings that exists and is no settings file: its user may have meant another
/// one. (A damaged per-user file is set aside, so that work can go on.)
platform::Status checkSettings(const Arguments& arguments);

/// The settings of a command that stores none: those of its file as they stand, under the values of
/// --set. A damaged per-user file gives a warning and is left as it is.
platform::Result<SettingValues> readSettings(const Arguments& arguments, Console& console);

/// The settings of a run.
class RunSettings {
public:
    RunSettings(const Arguments& arguments, Console& console);

    settings::SettingsStore& store() { return m_values; }

    /// Stores what a first start with a document window stores.
    void writeFirstRunValues();

private:
    settings::JsonSettingsStore m_file;
    settings::OverlaySettingsStore m_values;
};

} // namespace cli
