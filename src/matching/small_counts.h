// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace matching {

/// Many counts, nearly all of them small: a byte each, and the rest of the few that need more.
class SmallCounts {
public:
    explicit SmallCounts(std::size_t counts) : m_low(counts) {}

    void increase(std::size_t place) {
        if (m_low[place] < kMostInAByte) {
            ++m_low[place];
        } else {
            ++m_rest[place];
        }
    }
    std::size_t operator[](std::size_t place) const {
        const std::size_t low = m_low[place];
        return low < kMostInAByte ? low : low + restOf(place);
    }

private:
    static constexpr std::uint8_t kMostInAByte = 255;

    std::size_t restOf(std::size_t place) const {
        const auto rest = m_rest.find(place);
        return rest == m_rest.end() ? 0 : rest->second;
    }

    std::vector<std::uint8_t> m_low;
    std::unordered_map<std::size_t, std::size_t> m_rest;
};

} // namespace matching
