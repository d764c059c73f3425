// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/orientation.h"

#include <algorithm>

namespace matching {

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

void reverseComplement(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
    std::transform(text, text + length, text, complementOf);
}

void reverseString(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
}

ReadPair Read2Turner::turned(ReadPair pair) {
    m_read2.assign(pair.read2);
    reverseComplement(m_read2.data(), m_read2.size());
    m_quality2.assign(pair.quality2);
    reverseString(m_quality2.data(), m_quality2.size());
    pair.read2 = m_read2;
    pair.quality2 = m_quality2;
    return pair;
}

} // namespace matching
