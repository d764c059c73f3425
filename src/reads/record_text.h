// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace reads {

/// Longest line of a FASTQ file that is read whole, in bytes, is one less.
inline constexpr std::size_t kLineLimit = 510;
/// Pairs that travel together to one worker.
inline constexpr std::size_t kPairsPerBatch = 1000;
/// Lines of a FASTQ record: header, sequence, separator, quality.
inline constexpr std::size_t kLinesPerRecord = 4;

/// A stretch of one FASTQ file, up to 1000 records, with the places of its line ends. The memory is
/// allocated once, for the longest lines, and reused; what no text was written to is never touched.
///
/// It is filled in one of two ways. Piece by piece: the lines of a piece are found all at once; a
/// line that does not end with LF alone is noticed, not understood. Or line by line, by a reader
/// that knows every rule. It moves and cannot be copied.
class RecordText {
public:
    static constexpr std::size_t kMostLines = kPairsPerBatch * kLinesPerRecord;
    /// So many bytes can be read behind each line, whatever they are: a search may go by vectors.
    static constexpr std::size_t kReadableBeyond = 64;

    RecordText();

    void clear() noexcept;
    std::string_view text() const noexcept { return {m_text.get(), m_size}; }
    std::size_t lineCount() const noexcept { return m_lineCount; }
    /// The line without its line end. REQUIRES: index < lineCount().
    std::string_view line(std::size_t index) const noexcept {
        const std::size_t begin = lineStart(index);
        return {m_text.get() + begin, m_ends[index + 1] - begin};
    }

    // Piece by piece.

    /// Room for the next piece.
    char* room() noexcept { return m_text.get() + m_size; }
    std::size_t roomSize() const noexcept { return kTextSize - m_size; }
    /// Takes the `size` bytes that now stand in room() as text and finds the lines that end there.
    void addPiece(std::size_t size);
    bool hasAllLines() const noexcept { return m_lineCount >= kMostLines; }
    /// Cuts off what stands behind the last of all lines and returns it. The view holds until the
    /// text changes. REQUIRES: hasAllLines().
    std::string_view cutBehindLastLine() noexcept;
    /// Whether each line was ended by LF alone, holds no NUL and is shorter than kLineLimit: then
    /// all readers agree on what the lines are.
    bool isRegular() const noexcept;

    // Line by line.

    /// Room for a line of kLineLimit bytes and a NUL. REQUIRES: fewer than kMostLines lines.
    char* lineBuffer() noexcept { return room(); }
    /// Keeps the NUL-terminated text now in lineBuffer() (what follows its first NUL is dropped) as
    /// the next line.
    void keepLine() noexcept;
    /// Keeps a line of at most kLineLimit bytes.
    void addLine(std::string_view line) noexcept;

private:
    /// All lines at their longest, and a piece of what follows them.
    static constexpr std::size_t kTextSize = kMostLines * kLineLimit + std::size_t{64} * 1024;

    std::size_t lineStart(std::size_t index) const noexcept {
        return static_cast<std::uint32_t>(m_ends[index] + 1);
    }
    void noteRecordsLikeTheLast() noexcept;
    void searchLines(std::size_t most);
    void endLine(std::size_t length) noexcept;

    std::unique_ptr<char[]> m_text;
    /// The place before the first line (one less than 0), then where each line ends.
    std::vector<std::uint32_t> m_ends;
    std::size_t m_size = 0;
    /// All line ends before this place are noted.
    std::size_t m_searched = 0;
    std::size_t m_lineCount = 0;
    bool m_oddBytes = false;
};

} // namespace reads
