// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace cli {

/// How a command ended. The numbers are the program's exit status, which scripts rely on: never
/// change them.
enum class Outcome {
    success = 0,       ///< every patient analysed, whatever was found
    failed = 1,        ///< a run failed, a catalogue has errors, or an output could not be written
    unusable = 2,      ///< unusable arguments or input; nothing was written
    hungUp = 129,      ///< ended by SIGHUP; output files were written all or none
    interrupted = 130, ///< stopped by SIGINT; finished patients were written
    terminated = 143,  ///< ended by SIGTERM; output files were written all or none
};

} // namespace cli
