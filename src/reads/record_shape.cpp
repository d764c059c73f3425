// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Foretelling line ends. Nearly all records of a file have sequences of one length, so a record's
// lines end at places that follow from where its header ends:
//
//     @header LF  sequence LF  + LF  quality LF
//              |-- length --|     |-- length --|
//
// Looking whether line feeds stand there, and that no other byte of sequence, separator and quality
// could end a line, is cheaper than searching: such looks do not wait for one another, as a search
// does that has to know where one record ends to begin with the next. Bytes below a space are the
// ones that could (LF, CR, NUL); the least byte of a line tells whether it holds one, without a
// branch for each vector.
//
// A record that looks otherwise is no error here. It stops this way, and record_text.cpp searches
// it. Needs AVX2; elsewhere everything is searched. Tested by record_shape_test.cpp.
#include "reads/line_ends.h"

#include <algorithm>

#include "platform/avx2.h"
#include "reads/record_text.h"

namespace reads {

#if defined(__x86_64__)

namespace {

constexpr std::size_t kWidth = sizeof(__m256i);
static_assert(2 * kWidth <= RecordText::kReadableBeyond);

VEXTA_AVX2 inline __m256i bytesAt(const char* text) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(text));
}

/// A bit for each of 32 bytes that is a line feed, a CR or a NUL.
VEXTA_AVX2 inline std::uint32_t lineEndBits(const char* at) noexcept {
    const __m256i bytes = bytesAt(at);
    const __m256i feeds = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('\n'));
    const __m256i returns = _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8('\r'));
    const __m256i zeros = _mm256_cmpeq_epi8(bytes, _mm256_setzero_si256());
    return static_cast<std::uint32_t>(
        _mm256_movemask_epi8(_mm256_or_si256(feeds, _mm256_or_si256(returns, zeros))));
}

/// Finds where headers end. It asks first whether this one is as long as the one before, and asks
/// by a branch. Then the processor predicts where a record ends and begins with the next one at
/// once. This makes the whole twice as fast.
class HeaderEnds {
public:
    /// The place of the first line feed, CR or NUL from `at` on, or one from `end` on.
    VEXTA_AVX2 const char* next(const char* at, const char* end) noexcept {
        const std::uint64_t bits =
            lineEndBits(at) | static_cast<std::uint64_t>(lineEndBits(at + kWidth)) << kWidth;
        if (bits << (kLongestGuess - m_length) == std::uint64_t{1} << kLongestGuess) {
            return at + m_length;
        }
        const char* const found = search(at, end);
        m_length = std::min(static_cast<std::size_t>(found - at), kLongestGuess);
        return found;
    }

private:
    static constexpr std::size_t kLongestGuess = 63;

    VEXTA_AVX2 static const char* search(const char* at, const char* end) noexcept {
        for (; at < end; at += kWidth) {
            if (const std::uint32_t bits = lineEndBits(at); bits != 0) {
                return at + _tzcnt_u32(bits);
            }
        }
        return end;
    }

    std::size_t m_length = kLongestGuess;
};

/// The least of the bytes at each place of a vector. REQUIRES: length >= kWidth.
VEXTA_AVX2 inline __m256i leastBytes(const char* line, std::size_t length) noexcept {
    __m256i least = bytesAt(line + length - kWidth);
    for (std::size_t i = 0; i + kWidth < length; i += kWidth) {
        least = _mm256_min_epu8(least, bytesAt(line + i));
    }
    return least;
}

VEXTA_AVX2 inline bool holdsControl(__m256i leastBytes) noexcept {
    const __m256i most = _mm256_set1_epi8(0x1F);
    const __m256i control = _mm256_cmpeq_epi8(_mm256_min_epu8(leastBytes, most), leastBytes);
    return _mm256_testz_si256(control, control) == 0;
}

VEXTA_AVX2 std::size_t noteByAvx2(std::size_t length, std::string_view text, std::size_t from,
                                  std::uint32_t* places, std::size_t most) {
    // Behind a header's line feed: sequence, LF, separator, LF, quality, LF.
    const auto restOfRecord = static_cast<std::ptrdiff_t>(2 * length + 4);
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* next = begin + from;
    HeaderEnds headerEnds;
    std::size_t count = 0;
    for (; count < most; ++count) {
        const char* const headerEnd = headerEnds.next(next, end);
        if (end - headerEnd <= restOfRecord) {
            break;
        }
        const char* const sequence = headerEnd + 1;
        const char* const separator = sequence + length + 1;
        const char* const quality = separator + 2;
        const bool hasShape = (*headerEnd == '\n') & (sequence[length] == '\n') &
                              (separator[0] >= ' ') & (separator[1] == '\n') &
                              (quality[length] == '\n');
        if (!hasShape || holdsControl(_mm256_min_epu8(leastBytes(sequence, length),
                                                      leastBytes(quality, length)))) {
            break;
        }
        const auto place = static_cast<std::uint32_t>(headerEnd - begin);
        const auto ofSequence = static_cast<std::uint32_t>(length);
        places[0] = place;
        places[1] = place + ofSequence + 1;
        places[2] = place + ofSequence + 3;
        places[3] = place + 2 * ofSequence + 4;
        places += 4;
        next = quality + length + 1;
    }
    return count;
}

} // namespace

std::size_t noteRecordsOfShape(std::size_t sequenceLength, std::string_view text, std::size_t from,
                               std::uint32_t* places, std::size_t most) noexcept {
    return platform::avx2IsThere() && sequenceLength >= kWidth
               ? noteByAvx2(sequenceLength, text, from, places, most)
               : 0;
}

#else

std::size_t noteRecordsOfShape(std::size_t /*sequenceLength*/, std::string_view /*text*/,
                               std::size_t /*from*/, std::uint32_t* /*places*/,
                               std::size_t /*most*/) noexcept {
    return 0;
}

#endif

} // namespace reads
