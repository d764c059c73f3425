// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace cli {

/// "vexta 0.1.0" and the decoders of .gz that were built in, without a line feed.
std::string versionLine();

} // namespace cli
