// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Reverse-complementing a core once is cheaper than reverse-complementing every read 2. An exact or
// wildcard core is found in read 2 exactly where its reverse complement is found in the read as it
// is in the file, seen from the other end.
//
// Which bytes agree with a core's base is not written down a second time. The table asks the rules
// (core_search.h) about every byte of a read and every byte of a core, so it cannot differ from
// them. Tested by oriented_core_test.cpp.
#include "matching/oriented_core.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "matching/core_search.h"
#include "matching/reverse_complement.h"
#include "platform/avx2.h"

namespace matching {
namespace {

/// The bytes that agree, by byte of the core.
using Choices = std::array<std::string, 256>;

bool agrees(char readByte, char coreBase, bool wildCard, Mate mate) {
    const char base = mate == Mate::read2 ? complement(readByte) : readByte;
    return wildCard ? baseAgrees(base, coreBase) : base == coreBase;
}

Choices choicesOf(bool wildCard, Mate mate) {
    const bool withoutCodes = wildCard && mate == Mate::read1;
    Choices choices;
    for (std::size_t core = 0; core < 256; ++core) {
        std::string& chosen = choices[core];
        for (int byte = 0; byte < 256; ++byte) {
            const char read = static_cast<char>(byte);
            const char compared = static_cast<char>(mate == Mate::read2 ? byte & 0xDF : byte);
            const bool skip =
                withoutCodes && kAmbiguityCodesOfReads.find(read) != std::string_view::npos;
            if (!skip && chosen.find(compared) == std::string::npos &&
                agrees(read, static_cast<char>(core), wildCard, mate)) {
                chosen += compared;
            }
        }
    }
    return choices;
}

} // namespace

std::string_view bytesAgreeingWith(char coreBase, bool wildCard, Mate mate) {
    static const Choices tables[] = {choicesOf(false, Mate::read1), choicesOf(true, Mate::read1),
                                     choicesOf(false, Mate::read2), choicesOf(true, Mate::read2)};
    const std::size_t table = (mate == Mate::read2 ? 2u : 0u) + (wildCard ? 1u : 0u);
    return tables[table][static_cast<unsigned char>(coreBase)];
}

OrientedCore::OrientedCore(std::string_view core, bool wildCard, Mate mate) : m_size(core.size()) {
    m_bases.reserve(core.size() + kReadableBeyond);
    for (const char base : core) {
        const std::string_view choices = bytesAgreeingWith(base, wildCard, mate);
        m_fewestChoices = std::min(m_fewestChoices, choices.size());
        m_mostChoices = std::max(m_mostChoices, choices.size());
        m_bases += choices.substr(0, 1);
    }
    if (mate == Mate::read2) {
        std::reverse(m_bases.begin(), m_bases.end());
    }
    m_bases.resize(core.size() + kReadableBeyond);
    if (!isUnambiguous()) {
        keepChoices(core, wildCard, mate);
    }
}

void OrientedCore::keepChoices(std::string_view core, bool wildCard, Mate mate) {
    m_choices.reserve(core.size());
    for (const char base : core) {
        m_choices.push_back(bytesAgreeingWith(base, wildCard, mate));
    }
    if (mate == Mate::read2) {
        std::reverse(m_choices.begin(), m_choices.end());
    }
}

bool mayHoldAmbiguityCodePortably(std::string_view read) noexcept {
    unsigned char odd = 0;
    for (const char base : read) {
        const auto byte = static_cast<unsigned char>(base);
        // A, C and G, and E, which is no code.
        const bool usual = (byte & 0xF9) == 0x41 || byte == 'T' || byte == 'N';
        odd = static_cast<unsigned char>(odd | (usual ? 0 : 1));
    }
    return odd != 0;
}

#if defined(__x86_64__)

namespace {

/// Zero where each of the 32 bytes is A, C, G, T or N. These differ in their lower four bits, which
/// therefore look up the byte to compare with.
VEXTA_AVX2 __m256i differences(const char* bases) noexcept {
    const __m256i usual = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(-1, 'A', -1, 'C', 'T', -1, -1, 'G', -1, -1, -1, -1, -1, -1, 'N', -1));
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bases));
    return _mm256_xor_si256(bytes, _mm256_shuffle_epi8(usual, bytes));
}

} // namespace

VEXTA_AVX2 bool mayHoldAmbiguityCodeByAvx2(std::string_view read) noexcept {
    constexpr std::size_t kWidth = sizeof(__m256i);
    if (read.size() < kWidth) {
        return mayHoldAmbiguityCodePortably(read);
    }
    __m256i odd = differences(read.data() + read.size() - kWidth);
    for (std::size_t at = 0; at + kWidth <= read.size(); at += kWidth) {
        odd = _mm256_or_si256(odd, differences(read.data() + at));
    }
    return _mm256_testz_si256(odd, odd) == 0;
}

#else

bool mayHoldAmbiguityCodeByAvx2(std::string_view read) noexcept {
    return mayHoldAmbiguityCodePortably(read);
}

#endif

bool mayHoldAmbiguityCode(std::string_view read) noexcept {
    return platform::avx2IsThere() ? mayHoldAmbiguityCodeByAvx2(read)
                                   : mayHoldAmbiguityCodePortably(read);
}

} // namespace matching
