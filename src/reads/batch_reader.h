// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "reads/input_account.h"
#include "reads/read_pair_batch.h"
#include "reads/read_source.h"

namespace reads {

/// Reads full batches of regular records from two FASTQ files, for as long as there are any. Any
/// number of threads may read at once: each fills a batch of its own, and while one reads its
/// stretch of file 2 another reads the next stretch of file 1.
///
/// It stops for good before the first batch that needs PairReader: one that is not full, that holds
/// an odd or an over-long line or headers that differ, that begins with an empty header, or in
/// which a file ends or fails. It gives back what it read of that batch and behind it; ResumedReads
/// hands that on. When something throws while it reads, it stops for good as well, and the reads
/// cannot be resumed.
class BatchReader {
public:
    struct FilledBatch {
        /// 0 for the first batch of the files, and so on.
        std::uint64_t number = 0;
        /// Bytes of both files on disk that were taken for it.
        std::uint64_t fileBytes = 0;
    };

    /// The sources must outlive the reader and stand at the start of a batch. A stretch is read in
    /// one piece as large as the last stretch, then in pieces of `pieceSize` bytes.
    BatchReader(ReadSource& read1, ReadSource& read2, std::size_t pieceSize = kUsualPieceSize);

    /// Fills the batch with the next 1000 pairs. nullopt when the reader has stopped.
    std::optional<FilledBatch> read(ReadPairBatch& batch);
    bool hasStopped() const noexcept { return m_stopped; }

    /// What was taken from a source and not given out. REQUIRES: no thread is in read().
    std::string takeRest1() { return takeRest(m_file1); }
    std::string takeRest2() { return takeRest(m_file2); }

private:
    static constexpr std::size_t kUsualPieceSize = std::size_t{64} * 1024;

    struct File {
        explicit File(ReadSource& given) : source(given) {}

        ReadSource& source;
        /// Held while the file is read. A thread takes the turn of file 2 before it lets go of that
        /// of file 1, so threads come to file 2 in the order in which they came to file 1.
        std::mutex turn;
        std::size_t expectedSize = 0;
        std::uint64_t fileBytesTaken = 0;
        /// What the last read brought behind the last stretch: the next stretch begins with it.
        std::string carried;
        /// What was given back.
        std::string rest;
    };

    bool readStretch(File& file, RecordText& text);
    bool readLines(File& file, RecordText& text);
    void giveBack(File& file, const RecordText& text);
    static std::uint64_t newFileBytes(File& file);
    static std::string takeRest(File& file);

    const std::size_t m_pieceSize;
    File m_file1;
    File m_file2;
    /// The number of the next batch. Changed by the thread that has the turn at file 1.
    std::uint64_t m_nextNumber = 0;
    /// Set by the thread that has the turn at file 2, or where something throws.
    std::atomic<bool> m_stopped{false};
};

/// A source of which too much was read: what BatchReader gave back, then the rest of it. It has
/// failed only when its reader gets to where the source failed, or when the rest is not sound. How
/// much was read ahead is chance, so ask this stream and not the source.
class ResumedReads final : public platform::ByteStream {
public:
    /// The source must outlive the stream.
    ResumedReads(std::string givenBack, ReadSource& source);

    /// Of what was given out.
    std::uint64_t zeroBytes() const noexcept { return m_zeroBytes; }

    /// Counts what nobody asked for. A failure behind the reads is none of theirs: it only ends the
    /// counting. REQUIRES: nobody reads on afterwards.
    RestOfFile countRest();
    /// As ReadSource::verifyRest(). REQUIRES: nobody reads on afterwards.
    platform::Status verifyRest();

private:
    bool nextBlock() override;
    void give(std::string_view block);

    std::string m_givenBack;
    ReadSource& m_source;
    bool m_isInSource = false;
    std::uint64_t m_zeroBytes = 0;
};

} // namespace reads
