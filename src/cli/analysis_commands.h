// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/outcome.h"

namespace cli {

/// Analyses the pair of which the input is either file.
Outcome analyze(const Arguments& arguments, const Streams& streams);
/// Analyses every complete pair in the input directory, one after the other.
Outcome analyzeAll(const Arguments& arguments, const Streams& streams);

} // namespace cli
