// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace fuzzing {

/// Ends the fuzzer with a find where `holds` is false. `what` says what is wrong, `detail` with
/// what.
inline void require(bool holds, const char* what, const std::string& detail = {}) {
    if (!holds) {
        std::fprintf(stderr, "%s: %s\n", what, detail.c_str());
        std::abort();
    }
}

} // namespace fuzzing
