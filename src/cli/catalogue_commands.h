// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/outcome.h"

namespace cli {

/// Prints every mutation of the catalogue as a tab-separated table with a head line.
Outcome listCatalogue(const Arguments& arguments, const Streams& streams);
/// Prints every finding as "PATH:LINE: error: TEXT" or "PATH:LINE: warning: TEXT" and a last line
/// that counts them. Fails when there is an error.
Outcome checkCatalogue(const Arguments& arguments, const Streams& streams);

} // namespace cli
