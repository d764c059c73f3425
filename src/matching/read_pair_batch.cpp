// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/read_pair_batch.h"

#include <cstring>

#include "matching/orientation.h"

namespace matching {

ReadPairBatch::ReadPairBatch()
    : m_text(
          std::make_unique_for_overwrite<char[]>(kPairsPerBatch * kLineKinds * (kLineLimit + 1))),
      m_pairs(kPairsPerBatch) {}

void ReadPairBatch::clear() noexcept {
    m_used = 0;
    m_pairCount = 0;
}

void ReadPairBatch::keepLine(Line line) noexcept {
    const std::size_t length = std::strlen(lineBuffer());
    m_pairs[m_pairCount][line] = Span{m_used, length};
    m_used += length + 1;
}

ReadPair ReadPairBatch::pair(std::size_t index) const noexcept {
    const auto text = [&](Line line) {
        const Span& span = m_pairs[index][line];
        return std::string_view(m_text.get() + span.offset, span.length);
    };
    return {text(kName), text(kRead1), text(kRead2), text(kQuality1), text(kQuality2)};
}

void ReadPairBatch::orientRead2() noexcept {
    for (std::size_t index = 0; index < m_pairCount; ++index) {
        const Span& read2 = m_pairs[index][kRead2];
        reverseComplement(m_text.get() + read2.offset, read2.length);
        const Span& quality2 = m_pairs[index][kQuality2];
        reverseString(m_text.get() + quality2.offset, quality2.length);
    }
}

} // namespace matching
