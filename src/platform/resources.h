// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Finds a resource that ships with the application by name and type: "NAME.TYPE" in the directory
/// $VEXTA_RESOURCES if set, else in "resources" or "../share/vexta" beside the executable, or in
/// the installed or the source tree's resource directory. nullopt when there is none.
std::optional<std::string> resourcePath(std::string_view name, std::string_view type);

} // namespace platform
