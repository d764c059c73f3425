// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "document/input_discovery.h"
#include "platform/result.h"

namespace cli {

/// The absolute path without "." and "..", so that the directory of an input has a name.
std::string normalPath(const std::string& path);

/// Refuses a FASTQ file that is missing, unreadable or no regular file.
platform::Status checkReadsFile(const std::string& path);

/// Why findMate() found no pair: the names that were looked for, or what is wrong with this one.
std::string whyUnpaired(const std::string& path, const document::ReadPairFiles& files);

/// What to say about a directory without a pair: the pattern that names must have, and those that
/// nearly have it. Lines.
std::vector<std::string> whyNoPatients(const std::string& directory,
                                       const std::vector<std::string>& names);

} // namespace cli
