// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/settings_store.h"

/// Values whose kind is said, as a literal alone could be of several.
namespace setting_values {

inline platform::SettingValue text(std::string value) {
    return value;
}

inline platform::SettingValue number(std::int64_t value) {
    return value;
}

} // namespace setting_values
