// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace catalogue {

/// The bases that an IUPAC ambiguity code stands for; empty for every other byte.
///
/// Deliberate: N is not among the codes, so it agrees only with itself.
std::string_view basesOfCode(char code) noexcept;

/// The read bases that an ambiguity code in a core agrees with, besides the code itself; empty for
/// every byte that is none (N, too).
///
/// Deliberate: B, D, H and V stand for two bases here, not for the three of the IUPAC code.
std::string_view readBasesForCoreCode(char coreBase) noexcept;

} // namespace catalogue
