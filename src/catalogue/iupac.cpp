// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/iupac.h"

namespace catalogue {

std::string_view basesOfCode(char code) noexcept {
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

std::string_view readBasesForCoreCode(char coreBase) noexcept {
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
