// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/flank_search.h"

#include <algorithm>
#include <array>

#include "catalogue/iupac.h"

namespace catalogue {
namespace {

/// By one byte, then by the other.
using Matches = std::array<std::array<bool, 256>, 256>;

Matches tableOfMatches() {
    Matches matches{};
    for (std::size_t character = 0; character < matches.size(); ++character) {
        matches[character][character] = true;
        for (const char base : basesOfCode(static_cast<char>(character))) {
            const auto baseNumber = static_cast<unsigned char>(base);
            matches[character][baseNumber] = true;
            matches[baseNumber][character] = true;
        }
    }
    return matches;
}

} // namespace

std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern) {
    // Looked up: asking the rules for each letter takes most of the time that a large catalogue
    // needs to load.
    static const Matches matches = tableOfMatches();
    const auto place =
        std::search(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char a, char b) {
            return matches[static_cast<unsigned char>(a)][static_cast<unsigned char>(b)];
        });
    // An empty pattern is found at the beginning, also of an empty text.
    if (place == text.end() && !pattern.empty()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(place - text.begin());
}

} // namespace catalogue
