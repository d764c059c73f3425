// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "platform/result.h"

namespace cli {

/// The definition file that ships, as messages name it.
inline constexpr const char* kShippedDefinition = "ReferenceNucleotideSequence.txt";

/// The definition file of a command: that of --catalogue, which must open, or the one that ships;
/// nullopt when that one is missing.
platform::Result<std::optional<std::string>> chooseDefinitionFile(const Arguments& arguments);

} // namespace cli
