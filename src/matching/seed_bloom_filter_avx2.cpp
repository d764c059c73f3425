// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The Bloom filter for eight seeds at a time: their codes, hashes, words and bits in the eight
// lanes of AVX2 vectors, one gather for all words (after Polychroniou and Ross, "Vectorized Bloom
// filters for advanced SIMD processors", DaMoN 2014). The bits of the lanes that pass choose a row
// of a table, which moves their numbers to the front: compaction without a branch. With 100 entries
// this and the other steps without a branch take a fifth off the whole search
// (bench/what-was-tried.md). Tested by seed_bloom_filter_test.cpp against the portable twin.
#include "matching/seed_bloom_filter.h"

#include <array>

#include "platform/avx2.h"

namespace matching {

#if defined(__x86_64__)

namespace {

constexpr std::size_t kLanes = 8;

/// The codes of each four bases of two seeds. A base's code is the second and third bit of its
/// byte. The multiplications move those of four bases side by side into the second byte of a 32-bit
/// lane.
VEXTA_AVX2 inline __m256i codesOfFourBases(const ReadSeed& first, const ReadSeed& second) noexcept {
    const __m256i both =
        _mm256_set_m128i(_mm_loadu_si128(reinterpret_cast<const __m128i*>(second.bases)),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(first.bases)));
    const __m256i codes = _mm256_and_si256(both, _mm256_set1_epi8(0x06));
    const __m256i twos = _mm256_maddubs_epi16(codes, _mm256_set1_epi16(1 | 4 << 8));
    return _mm256_madd_epi16(twos, _mm256_set1_epi32(1 << 7 | 16 << 7 << 16));
}

/// Joins the four lanes of each half into its lane `number`.
template <int number>
VEXTA_AVX2 inline __m256i inLane(__m256i codesOfFourBases) noexcept {
    constexpr char kNone = -1;
    constexpr auto kByte = [](int at) {
        return static_cast<char>(at / 4 == number ? at % 4 * 4 + 1 : kNone);
    };
    const __m128i bytes = _mm_setr_epi8(kByte(0), kByte(1), kByte(2), kByte(3), kByte(4), kByte(5),
                                        kByte(6), kByte(7), kByte(8), kByte(9), kByte(10),
                                        kByte(11), kByte(12), kByte(13), kByte(14), kByte(15));
    return _mm256_shuffle_epi8(codesOfFourBases, _mm256_broadcastsi128_si256(bytes));
}

/// seedCode() of eight seeds for the largest k.
VEXTA_AVX2 inline __m256i seedCodes(const ReadSeed* seeds) noexcept {
    const __m256i codes04 = inLane<0>(codesOfFourBases(seeds[0], seeds[4]));
    const __m256i codes15 = inLane<1>(codesOfFourBases(seeds[1], seeds[5]));
    const __m256i codes26 = inLane<2>(codesOfFourBases(seeds[2], seeds[6]));
    const __m256i codes37 = inLane<3>(codesOfFourBases(seeds[3], seeds[7]));
    return _mm256_or_si256(_mm256_or_si256(codes04, codes15), _mm256_or_si256(codes26, codes37));
}

VEXTA_AVX2 inline __m256i hashesOfSeedCodes(__m256i codes) noexcept {
    const __m256i products =
        _mm256_mullo_epi32(codes, _mm256_set1_epi32(static_cast<int>(kHashFactor)));
    return _mm256_xor_si256(products, _mm256_srli_epi32(products, kHashShift));
}

/// For each set of lanes, the numbers of its lanes in order.
using LaneTable = std::array<std::array<std::uint8_t, kLanes>, 1 << kLanes>;
constexpr LaneTable laneTable() noexcept {
    LaneTable numbers{};
    for (std::size_t set = 0; set < numbers.size(); ++set) {
        std::size_t count = 0;
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            numbers[set][count] = static_cast<std::uint8_t>(lane);
            count += set >> lane & 1;
            // The numbers behind them do not matter.
            count = count < kLanes ? count : kLanes - 1;
        }
    }
    return numbers;
}
constexpr LaneTable kLaneTable = laneTable();

} // namespace

VEXTA_AVX2 std::uint32_t* SeedBloomFilter::selectByAvx2(std::span<const ReadSeed> seeds,
                                                        std::uint32_t* to) const noexcept {
    const __m256i ownBits = _mm256_set1_epi32(static_cast<int>(seedCodeMask(m_k)));
    const __m256i bitInWord = _mm256_set1_epi32(31);
    const __m128i shift = _mm_cvtsi32_si128(static_cast<int>(m_shift));
    const int* const words = reinterpret_cast<const int*>(m_words.data());
    std::size_t next = 0;
    for (; next + kLanes <= seeds.size(); next += kLanes) {
        const __m256i codes = _mm256_and_si256(seedCodes(&seeds[next]), ownBits);
        const __m256i hashes = hashesOfSeedCodes(codes);
        const __m256i word = _mm256_i32gather_epi32(words, _mm256_srl_epi32(hashes, shift), 4);
        const __m256i bit1 = _mm256_and_si256(hashes, bitInWord);
        const __m256i bit2 = _mm256_and_si256(_mm256_srli_epi32(hashes, 5), bitInWord);
        const __m256i both =
            _mm256_and_si256(_mm256_srlv_epi32(word, bit1), _mm256_srlv_epi32(word, bit2));
        const auto set = static_cast<unsigned>(
            _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_slli_epi32(both, 31))));
        // Eight indexes fit: no more of them were written than seeds came before.
        const __m256i lanes = _mm256_cvtepu8_epi32(
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(kLaneTable[set].data())));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to),
                            _mm256_add_epi32(lanes, _mm256_set1_epi32(static_cast<int>(next))));
        to += _mm_popcnt_u32(set);
    }
    return selectFrom(next, seeds, to);
}

#else

std::uint32_t* SeedBloomFilter::selectByAvx2(std::span<const ReadSeed> seeds,
                                             std::uint32_t* to) const noexcept {
    return selectPortably(seeds, to);
}

#endif

} // namespace matching
