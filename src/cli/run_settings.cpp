// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Where the settings of a command come from. Values of --set lie over those of the file and never
// get into it, not even when a run repairs them. A command that runs nothing must store nothing, so
// it takes a snapshot of the values and no store.
//
// A file that cannot be read is refused, not replaced by first-run values: nobody would see that a
// run had other thresholds than the laboratory's. Tested by arguments_test.cpp (--set),
// analyze_program_test.cpp and catalogue_program_test.cpp.
#include "cli/run_settings.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "settings/settings_table.h"

namespace cli {

namespace {

std::string knownKeys() {
    std::string list;
    for (const settings::Setting& setting : settings::kSettings) {
        list += (list.empty() ? "" : ", ") + std::string(setting.key);
    }
    return list;
}

bool isKnown(std::string_view key) {
    return std::any_of(settings::kSettings.begin(), settings::kSettings.end(),
                       [key](const settings::Setting& setting) { return setting.key == key; });
}

bool isInteger(std::string_view text) {
    if (!text.empty() && text.front() == '-') {
        text.remove_prefix(1);
    }
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

platform::Result<SettingArgument> parseSetting(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        return platform::Error{"--set " + text + ": expected KEY=VALUE"};
    }
    SettingArgument result{text.substr(0, equals), text.substr(equals + 1)};
    if (!isKnown(result.key)) {
        return platform::Error{"--set " + text + ": unknown key; known are " + knownKeys()};
    }
    const std::string value = text.substr(equals + 1);
    if (value == "true" || value == "false") {
        result.value = value == "true";
    } else if (isInteger(value)) {
        std::int64_t number = 0;
        const auto [end, failure] =
            std::from_chars(value.data(), value.data() + value.size(), number);
        if (failure != std::errc()) {
            return platform::Error{"--set " + text + ": the number is out of range"};
        }
        result.value = number;
    }
    return result;
}

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
