// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/core_store.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "matching/core_search.h"
#include "matching/eight_letters.h"
#include "matching/record_text.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

/// The letters of cores that are not plain text, one bit each.
constexpr std::string_view kCoreLetters = "ACGTNBDHKMRSVWYacgtnbdhkmrsvwy";
static_assert(kCoreLetters.size() <= 32);

std::uint32_t bitOf(char coreLetter) noexcept {
    const std::size_t number = kCoreLetters.find(coreLetter);
    return number != std::string_view::npos ? std::uint32_t{1} << number : 0;
}

std::uint32_t bitsAgreeingWith(char readLetter) noexcept {
    std::uint32_t bits = 0;
    for (const char coreLetter : kCoreLetters) {
        bits |= baseAgrees(readLetter, coreLetter) ? bitOf(coreLetter) : 0;
    }
    return bits;
}

LetterSets letterSetsOf(Mate mate) noexcept {
    LetterSets sets{};
    for (std::size_t byte = 0; byte < sets.size(); ++byte) {
        const char letter = static_cast<char>(byte);
        sets[byte] = bitsAgreeingWith(mate == Mate::read2 ? complement(letter) : letter);
    }
    return sets;
}

/// Letters that are compared at once, and can be read behind each core.
constexpr std::size_t kBlock = 64;
static_assert(kBlock <= RecordText::kReadableBeyond);
constexpr std::size_t kBlockWords = kBlock / sizeof(std::uint64_t);

/// Whether the first `length` letters, 8 to 64, of two blocks agree in the bits that count. It is
/// as often so as not, for cores of any length: hence there is no branch, where vectors allow it.
bool blockAgrees(const char* read, const char* letters, std::size_t length,
                 std::uint64_t comparedBits) noexcept {
#if defined(__SSE2__)
    const __m128i counting = _mm_set1_epi64x(static_cast<long long>(comparedBits));
    std::uint64_t same = 0;
    for (std::size_t i = 0; i < kBlock; i += sizeof(__m128i)) {
        const __m128i found = _mm_loadu_si128(reinterpret_cast<const __m128i*>(read + i));
        const __m128i sought = _mm_loadu_si128(reinterpret_cast<const __m128i*>(letters + i));
        const __m128i equal = _mm_cmpeq_epi8(_mm_and_si128(found, counting), sought);
        same |= static_cast<std::uint64_t>(_mm_movemask_epi8(equal)) << i;
    }
    return ~same << (kBlock - length) == 0;
#else
    const auto difference = [&](std::size_t i) {
        return (eightLetters(read + i) & comparedBits) ^ eightLetters(letters + i);
    };
    std::uint64_t differences = difference(length - 8);
    for (std::size_t i = 0; i + 8 < length; i += 8) {
        differences |= difference(i);
    }
    return differences == 0;
#endif
}

const LetterSets& agreeingLetters(Mate mate) {
    static const LetterSets read1 = letterSetsOf(Mate::read1);
    static const LetterSets read2 = letterSetsOf(Mate::read2);
    return mate == Mate::read1 ? read1 : read2;
}

} // namespace

CoreStore::CoreStore(Mate mate)
    : m_mate(mate), m_comparedBits(comparedBits(mate)), m_words(kBlockWords),
      m_agreeing(agreeingLetters(mate)) {}

bool CoreStore::canKeep(const OrientedCore& oriented, std::string_view core) {
    return core.size() >= 8 && (oriented.isUnambiguous() ||
                                core.find_first_not_of(kCoreLetters) == std::string_view::npos);
}

std::uint32_t CoreStore::keep(const OrientedCore& oriented, std::string_view core,
                              std::uint32_t number) {
    std::vector<std::uint32_t> sets;
    std::transform(core.begin(), core.end(), std::back_inserter(sets), bitOf);
    if (m_mate == Mate::read2) {
        std::reverse(sets.begin(), sets.end());
    }
    const Head head = {number, static_cast<std::uint32_t>(core.size()) & 0x7FFFFFFFu,
                       oriented.isUnambiguous() ? 1u : 0u};
    const void* const content = oriented.isUnambiguous()
                                    ? static_cast<const void*>(oriented.bases().data())
                                    : static_cast<const void*>(sets.data());
    const std::size_t bytes = oriented.isUnambiguous() ? core.size() : core.size() * sizeof sets[0];
    const std::size_t record = m_words.size() - kBlockWords;
    m_words.resize(m_words.size() + 1 + (bytes + 7) / 8);
    std::memcpy(&m_words[record], &head, sizeof head);
    std::memcpy(&m_words[record + 1], content, bytes);
    return static_cast<std::uint32_t>(record);
}

CoreStore::Standing CoreStore::standsAt(std::uint32_t record, std::string_view read,
                                        std::size_t place) const noexcept {
    Head head;
    std::memcpy(&head, &m_words[record], sizeof head);
    const char* const letters = read.data() + place;
    const char* const content = reinterpret_cast<const char*>(&m_words[record + 1]);
    const bool fits = place + head.length <= read.size();
    if (head.isUnambiguous && head.length <= kBlock) {
        return {head.number, head.length,
                blockAgrees(letters, content, head.length, m_comparedBits) && fits};
    }
    return {head.number, head.length,
            fits && (head.isUnambiguous ? manyLettersAgree(letters, content, head.length)
                                        : setsAgree(letters, content, head.length))};
}

/// Whole blocks, then the last one, which may overlap the one before.
bool CoreStore::manyLettersAgree(const char* read, const char* letters,
                                 std::size_t length) const noexcept {
    const std::size_t last = length - kBlock;
    bool agree = blockAgrees(read + last, letters + last, kBlock, m_comparedBits);
    for (std::size_t i = 0; i < last && agree; i += kBlock) {
        agree = blockAgrees(read + i, letters + i, kBlock, m_comparedBits);
    }
    return agree;
}

bool CoreStore::setsAgree(const char* read, const char* sets, std::size_t length) const noexcept {
    for (std::size_t i = 0; i < length; ++i) {
        std::uint32_t bit = 0;
        std::memcpy(&bit, sets + i * sizeof bit, sizeof bit);
        if ((m_agreeing[static_cast<unsigned char>(read[i])] & bit) == 0) {
            return false;
        }
    }
    return true;
}

} // namespace matching
