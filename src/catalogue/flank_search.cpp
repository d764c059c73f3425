// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/flank_search.h"

#include <algorithm>

#include "catalogue/iupac.h"

namespace catalogue {
namespace {

bool standsFor(char code, char base) {
    return basesOfCode(code).find(base) != std::string_view::npos;
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
