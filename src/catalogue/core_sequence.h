// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "catalogue/mut_domain.h"

namespace catalogue {

/// Whether the text holds a byte other than A, G, C, T in either case.
bool containsWildCard(std::string_view sequence) noexcept;

/// Derives the wildcard flags and the core of a mutation whose texts and numbers stand: the stretch
/// of `seq` from the start of the leftmost `before10bp` to the end of the leftmost `after10bp`,
/// both flanks included. Both flanks empty give an empty core.
///
/// Returns why no run may start with this mutation, in words that follow its name ("the left flank
/// ACGT is not found in its sequence"); several reasons are joined by "; ". Empty when there is
/// none. Where the core has no defined place it is left empty.
std::string deriveCore(Mutation& mutation);

/// Whether the core that deriveCore() left is the one that the flanks mark.
bool coreIsDefined(const Mutation& mutation) noexcept;

} // namespace catalogue
