// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Reverse complement by table, and sixteen bytes at a time where the processor has AVX2. Both give
// the same for every byte: reverse_complement_test.cpp compares them at every position of texts of
// many lengths. The unassigned pairs need it for every pair that no mutation claims, so it is hot.
#include "matching/reverse_complement.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "platform/avx2.h"

namespace matching {
namespace {

constexpr std::array<char, 256> kComplements = [] {
    std::array<char, 256> complements{};
    complements.fill('N');
    for (const char* pair : {"AT", "TA", "CG", "GC"}) {
        const auto base = static_cast<unsigned char>(pair[0]);
        complements[base] = pair[1];
        complements[base | 0x20] = pair[1]; // its lower case
    }
    return complements;
}();

void reverseComplementPortably(const char* from, std::size_t size, char* to) noexcept {
    std::transform(std::make_reverse_iterator(from + size), std::make_reverse_iterator(from), to,
                   complement);
}

#if defined(__x86_64__)

constexpr std::size_t kVectorSize = sizeof(__m128i);

/// Sixteen bytes. A, C, G and T differ in their lower four bits. So these bits look up both the
/// base that a byte has to be and its complement; a byte that is another one becomes N.
VEXTA_AVX2 inline void reverseComplementBlock(const char* from, char* to) noexcept {
    const __m128i backwards = _mm_setr_epi8(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
    const __m128i base =
        _mm_setr_epi8(-1, 'A', -1, 'C', 'T', -1, -1, 'G', -1, -1, -1, -1, -1, -1, -1, -1);
    const __m128i complements = _mm_setr_epi8('N', 'T', 'N', 'G', 'A', 'N', 'N', 'C', 'N', 'N', 'N',
                                              'N', 'N', 'N', 'N', 'N');
    const __m128i bytes =
        _mm_shuffle_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)), backwards);
    const __m128i isBase =
        _mm_cmpeq_epi8(_mm_and_si128(bytes, _mm_set1_epi8(-0x21)), _mm_shuffle_epi8(base, bytes));
    const __m128i result =
        _mm_blendv_epi8(_mm_set1_epi8('N'), _mm_shuffle_epi8(complements, bytes), isBase);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), result);
}

/// The last block may overlap the one before. REQUIRES: size >= kVectorSize.
VEXTA_AVX2 void reverseComplementBlocks(const char* from, std::size_t size, char* to) noexcept {
    for (std::size_t done = 0; done + kVectorSize < size; done += kVectorSize) {
        reverseComplementBlock(from + size - kVectorSize - done, to + done);
    }
    reverseComplementBlock(from, to + size - kVectorSize);
}

/// complement() of each byte, the last one first. The texts do not overlap.
void writeReverseComplement(const char* from, std::size_t size, char* to) noexcept {
    if (platform::avx2IsThere() && size >= kVectorSize) {
        reverseComplementBlocks(from, size, to);
    } else {
        reverseComplementPortably(from, size, to);
    }
}

#else

void writeReverseComplement(const char* from, std::size_t size, char* to) noexcept {
    reverseComplementPortably(from, size, to);
}

#endif

} // namespace

char complement(char base) noexcept {
    return kComplements[static_cast<unsigned char>(base)];
}

void reverseComplement(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
    std::transform(text, text + length, text, complement);
}

void reverseString(char* text, std::size_t length) noexcept {
    std::reverse(text, text + length);
}

void appendReverseComplement(std::string& to, std::string_view text) {
    const std::size_t before = to.size();
    to.resize(before + text.size());
    writeReverseComplement(text.data(), text.size(), to.data() + before);
}

reads::ReadPair Read2ReverseComplementer::onStrandOfRead1(reads::ReadPair pair) {
    m_read2.clear();
    appendReverseComplement(m_read2, pair.read2);
    m_quality2.assign(pair.quality2);
    reverseString(m_quality2.data(), m_quality2.size());
    pair.read2 = m_read2;
    pair.quality2 = m_quality2;
    return pair;
}

} // namespace matching
