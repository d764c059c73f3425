// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "matching/catalogue_cores.h"

namespace matching {

inline std::string randomBases(std::mt19937& random, std::size_t length) {
    std::string bases;
    while (bases.size() < length) {
        bases += "ACGT"[random() % 4];
    }
    return bases;
}

/// Exact cores that are searched in read 1, numbered by their indexes.
inline std::vector<CatalogueCore> coresOf(const std::vector<std::string>& texts) {
    std::vector<CatalogueCore> cores;
    for (const std::string& text : texts) {
        CatalogueCore core;
        core.text = text;
        core.firstEntry = static_cast<std::uint32_t>(cores.size());
        core.isSearchedInRead1 = true;
        cores.push_back(core);
    }
    return cores;
}

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
