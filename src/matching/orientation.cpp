// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/orientation.h"

#include <algorithm>
#include <array>

namespace matching {

namespace {

constexpr std::array<char, 256> kComplements = [] {
    std::array<char, 256> complements{};
    for (char& complement : complements) {
        complement = 'N';
    }
    for (const char* pair : {"AT", "TA", "CG", "GC"}) {
        const auto base = static_cast<unsigned char>(pair[0]);
        complements[base] = pair[1];
        complements[base | 0x20] = pair[1]; // its lower case
    }
    return complements;
}();

} // namespace

char complementOf(char base) noexcept {
    return kComplements[static_cast<unsigned char>(base)];
}

void reverseComplement(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
    std::transform(text, text + length, text, complementOf);
}

void reverseString(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
}

void appendReverseComplement(std::string& to, std::string_view text) {
    const std::size_t before = to.size();
    to.resize(before + text.size());
    std::transform(text.rbegin(), text.rend(), to.data() + before, complementOf);
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
