// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/flank_search.h"

#include <algorithm>

namespace catalogue {
namespace {

/// The bases that an ambiguity code stands for; none for every other byte.
/// Deliberate: N is not among the codes, so it matches only itself.
std::string_view basesOf(char code) {
    switch (code) {
    case 'B':
        return "CGT";
    case 'D':
        return "AGT";
    case 'H':
        return "ACT";
    case 'K':
        return "GT";
    case 'M':
        return "AC";
    case 'R':
        return "AG";
    case 'S':
        return "CG";
    case 'V':
        return "ACG";
    case 'W':
        return "AT";
    case 'Y':
        return "CT";
    default:
        return {};
    }
}

bool standsFor(char code, char base) {
    return basesOf(code).find(base) != std::string_view::npos;
}

bool charactersMatch(char a, char b) {
    return a == b || standsFor(a, b) || standsFor(b, a);
}

} // namespace

std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern) {
    const auto place =
        std::search(text.begin(), text.end(), pattern.begin(), pattern.end(), charactersMatch);
    // An empty pattern is found at the beginning, also of an empty text.
    if (place == text.end() && !pattern.empty()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(place - text.begin());
}

} // namespace catalogue
