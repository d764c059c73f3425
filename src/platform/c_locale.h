// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace platform {

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

} // namespace platform
