// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/record_text.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "reads/line_feeds.h"
#include "reads/record_shape.h"

namespace reads {

RecordText::RecordText()
    : m_text(std::make_unique_for_overwrite<char[]>(kTextSize + kReadableBeyond)),
      m_ends(1 + kMostLines + reads::kLineFeedsBeyond) {
    static_assert(kTextSize < std::numeric_limits<std::uint32_t>::max());
    m_ends[0] = std::numeric_limits<std::uint32_t>::max();
}

void RecordText::clear() noexcept {
    m_size = 0;
    m_searched = 0;
    m_lineCount = 0;
    m_oddBytes = false;
}

void RecordText::addPiece(std::size_t size) {
    m_size += size;
    // After records of a new shape the next ones are searched as well, more of them each time: the
    // file may have no shape.
    std::size_t records = 1;
    while (m_searched < m_size && !hasAllLines()) {
        const std::size_t before = m_lineCount;
        noteRecordsLikeTheLast();
        records = m_lineCount == before ? 2 * records : 1;
        searchLines(std::min(records * kLinesPerRecord - m_lineCount % kLinesPerRecord,
                             kMostLines - m_lineCount));
    }
}

void RecordText::noteRecordsLikeTheLast() noexcept {
    if (m_lineCount == 0 || m_lineCount % kLinesPerRecord != 0) {
        return;
    }
    const std::size_t count = noteRecordsOfShape(line(m_lineCount - 1).size(), text(), m_searched,
                                                 m_ends.data() + 1 + m_lineCount,
                                                 (kMostLines - m_lineCount) / kLinesPerRecord);
    m_lineCount += count * kLinesPerRecord;
    m_searched = lineStart(m_lineCount);
}

/// Notes the ends of the next `most` lines, as far as there are so many.
void RecordText::searchLines(std::size_t most) {
    const reads::LineFeeds found = reads::findLineFeeds(
        m_text.get() + m_searched, m_size - m_searched, static_cast<std::uint32_t>(m_searched),
        m_ends.data() + 1 + m_lineCount, most);
    m_oddBytes = m_oddBytes || found.oddBytes;
    m_lineCount += std::min(found.count, most);
    m_searched = found.count < most ? m_size : lineStart(m_lineCount);
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

} // namespace reads
