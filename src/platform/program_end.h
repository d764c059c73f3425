// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace platform {

/// Ends the program now, whatever its threads are doing, and leaves nothing half done behind:
/// children are ended with all that they started, unfinished files are removed, and the process
/// exits with that status, without destructors. Takes a second at most where the file system
/// answers. For a thread of its own, never for a signal handler. Of several callers one does it.
[[noreturn]] void endAtOnce(int status);

} // namespace platform
