// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/json_settings_store.h"
#include "platform/settings_store.h"

namespace cli {

/// The settings of a command: the per-user file or that of --settings, under the values of --set.
class RunSettings {
public:
    RunSettings(const Arguments& arguments, Console& console);

    platform::SettingsStore& store() { return m_values; }
    const platform::SettingsStore& store() const { return m_values; }
    /// The file behind it.
    const std::string& path() const { return m_path; }

    /// Stores what a first start with a document window stores.
    void writeFirstRunValues();

private:
    std::string m_path;
    platform::JsonSettingsStore m_file;
    platform::OverlaySettingsStore m_values;
};

} // namespace cli
