// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/read_pair_batch.h"

#include <cstring>

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

} // namespace matching
