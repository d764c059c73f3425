// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "settings/settings_store.h"

/// Values whose kind is said, as a literal alone could be of several.
namespace setting_values {

inline settings::SettingValue text(std::string value) {
    return value;
}

inline settings::SettingValue number(std::int64_t value) {
    return value;
}

} // namespace setting_values
