// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Verification, the second half of seed-and-verify: a seed hit says where a core may occur, this
// says whether it does. A record holds all that is needed for one core, so it costs one access to
// memory.
//
// An unambiguous core is compared 64 bytes at a time. A core of up to 64 bases needs no branch: it
// occurs about as often as not, which a processor cannot predict. For a wildcard core each byte of
// the read looks up the set of core bases that it agrees with. The sets come from the rules
// themselves (baseAgrees()). Tested by core_table_test.cpp at every length, position and byte.
#include "matching/core_table.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

#include "matching/core_search.h"
#include "matching/reverse_complement.h"
#include "matching/seed.h"
#include "reads/record_text.h"

namespace matching {
namespace {

/// The bases and codes of wildcard cores, one bit each.
constexpr std::string_view kCoreCodes = "ACGTNBDHKMRSVWYacgtnbdhkmrsvwy";
static_assert(kCoreCodes.size() <= 32);

std::uint32_t bitOf(char coreBase) noexcept {
    const std::size_t number = kCoreCodes.find(coreBase);
    return number != std::string_view::npos ? std::uint32_t{1} << number : 0;
}

std::uint32_t bitsAgreeingWith(char readByte) noexcept {
    std::uint32_t bits = 0;
    for (const char coreBase : kCoreCodes) {
        bits |= baseAgrees(readByte, coreBase) ? bitOf(coreBase) : 0;
    }
    return bits;
}

BaseSets baseSetsOf(Mate mate) noexcept {
    BaseSets sets{};
    for (std::size_t byte = 0; byte < sets.size(); ++byte) {
        const char base = static_cast<char>(byte);
        sets[byte] = bitsAgreeingWith(mate == Mate::read2 ? complement(base) : base);
    }
    return sets;
}

/// Bytes that are compared at once and can be read behind each core.
constexpr std::size_t kBlock = 64;
static_assert(kBlock <= reads::RecordText::kReadableBeyond);
constexpr std::size_t kBlockWords = kBlock / sizeof(std::uint64_t);

/// Whether the first `length` bytes, 8 to 64, of two blocks agree in the compared bits. No branch,
/// where there are vectors.
bool blockAgrees(const char* read, const char* bases, std::size_t length,
                 std::uint64_t comparedBits) noexcept {
#if defined(__SSE2__)
    const __m128i compared = _mm_set1_epi64x(static_cast<long long>(comparedBits));
    std::uint64_t same = 0;
    for (std::size_t i = 0; i < kBlock; i += sizeof(__m128i)) {
        const __m128i inRead = _mm_loadu_si128(reinterpret_cast<const __m128i*>(read + i));
        const __m128i inCore = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bases + i));
        const __m128i equal = _mm_cmpeq_epi8(_mm_and_si128(inRead, compared), inCore);
        same |= static_cast<std::uint64_t>(_mm_movemask_epi8(equal)) << i;
    }
    return ~same << (kBlock - length) == 0;
#else
    const auto difference = [&](std::size_t i) {
        return (loadEightBytes(read + i) & comparedBits) ^ loadEightBytes(bases + i);
    };
    std::uint64_t differences = difference(length - 8);
    for (std::size_t i = 0; i + 8 < length; i += 8) {
        differences |= difference(i);
    }
    return differences == 0;
#endif
}

const BaseSets& agreeingBases(Mate mate) {
    static const BaseSets read1 = baseSetsOf(Mate::read1);
    static const BaseSets read2 = baseSetsOf(Mate::read2);
    return mate == Mate::read1 ? read1 : read2;
}

} // namespace

CoreTable::CoreTable(Mate mate)
    : m_mate(mate), m_comparedBits(comparedBits(mate)), m_words(kBlockWords),
      m_agreeing(agreeingBases(mate)) {}

bool CoreTable::canHold(const OrientedCore& oriented, std::string_view core) {
    return core.size() >= 8 && (oriented.isUnambiguous() ||
                                core.find_first_not_of(kCoreCodes) == std::string_view::npos);
}

std::uint32_t CoreTable::add(const OrientedCore& oriented, std::string_view core,
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

CoreTable::Verification CoreTable::verify(std::uint32_t record, std::string_view read,
                                          std::size_t position) const noexcept {
    Head head;
    std::memcpy(&head, &m_words[record], sizeof head);
    const char* const bases = read.data() + position;
    const char* const content = reinterpret_cast<const char*>(&m_words[record + 1]);
    const bool fits = position + head.length <= read.size();
    if (head.isUnambiguous && head.length <= kBlock) {
        return {head.core, head.length,
                blockAgrees(bases, content, head.length, m_comparedBits) && fits};
    }
    return {head.core, head.length,
            fits && (head.isUnambiguous ? longBasesAgree(bases, content, head.length)
                                        : setsAgree(bases, content, head.length))};
}

/// Whole blocks, then the last one, which may overlap the one before.
bool CoreTable::longBasesAgree(const char* read, const char* bases,
                               std::size_t length) const noexcept {
    const std::size_t last = length - kBlock;
    bool agree = blockAgrees(read + last, bases + last, kBlock, m_comparedBits);
    for (std::size_t i = 0; i < last && agree; i += kBlock) {
        agree = blockAgrees(read + i, bases + i, kBlock, m_comparedBits);
    }
    return agree;
}

bool CoreTable::setsAgree(const char* read, const char* sets, std::size_t length) const noexcept {
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
