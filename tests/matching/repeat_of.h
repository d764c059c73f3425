// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace matching {

/// `length` bases that repeat `unit`.
inline std::string repeatOf(std::string_view unit, std::size_t length) {
    std::string repeat;
    while (repeat.size() < length) {
        repeat += unit;
    }
    repeat.resize(length);
    return repeat;
}

} // namespace matching
