// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace report {

/// "0.1.0".
const char* programVersion();
/// The commit from which the program was built, as its first 12 digits, with "+" behind them where
/// sources were changed; "unknown" where it was not built in a checkout.
const char* programCommit();

} // namespace report
