// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/result.h"
#include "settings/json_settings_store.h"
#include "settings/settings_store.h"

namespace cli {

/// The settings file of a command: that of --settings, or the per-user one.
std::string settingsPath(const Arguments& arguments);

/// Refuses a file that cannot be read: first-run values are not what it may hold. Refuses, too, a
/// file of --settings that exists and is no settings file: whoever named it may have meant another
/// one. (A per-user file that is damaged is set aside, so that work can go on.)
platform::Status checkSettings(const Arguments& arguments);

/// The settings of a command that stores none: those of its file as they stand, under the values of
/// --set. A per-user file that is damaged gives a warning and is left as it is.
platform::Result<SettingValues> readSettings(const Arguments& arguments, Console& console);

/// The settings of a run: the per-user file or that of --settings, under the values of --set.
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
