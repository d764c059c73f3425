// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/run_settings.h"

#include "settings/settings_table.h"

namespace cli {

std::string settingsPath(const Arguments& arguments) {
    return arguments.settingsPath ? *arguments.settingsPath
                                  : settings::JsonSettingsStore::perUserPath();
}

platform::Status checkSettings(const Arguments& arguments) {
    if (!arguments.settingsPath) {
        const auto readable =
            settings::settingsFileReadable(settings::JsonSettingsStore::perUserPath());
        return readable ? platform::Status()
                        : platform::Error{"the settings file cannot be read; --settings takes "
                                          "another one. " +
                                          readable.error().message};
    }
    const auto values = settings::readSettingsFile(*arguments.settingsPath);
    return values ? platform::Status() : platform::Error{"--settings: " + values.error().message};
}

platform::Result<SettingValues> readSettings(const Arguments& arguments, Console& console) {
    if (const auto usable = checkSettings(arguments); !usable) {
        return usable.error();
    }
    const auto stored = settings::readSettingsFile(settingsPath(arguments));
    if (!stored) {
        console.warning("The settings file cannot be used, first-run values are used. " +
                        stored.error().message);
    }
    SettingValues values = arguments.settings;
    if (stored) {
        values.insert(stored.value().begin(), stored.value().end());
    }
    return values;
}

RunSettings::RunSettings(const Arguments& arguments, Console& console)
    : m_file(settingsPath(arguments),
             [&console](const std::string& message) { console.warning(message); }),
      m_values(m_file, arguments.settings) {}

void RunSettings::writeFirstRunValues() {
    settings::key::writeFirstRunValues(m_values);
    settings::key::writeFirstWindowValues(m_values);
}

} // namespace cli
