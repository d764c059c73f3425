// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/flank_search.h"

#include <algorithm>
#include <array>
#include <bitset>

#include "catalogue/iupac.h"

namespace catalogue {
namespace {

bool standsFor(char code, char base) {
    return basesOfCode(code).find(base) != std::string_view::npos;
}

bool charactersMatch(char a, char b) {
    return a == b || standsFor(a, b) || standsFor(b, a);
}

/// By one byte, then by the other.
using Matches = std::array<std::bitset<256>, 256>;

Matches tableOfMatches() {
    Matches matches;
    for (std::size_t a = 0; a < 256; ++a) {
        for (std::size_t b = 0; b < 256; ++b) {
            matches[a][b] = charactersMatch(static_cast<char>(a), static_cast<char>(b));
        }
    }
    return matches;
}

} // namespace

std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern) {
    // Looked up: asking the rules for each letter takes most of the time that a large catalogue
    // needs to load.
    static const Matches matches = tableOfMatches();
    const auto place = std::search(
        text.begin(), text.end(), pattern.begin(), pattern.end(), [](char a, char b) -> bool {
            return matches[static_cast<unsigned char>(a)][static_cast<unsigned char>(b)];
        });
    // An empty pattern is found at the beginning, also of an empty text.
    if (place == text.end() && !pattern.empty()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(place - text.begin());
}

} // namespace catalogue
