// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Some loops are written twice: portably, and with VEXTA_AVX2 for processors that have AVX2 and
// what came with it. Which one runs is decided at run time, so one program suits all of them.
#if defined(__x86_64__)
#include <immintrin.h>
#define VEXTA_AVX2 [[gnu::target("avx2,bmi,popcnt")]]
#endif

namespace platform {

/// Whether this processor runs functions marked VEXTA_AVX2.
inline bool avx2IsThere() noexcept {
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
