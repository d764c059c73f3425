// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

#include "reads/record_text.h"

namespace reads {

/// The texts of one read pair, as they lie in the files: read 2 is not reverse-complemented. They
/// are views into the batch. RecordText::kReadableBeyond bytes can be read behind each.
struct ReadPair {
    std::string_view read1;
    std::string_view read2;
    std::string_view quality1;
    std::string_view quality2;
};

/// Up to 1000 read pairs: two stretches of text, one of each file, whose records stand at the same
/// numbers. Filled by one thread, then owned by one.
class ReadPairBatch {
public:
    /// Empties the batch and keeps its memory.
    void clear() noexcept {
        m_text1.clear();
        m_text2.clear();
        m_pairCount = 0;
    }
    std::size_t size() const noexcept { return m_pairCount; }
    bool full() const noexcept { return m_pairCount == kPairsPerBatch; }

    // A pair's four lines go into each text, header first; then the pair is complete.
    RecordText& text1() noexcept { return m_text1; }
    RecordText& text2() noexcept { return m_text2; }
    /// Completes the next pairs. REQUIRES: both texts hold their lines.
    void completePairs(std::size_t count) noexcept { m_pairCount += count; }

    // REQUIRES: index < size().
    ReadPair pair(std::size_t index) const noexcept {
        const std::size_t line = index * kLinesPerRecord;
        return {m_text1.line(line + kSequence), m_text2.line(line + kSequence),
                m_text1.line(line + kQuality), m_text2.line(line + kQuality)};
    }
    std::string_view header1(std::size_t index) const noexcept {
        return m_text1.line(index * kLinesPerRecord);
    }
    std::string_view header2(std::size_t index) const noexcept {
        return m_text2.line(index * kLinesPerRecord);
    }

private:
    static constexpr std::size_t kSequence = 1;
    static constexpr std::size_t kQuality = 3;

    RecordText m_text1;
    RecordText m_text2;
    std::size_t m_pairCount = 0;
};

} // namespace reads
