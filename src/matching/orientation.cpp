// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/orientation.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/avx2.h"

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

void turnLetters(const char* from, std::size_t size, char* to) noexcept {
    std::transform(std::make_reverse_iterator(from + size), std::make_reverse_iterator(from), to,
                   complementOf);
}

#if defined(__x86_64__)

constexpr std::size_t kVectorSize = sizeof(__m128i);

/// Sixteen letters. Bases differ in their lower four bits, which therefore say which base a letter
/// has to be, and what it becomes.
VEXTA_AVX2 inline void turnBlock(const char* from, char* to) noexcept {
    const __m128i backwards = _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
    const __m128i base =
        _mm_setr_epi8(-1, 'A', -1, 'C', 'T', -1, -1, 'G', -1, -1, -1, -1, -1, -1, -1, -1);
    const __m128i complement = _mm_setr_epi8('N', 'T', 'N', 'G', 'A', 'N', 'N', 'C', 'N', 'N', 'N',
                                             'N', 'N', 'N', 'N', 'N');
    const __m128i letters =
        _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)), backwards);
    const __m128i isBase = _mm_cmpeq_epi8(_mm_and_si128(letters, _mm_set1_epi8(-0x21)),
                                          _mm_shuffle_epi8(base, letters));
    const __m128i turned =
        _mm_blendv_epi8(_mm_set1_epi8('N'), _mm_shuffle_epi8(complement, letters), isBase);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), turned);
}

/// The last block may overlap the one before. REQUIRES: size >= kVectorSize.
VEXTA_AVX2 void turnBlocks(const char* from, std::size_t size, char* to) noexcept {
    for (std::size_t done = 0; done + kVectorSize < size; done += kVectorSize) {
        turnBlock(from + size - kVectorSize - done, to + done);
    }
    turnBlock(from, to + size - kVectorSize);
}

/// The same as complementOf() of each letter from behind. The texts do not overlap.
void turn(const char* from, std::size_t size, char* to) noexcept {
    if (platform::avx2IsThere() && size >= kVectorSize) {
        turnBlocks(from, size, to);
    } else {
        turnLetters(from, size, to);
    }
}

#else

void turn(const char* from, std::size_t size, char* to) noexcept {
    turnLetters(from, size, to);
}

#endif

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
    turn(text.data(), text.size(), to.data() + before);
}

ReadPair Read2Turner::turned(ReadPair pair) {
    m_read2.clear();
    appendReverseComplement(m_read2, pair.read2);
    m_quality2.assign(pair.quality2);
    reverseString(m_quality2.data(), m_quality2.size());
    pair.read2 = m_read2;
    pair.quality2 = m_quality2;
    return pair;
}

} // namespace matching
