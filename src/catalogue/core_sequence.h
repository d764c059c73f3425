// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "catalogue/mut_domain.h"
#include "platform/result.h"

namespace catalogue {

/// The leftmost place in `text` at which every character of `pattern` matches, or nullopt.
/// Places are 0-based. An empty pattern matches at 0; a pattern longer than the text does not
/// match.
///
/// Two characters match if they are the same byte, or if one is an upper-case IUPAC ambiguity code
/// other than N and the other an upper-case base that the code stands for. The code may be on
/// either side. Two different codes never match, N matches only N, and lower-case letters match
/// only themselves. This search places flanks; matching/core_search.h searches reads, by narrower
/// rules.
std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern);

/// Whether the text holds a byte other than A, G, C, T in either case.
bool containsWildCard(std::string_view sequence) noexcept;

/// Derives the wildcard flags and the core of a mutation from its texts: the stretch of `seq` from
/// the start of the leftmost `before10bp` to the end of the leftmost `after10bp`, both flanks
/// included. If both flanks are empty, so is the core.
///
/// Fails where no run may start with this mutation. The message is words that follow its name ("the
/// left flank ACGT is not found in its sequence"); several reasons are joined by "; ". Where the
/// core has no defined place it is left empty.
platform::Status deriveCore(Mutation& mutation);

/// Whether the core that deriveCore() left is the one that the flanks mark.
bool coreIsDefined(const Mutation& mutation) noexcept;

} // namespace catalogue
