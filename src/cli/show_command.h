// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/outcome.h"

namespace cli {

/// Reopens the result document that is the input and writes its exports. No settings are read or
/// stored, and no catalogue: everything that is shown stands in the document.
Outcome show(const Arguments& arguments, const Streams& streams);

} // namespace cli
