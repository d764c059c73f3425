// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace cli {

/// Makes what a caller may have left undone harmless: a standard stream that was closed is held by
/// a descriptor on which every use fails, so that no file of ours can take its number; and a reader
/// of standard output that went away is an error of that output, not the silent end of the program.
void setUpProcess();

} // namespace cli
