// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Line feeds by vectors of 32 bytes, two at a time. 64 bytes of FASTQ hold one or two line feeds,
// at places that no branch predictor knows. So two places are always written, whether they are
// there or not, and only the count says how many are valid. Tested by line_feeds_test.cpp against
// the portable twin.
#include "reads/line_ends.h"

#include <cstring>

#include "platform/avx2.h"

namespace reads {

#if defined(__x86_64__)

namespace {

constexpr std::size_t kStep = 64;
constexpr std::size_t kWrittenAnyway = 2;

struct Found {
    std::size_t count = 0;
    /// Zero in each byte where a CR or a NUL was met.
    __m256i notOdd;
};

VEXTA_AVX2 inline std::uint64_t lineFeedBits(__m256i bytes) {
    const __m256i feeds = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('\n'));
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(feeds));
}

/// Zero in each byte that is a CR or a NUL.
VEXTA_AVX2 inline __m256i unlessOdd(__m256i bytes) {
    return _mm256_min_epu8(bytes, _mm256_xor_si256(bytes, _mm256_set1_epi8('\r')));
}

VEXTA_AVX2 inline std::size_t notePlaces(std::uint64_t bits, std::uint32_t base,
                                         std::uint32_t* places) {
    const auto count = static_cast<std::size_t>(_mm_popcnt_u64(bits));
    for (std::size_t i = 0; i < kWrittenAnyway; ++i) {
        places[i] = base + static_cast<std::uint32_t>(_tzcnt_u64(bits));
        bits = _blsr_u64(bits);
    }
    for (std::size_t i = kWrittenAnyway; i < count; ++i) {
        places[i] = base + static_cast<std::uint32_t>(_tzcnt_u64(bits));
        bits = _blsr_u64(bits);
    }
    return count;
}

/// Looks at 64 bytes.
VEXTA_AVX2 inline void look(const char* bytes, std::uint32_t base, std::uint32_t* places,
                            Found& found) {
    const void* firstHalf = bytes;
    const void* secondHalf = bytes + kStep / 2;
    const __m256i low = _mm256_loadu_si256(static_cast<const __m256i*>(firstHalf));
    const __m256i high = _mm256_loadu_si256(static_cast<const __m256i*>(secondHalf));
    found.notOdd = _mm256_min_epu8(found.notOdd, _mm256_min_epu8(unlessOdd(low), unlessOdd(high)));
    const std::uint64_t feeds = lineFeedBits(low) | lineFeedBits(high) << kStep / 2;
    found.count += notePlaces(feeds, base, places + found.count);
}

} // namespace

VEXTA_AVX2 LineFeeds findLineFeedsByAvx2(const char* text, std::size_t size, std::uint32_t base,
                                         std::uint32_t* places, std::size_t most) {
    Found found;
    found.notOdd = _mm256_set1_epi8('N');
    std::size_t at = 0;
    for (; at + kStep <= size && found.count < most; at += kStep) {
        look(text + at, base + static_cast<std::uint32_t>(at), places, found);
    }
    if (at < size && found.count < most) {
        char tail[kStep];
        std::memset(tail, 'N', kStep); // any byte that is not looked for
        std::memcpy(tail, text + at, size - at);
        look(tail, base + static_cast<std::uint32_t>(at), places, found);
    }
    const __m256i odd = _mm256_cmpeq_epi8(found.notOdd, _mm256_setzero_si256());
    return {found.count, _mm256_movemask_epi8(odd) != 0};
}

#else

LineFeeds findLineFeedsByAvx2(const char* text, std::size_t size, std::uint32_t base,
                              std::uint32_t* places, std::size_t most) {
    return findLineFeedsPortably(text, size, base, places, most);
}

#endif

} // namespace reads
