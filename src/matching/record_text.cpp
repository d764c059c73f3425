// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/record_text.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "platform/line_feeds.h"

namespace matching {

RecordText::RecordText()
    : m_text(std::make_unique_for_overwrite<char[]>(kTextSize + kReadableBeyond)),
      m_ends(1 + kMostLines + platform::kLineFeedsBeyond) {
    static_assert(kTextSize < std::numeric_limits<std::uint32_t>::max());
    m_ends[0] = std::numeric_limits<std::uint32_t>::max();
}

void RecordText::clear() noexcept {
    m_size = 0;
    m_lineCount = 0;
    m_oddBytes = false;
}

void RecordText::addPiece(std::size_t size) {
    const platform::LineFeeds found =
        platform::findLineFeeds(room(), size, static_cast<std::uint32_t>(m_size),
                                m_ends.data() + 1 + m_lineCount, kMostLines - m_lineCount);
    m_size += size;
    m_lineCount = std::min(m_lineCount + found.count, kMostLines);
    m_oddBytes = m_oddBytes || found.oddBytes;
}

std::string_view RecordText::cutBehindLastLine() noexcept {
    const std::size_t end = lineStart(kMostLines);
    const std::string_view rest = text().substr(end);
    m_size = end;
    return rest;
}

bool RecordText::isRegular() const noexcept {
    std::uint32_t longest = 0;
    for (std::size_t index = 0; index < m_lineCount; ++index) {
        longest = std::max(longest, m_ends[index + 1] - m_ends[index]);
    }
    // With its line end.
    return !m_oddBytes && longest <= kLineLimit;
}

void RecordText::keepLine() noexcept {
    endLine(std::strlen(room()));
}

void RecordText::addLine(std::string_view line) noexcept {
    line.copy(room(), line.size());
    endLine(line.size());
}

void RecordText::endLine(std::size_t length) noexcept {
    *(room() + length) = '\n';
    m_ends[++m_lineCount] = static_cast<std::uint32_t>(m_size + length);
    m_size += length + 1;
}

} // namespace matching
