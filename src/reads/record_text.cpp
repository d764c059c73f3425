// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Where the lines of a stretch end, noted once. A batch then gives any line of any record without
// looking at its bytes again.
//
// Records like the one before are foretold (record_shape.cpp); all others are searched
// (line_feeds.cpp). After a record of a new shape the next one is foretold again. If that fails,
// the number of records to search doubles: a file without any shape soon costs no more than a
// search.
//
// The memory is for 1000 records at their longest, 2 MB, but the system gives only the pages that
// text was written to. Tested by record_text_test.cpp.
#include "reads/record_text.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "reads/line_ends.h"

namespace reads {

RecordText::RecordText()
    : m_text(std::make_unique_for_overwrite<char[]>(kTextSize + kReadableBeyond)),
      m_ends(1 + kMostLines + kLineFeedsBeyond) {
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
    // Doubles while records differ from the one before: the file may have no shape.
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
    const LineFeeds found = findLineFeeds(m_text.get() + m_searched, m_size - m_searched,
                                          static_cast<std::uint32_t>(m_searched),
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
