// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The desktop's own preferences. They are kept with the windows' state, apart from the settings
/// that the command line shares.
namespace ui {

/// Whether runs started from now on read the inputs where they lie, plain or .gz, and write nothing
/// beside them. False until the user asks for it.
bool readsInputsInPlace();
void setReadsInputsInPlace(bool inPlace);

} // namespace ui
