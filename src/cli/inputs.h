// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "document/input_discovery.h"
#include "platform/result.h"

namespace cli {

/// The absolute path without "." and "..": the directory of an input then has a name.
std::string normalPath(const std::string& path);

/// Refuses a FASTQ file that is missing, unreadable or no regular file.
platform::Status checkReadsFile(const std::string& path);

/// The definition file that ships, as messages name it.
inline constexpr const char* kShippedDefinition = "ReferenceNucleotideSequence.txt";

/// The definition file of a command: the one that an option or variable names, which must open, or
/// the one that ships; nullopt when that one is missing.
platform::Result<std::optional<std::string>> chooseDefinitionFile(const Arguments& arguments);

/// Why findMate() found no pair: the names that it looked for, or what is wrong with this one.
std::string whyUnpaired(const std::string& path, const document::ReadPairFiles& files);

/// What to say about a directory without a pair, as lines: the pattern that names must have, and
/// the names that nearly have it. `anyName` tells of the wider pattern.
std::vector<std::string> whyNoPatients(const std::string& directory,
                                       const std::vector<std::string>& names, bool anyName = false);

} // namespace cli
