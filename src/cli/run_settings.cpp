// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/run_settings.h"

#include "platform/setting_keys.h"

namespace cli {

RunSettings::RunSettings(const Arguments& arguments, Console& console)
    : m_path(arguments.settingsPath ? *arguments.settingsPath
                                    : platform::JsonSettingsStore::perUserPath()),
      m_file(m_path, [&console](const std::string& message) { console.warning(message); }),
      m_values(m_file, arguments.settings) {}

void RunSettings::writeFirstRunValues() {
    platform::setting::writeFirstRunValues(m_values);
    platform::setting::writeFirstWindowValues(m_values);
}

} // namespace cli
