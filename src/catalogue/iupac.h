// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace catalogue {

/// The bases that an IUPAC ambiguity code stands for; empty for every other byte.
///
/// Deliberate: N is not among the codes, so it agrees only with itself.
constexpr std::string_view basesOfCode(char code) noexcept {
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

/// The read bases that an ambiguity code in a core accepts, besides the code itself; empty for
/// every other byte, N included.
///
/// Deliberate: B, D, H and V stand for two bases here, not for the three of the IUPAC code.
constexpr std::string_view readBasesForCoreCode(char coreBase) noexcept {
    switch (coreBase) {
    case 'B':
    case 'S':
        return "CG";
    case 'D':
    case 'R':
        return "AG";
    case 'H':
    case 'M':
    case 'V':
        return "AC";
    case 'K':
        return "GT";
    case 'W':
        return "AT";
    case 'Y':
        return "CT";
    default:
        return {};
    }
}

} // namespace catalogue
