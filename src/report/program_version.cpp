// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The one source that knows the commit, so that a new commit compiles nothing else anew.
#include "report/program_version.h"

namespace report {

const char* programVersion() {
    return VEXTA_VERSION;
}

const char* programCommit() {
    return VEXTA_COMMIT;
}

} // namespace report
