// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/finding.h"

namespace cli {

/// Findings with errors among them.
std::size_t errorCount(const std::vector<catalogue::Finding>& findings);

/// A line for each finding, "PATH:LINE: error: TEXT" or "... warning: ...", and a last one that
/// counts them. With `explain`, two indented lines below each finding say what happens and what to
/// do.
std::string findingsAsText(const std::string& path, const std::vector<catalogue::Finding>& findings,
                           bool explain);

/// The findings as a JSON array, one per line. The keys of each are rule, severity, file, line
/// (null for the file as a whole), message, explanation and advice; scripts rely on them.
std::string findingsAsJson(const std::string& path,
                           const std::vector<catalogue::Finding>& findings);

} // namespace cli
