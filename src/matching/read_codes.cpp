// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/read_codes.h"

#include <cstddef>

#include "platform/avx2.h"

namespace matching {

bool mayHoldReadCodePortably(std::string_view read) noexcept {
    unsigned char odd = 0;
    for (const char letter : read) {
        const auto byte = static_cast<unsigned char>(letter);
        // A, C and G, and E, which is no code.
        const bool usual = (byte & 0xF9) == 0x41 || byte == 'T' || byte == 'N';
        odd = static_cast<unsigned char>(odd | (usual ? 0 : 1));
    }
    return odd != 0;
}

#if defined(__x86_64__)

namespace {

/// All zero where the 32 letters are usual ones. Those differ in their lower four bits, which
/// therefore say which letter a byte has to be.
VEXTA_AVX2 __m256i differences(const char* letters) noexcept {
    const __m256i usual = _mm256_broadcastsi128_si256(
        _mm_setr_epi8(-1, 'A', -1, 'C', 'T', -1, -1, 'G', -1, -1, -1, -1, -1, -1, 'N', -1));
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(letters));
    return _mm256_xor_si256(bytes, _mm256_shuffle_epi8(usual, bytes));
}

} // namespace

VEXTA_AVX2 bool mayHoldReadCodeByAvx2(std::string_view read) noexcept {
    constexpr std::size_t kWidth = sizeof(__m256i);
    if (read.size() < kWidth) {
        return mayHoldReadCodePortably(read);
    }
    __m256i odd = differences(read.data() + read.size() - kWidth);
    for (std::size_t place = 0; place + kWidth <= read.size(); place += kWidth) {
        odd = _mm256_or_si256(odd, differences(read.data() + place));
    }
    return _mm256_testz_si256(odd, odd) == 0;
}

#else

bool mayHoldReadCodeByAvx2(std::string_view read) noexcept {
    return mayHoldReadCodePortably(read);
}

#endif

bool mayHoldReadCode(std::string_view read) noexcept {
    return platform::avx2IsThere() ? mayHoldReadCodeByAvx2(read) : mayHoldReadCodePortably(read);
}

} // namespace matching
