// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string>

#include "matching/read_pair_batch.h"
#include "platform/byte_stream.h"

namespace matching {

/// Reads two FASTQ files in lockstep and cuts them into batches. Holds one read-1 header of
/// look-ahead, by which it sees the end of the reads.
///
/// A line that is missing because a stream failed looks like the end of its file here: whoever gets
/// to an end, or to an error, asks the streams whether they failed.
class PairReader {
public:
    /// The streams must outlive the reader. `read1Path` is named in the error about missing lines.
    PairReader(platform::ByteStream& read1, platform::ByteStream& read2, std::string read1Path);

    /// Reads the next batch's first read-1 header. False when its text is empty: the reads have
    /// ended.
    bool readLookAhead();

    /// Fills the batch, the first pair from the look-ahead. False after an error, which error()
    /// tells. A missing or over-long header closes the batch and is no error.
    bool fill(ReadPairBatch& batch);

    /// The finished line for the error log.
    const std::string& error() const noexcept { return m_error; }

private:
    using LineBuffer = std::array<char, kLineLimit + 1>;

    bool readHeaders(bool firstOfBatch);
    bool keepName(ReadPairBatch& batch);
    bool keepSequencesAndQualities(ReadPairBatch& batch);

    platform::ByteStream& m_read1;
    platform::ByteStream& m_read2;
    std::string m_read1Path;
    std::string m_error;
    LineBuffer m_lookAhead{};
    LineBuffer m_header1{};
    LineBuffer m_header2{};
    LineBuffer m_separator{};
};

/// Cuts two NUL-terminated headers at their blanks, walking along header 1. Only the space is a
/// blank.
///
/// Deliberate: header 2 is cut only at a blank within the walk, so a blank beyond header 1's length
/// stays, and the headers "@X" and "@X 2:N" differ.
void cutHeaders(char* header1, char* header2) noexcept;

} // namespace matching
