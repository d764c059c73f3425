// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace platform {

// Numbers come out the same on every machine, whatever its locale and its processor.

/// While it lives, this thread scans and prints numbers as in the C locale, whatever the process
/// uses. Under a comma-decimal locale a naive scan reads 0.001 as 0.
class ScopedCLocale {
public:
    ScopedCLocale();
    ~ScopedCLocale();
    ScopedCLocale(const ScopedCLocale&) = delete;
    ScopedCLocale& operator=(const ScopedCLocale&) = delete;

private:
    void* m_previous;
};

/// printf in the C locale.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);

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
