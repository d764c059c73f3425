// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace catalogue {

/// The leftmost place in `text` at which every character of `pattern` matches, or nullopt.
/// Places are 0-based. An empty pattern matches at 0; a pattern longer than the text does not
/// match.
///
/// Characters match when they are the same byte, or when one is an upper-case IUPAC ambiguity code
/// other than N and the other a plain upper-case base that the code stands for; the code may stand
/// on either side. Two different codes never match each other, N matches only N, and lower-case
/// letters match only themselves. Places flanks while a catalogue is loaded; reads are searched by
/// matching/core_search.h, whose rules are narrower.
std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern);

} // namespace catalogue
