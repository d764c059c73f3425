// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/orientation.h"

#include <algorithm>

namespace matching {
namespace {

char complementOf(char base) noexcept {
    switch (base) {
    case 'A':
    case 'a':
        return 'T';
    case 'G':
    case 'g':
        return 'C';
    case 'C':
    case 'c':
        return 'G';
    case 'T':
    case 't':
        return 'A';
    default:
        return 'N';
    }
}

} // namespace

void reverseComplement(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
    std::transform(text, text + length, text, complementOf);
}

void reverseString(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
}

} // namespace matching
