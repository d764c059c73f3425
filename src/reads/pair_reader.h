// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/byte_stream.h"
#include "platform/result.h"
#include "reads/input_account.h"
#include "reads/read_pair_batch.h"

namespace reads {

/// Reads two FASTQ files in lockstep, line by line, and cuts them into batches. It knows every rule
/// of the lines; faster readers must agree with it. It holds one read-1 header of look-ahead, which
/// shows it the end of the reads.
///
/// A line that is missing because a stream failed looks like the end of its file here. At an end or
/// an error, the caller asks the streams whether they failed.
class PairReader {
public:
    /// The streams must outlive the reader. `read1Path` is named in the error about missing lines.
    PairReader(platform::ByteStream& read1, platform::ByteStream& read2, std::string read1Path);

    /// Reads the next batch's first read-1 header. False when its text is empty: the reads have
    /// ended.
    bool readLookAhead();

    /// Fills the batch, the first pair from the look-ahead. Headers are kept as they were read. An
    /// error is the finished line for the error log. A missing or over-long header closes the batch
    /// and is no error.
    platform::Status fill(ReadPairBatch& batch);
    /// A further line that helps to understand it; empty: there is nothing to add.
    const std::string& hint() const noexcept { return m_hint; }

    /// Why the reads have ended. REQUIRES: readLookAhead() gave false.
    ReadingEnd end() const noexcept { return m_end; }
    /// Lines of each file that were read as headers without one of the other file.
    std::int64_t unpairedLines1() const noexcept { return m_unpairedLines1; }
    std::int64_t unpairedLines2() const noexcept { return m_unpairedLines2; }
    /// Headers that were too long for a line.
    std::int64_t longHeaders1() const noexcept { return m_longHeaders1; }
    std::int64_t longHeaders2() const noexcept { return m_longHeaders2; }

private:
    using LineBuffer = std::array<char, kLineLimit + 1>;

    bool readHeaders(bool firstOfBatch);
    bool keepHeaders(ReadPairBatch& batch);
    bool keepSequencesAndQualities(ReadPairBatch& batch);

    platform::ByteStream& m_read1;
    platform::ByteStream& m_read2;
    std::string m_read1Path;
    /// The line for the error log, once a pair could not be read.
    std::string m_error;
    std::string m_hint;
    ReadingEnd m_end = ReadingEnd::endOfFile;
    std::int64_t m_unpairedLines1 = 0;
    std::int64_t m_unpairedLines2 = 0;
    std::int64_t m_longHeaders1 = 0;
    std::int64_t m_longHeaders2 = 0;
    LineBuffer m_lookAhead{};
    LineBuffer m_header1{};
    LineBuffer m_header2{};
};

/// The read's name in its read-1 header: all before the first blank. Only the space is a blank.
std::string_view nameInHeader1(std::string_view header1) noexcept;

/// Whether two headers name the same pair: cut at their blanks they are equal.
///
/// Deliberate: header 2 is cut only at a blank within the length of header 1, so "@X" and "@X 2:N"
/// differ, where a cut of each by itself would be expected.
bool headersAgree(std::string_view header1, std::string_view header2) noexcept;

} // namespace reads
