// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/avx2.h"

namespace platform {

bool avx2IsThere() noexcept {
#if defined(__x86_64__)
    static const bool isThere = __builtin_cpu_supports("avx2") != 0 &&
                                __builtin_cpu_supports("bmi") != 0 &&
                                __builtin_cpu_supports("popcnt") != 0;
    return isThere;
#else
    return false;
#endif
}

} // namespace platform
