// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "platform/byte_stream.h"

namespace reads {

/// One lane of a flow cell, as read names give it.
struct FlowCellLane {
    std::string flowCell;
    std::string lane;

    bool operator==(const FlowCellLane&) const = default;
    bool operator<(const FlowCellLane& other) const {
        return std::tie(flowCell, lane) < std::tie(other.flowCell, other.lane);
    }
};

/// What the headers of a file's reads tell beside the names of pairs. Illumina's form, as BCL
/// Convert writes it: "@instrument:run:flowcell:lane:tile:x:y read:filtered:control:index". Other
/// headers tell nothing.
class HeaderFacts {
public:
    /// So many lanes are kept; a file that seems to hold more has names that mean something else.
    static constexpr std::size_t kMostLanes = 64;

    void add(std::string_view header);
    /// The lane alone, which costs one comparison where it is that of the header before.
    void addLaneOf(std::string_view header);
    void add(const HeaderFacts& other);

    /// Rising, each once.
    const std::vector<FlowCellLane>& lanes() const noexcept { return m_lanes; }
    /// Headers, of those given to add(), that call themselves read 1 ("1:N:0:…"), and read 2.
    std::int64_t read1Headers() const noexcept { return m_read1Headers; }
    std::int64_t read2Headers() const noexcept { return m_read2Headers; }

private:
    void keep(FlowCellLane lane);

    std::vector<FlowCellLane> m_lanes;
    /// Of the last header, up to and with the colon behind its lane; empty: it named none.
    std::string m_lanePrefix;
    std::int64_t m_read1Headers = 0;
    std::int64_t m_read2Headers = 0;
};

/// Why the reader of pairs asked a file for no further record.
enum class ReadingEnd {
    endOfFile, ///< or the other file's end
    emptyLine, ///< a line without text stood where a header was due
    zeroByte,  ///< so did a line that begins with a zero byte
};

/// What stands behind the last line that was read.
struct RestOfFile {
    std::uint64_t bytes = 0;     ///< of text
    std::uint64_t textBytes = 0; ///< those of text that can be seen: no blanks, no control bytes
    std::uint64_t zeroBytes = 0;
    std::int64_t lines = 0; ///< a last one without a line end included
};

/// Reads the stream to its end and counts. Where that fails, what came before it is counted.
RestOfFile countRest(platform::ByteStream& stream);

/// What was read of one FASTQ file, and what was not.
struct FileAccount {
    std::string path;
    std::uint64_t fileBytes = 0;   ///< on disk
    std::uint64_t gzipMembers = 0; ///< 0: not compressed
    std::int64_t records = 0;      ///< that are half of a pair
    ReadingEnd end = ReadingEnd::endOfFile;
    RestOfFile rest;
    /// Records without one of the other file, whole or begun, because the other file ended. They
    /// are in no count.
    std::int64_t surplusRecords = 0;
    /// In the whole file. A line's text ends at its first zero byte.
    std::uint64_t zeroBytes = 0;
    /// Headers longer than a line may be. What follows their first bytes is read as further lines.
    std::int64_t longHeaders = 0;
    /// Whether the last record's quality is shorter than its sequence.
    bool lastRecordIsCut = false;
    HeaderFacts headers;

    /// Whether reads stand behind the place where reading ended.
    bool endedEarly() const noexcept {
        return end != ReadingEnd::endOfFile && (rest.textBytes > 0 || rest.zeroBytes > 0);
    }
    bool isEmpty() const noexcept { return records == 0 && surplusRecords == 0 && !endedEarly(); }
};

/// What a run read of its two files.
struct InputAccount {
    FileAccount read1;
    FileAccount read2;
    /// Of the first pair; empty: there is none.
    std::string firstName;
    /// Whether the first pair's two reads are one and the same.
    bool matesAreEqual = false;
    /// Whether reading came to its end. Else the run failed, and the figures are those until then.
    bool complete = false;
    /// A sentence, without its full stop, that helps to understand why reading failed; empty: there
    /// is nothing to add.
    std::string hint;

    /// Whether every record of both files is in the counts.
    bool allWasRead() const noexcept {
        return complete && !read1.endedEarly() && !read2.endedEarly() &&
               read1.surplusRecords == 0 && read2.surplusRecords == 0;
    }
};

/// What reading line by line came to, for the account of it.
struct EndOfReading {
    ReadingEnd end = ReadingEnd::endOfFile; ///< of file 1, which rules; file 2 is read in step
    /// Lines read as headers without one of the other file.
    std::int64_t unpairedLines1 = 0;
    std::int64_t unpairedLines2 = 0;
    RestOfFile rest1;
    RestOfFile rest2;
};

/// Fills in how both files ended. Where file 1 ended early, what is left of file 2 is no surplus.
void closeAccount(InputAccount& account, const EndOfReading& end);

/// How many records so many lines are, a begun one included.
constexpr std::int64_t recordsOfLines(std::int64_t lines) noexcept {
    return (lines + 3) / 4;
}

} // namespace reads
