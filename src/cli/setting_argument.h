// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/result.h"
#include "settings/settings_store.h"

namespace cli {

/// A setting as given by --set.
struct Setting {
    std::string key;
    settings::SettingValue value;
};

/// Reads KEY=VALUE: "true" and "false" are booleans, digits with an optional "-" an integer,
/// everything else a text. A key that no rule reads is refused, because a slip in its spelling
/// would let a run go on with another threshold than the one asked for.
platform::Result<Setting> parseSetting(const std::string& text);

} // namespace cli
