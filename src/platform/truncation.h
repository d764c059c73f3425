// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

namespace platform {

/// The number truncated toward zero. What no 64-bit integer holds saturates; NaN is 0.
inline std::int64_t truncated(double value) noexcept {
    constexpr double kLimit = 9223372036854775808.0; // 2^63
    if (value >= kLimit) {
        return std::numeric_limits<std::int64_t>::max();
    }
    if (value < -kLimit) {
        return std::numeric_limits<std::int64_t>::min();
    }
    return value == value ? static_cast<std::int64_t>(value) : 0;
}

} // namespace platform
