// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Two files, two stations. Every batch passes file 1 and then file 2, and each file has one thread
// at a time:
//
//     thread A   read 1 of batch 0 | read 2 of batch 0 | match batch 0 ...
//     thread B                     | read 1 of batch 1 | read 2 of batch 1 | match batch 1 ...
//
// A thread takes its batch through both and then matches it, while the text is still in its core's
// cache. Nothing is handed from thread to thread. With two threads both files are read at once, the
// disk's or the decoder's work included.
//
// A batch is only taken if its lines can be understood in one way: 1000 whole records on each side,
// lines that end with LF alone, headers that agree. Then cutting the text at its line feeds gives
// what PairReader would give. Most files are such batches to their ends. At the first batch that is
// not, all threads stop and give back what they took, so PairReader sees the very bytes that it
// would have seen.
//
// A read brings somewhat more than a stretch; the few KB too much are copied to the next one. No
// other text is copied. Tested by batch_reader_test.cpp and fuzz/fastq_pairs_fuzz.cpp, against
// PairReader.
#include "reads/batch_reader.h"

#include <algorithm>
#include <utility>

#include "reads/pair_reader.h"

namespace reads {
namespace {

/// A stretch is about as long as the one before. With so much more, one read mostly brings all of
/// it.
constexpr std::size_t kSizeToSpare = 4096;

/// Whether both begin with the same `size` bytes, the last of them a blank. Then they agree,
/// whether or not it is the first blank.
bool areOneUpToABlank(std::string_view header1, std::string_view header2,
                      std::size_t size) noexcept {
    const std::string_view begin = header1.substr(0, size);
    return begin.size() == size && begin.back() == ' ' && header2.substr(0, size) == begin;
}

bool allHeadersAgree(const ReadPairBatch& batch) noexcept {
    // Names are about as long as the one before.
    std::size_t sizeWithBlank = 1;
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const std::string_view header1 = batch.header1(index);
        const std::string_view header2 = batch.header2(index);
        if (areOneUpToABlank(header1, header2, sizeWithBlank)) {
            continue;
        }
        if (!headersAgree(header1, header2)) {
            return false;
        }
        sizeWithBlank = nameInHeader1(header1).size() + 1;
    }
    return true;
}

/// Completes the pairs of two regular stretches. Returns whether PairReader would read the same.
bool isFullOfPairs(ReadPairBatch& batch) {
    batch.completePairs(kPairsPerBatch);
    return !batch.header1(0).empty() && allHeadersAgree(batch);
}

} // namespace

BatchReader::BatchReader(ReadSource& read1, ReadSource& read2, std::size_t pieceSize)
    : m_pieceSize(pieceSize), m_file1(read1), m_file2(read2) {}

std::optional<BatchReader::FilledBatch> BatchReader::read(ReadPairBatch& batch) {
    batch.clear();
    std::unique_lock turn1(m_file1.turn);
    if (m_stopped) {
        return std::nullopt;
    }
    const bool regular1 = readStretch(m_file1, batch.text1());
    FilledBatch filled{m_nextNumber++, newFileBytes(m_file1)};

    const std::lock_guard turn2(m_file2.turn);
    const bool goesOn = regular1 && !m_stopped;
    if (!goesOn) {
        // Not later: the next thread must know when it gets its turn at file 1.
        m_stopped = true;
    }
    turn1.unlock();
    if (goesOn) {
        const bool regular2 = readStretch(m_file2, batch.text2());
        filled.fileBytes += newFileBytes(m_file2);
        if (regular2 && isFullOfPairs(batch)) {
            return filled;
        }
        m_stopped = true;
    }
    giveBack(m_file1, batch.text1());
    giveBack(m_file2, batch.text2());
    batch.clear();
    return std::nullopt;
}

/// Whether all lines of a full batch are there, and regular.
bool BatchReader::readStretch(File& file, RecordText& text) {
    try {
        return readLines(file, text);
    } catch (...) {
        m_stopped = true; // lines are missing now: nobody else may read on
        throw;
    }
}

bool BatchReader::readLines(File& file, RecordText& text) {
    std::size_t wanted = std::max(m_pieceSize, file.expectedSize);
    file.carried.copy(text.room(), file.carried.size());
    text.addPiece(file.carried.size());
    file.carried.clear();
    wanted -= std::min(wanted, text.text().size());
    while (!text.hasAllLines()) {
        const std::size_t size =
            file.source.read(text.room(), std::min(std::max(wanted, m_pieceSize), text.roomSize()));
        if (size == 0) {
            return false; // the end, or more text than regular lines can have
        }
        text.addPiece(size);
        wanted = 0;
    }
    file.carried = text.cutBehindLastLine();
    file.expectedSize = text.text().size() + kSizeToSpare;
    return text.isRegular();
}

/// Threads that come later give back what follows it.
void BatchReader::giveBack(File& file, const RecordText& text) {
    file.rest.append(text.text());
}

std::uint64_t BatchReader::newFileBytes(File& file) {
    const std::uint64_t before = file.fileBytesTaken;
    file.fileBytesTaken = file.source.fileBytesTaken();
    return file.fileBytesTaken - before;
}

std::string BatchReader::takeRest(File& file) {
    return std::move(file.rest) + std::move(file.carried);
}

// --- The hand-over to the line-by-line reader

ResumedReads::ResumedReads(std::string givenBack, ReadSource& source)
    : m_givenBack(std::move(givenBack)), m_source(source) {}

platform::Status ResumedReads::verifyRest() {
    if (platform::Status sound = m_source.verifyRest(); !sound) {
        setStatus(std::move(sound));
    }
    return status();
}

RestOfFile ResumedReads::countRest() {
    platform::Status reached = status();
    const RestOfFile rest = reads::countRest(*this);
    setStatus(std::move(reached));
    return rest;
}

bool ResumedReads::nextBlock() {
    if (!m_isInSource) {
        m_isInSource = true;
        if (!m_givenBack.empty()) {
            give(m_givenBack);
            return true;
        }
    }
    const std::size_t size = m_source.available();
    if (size == 0) {
        setStatus(m_source.status());
        return false;
    }
    give({m_source.next(), size});
    m_source.skip(size);
    return true;
}

void ResumedReads::give(std::string_view block) {
    m_zeroBytes += static_cast<std::uint64_t>(std::count(block.begin(), block.end(), '\0'));
    setBlock(block.data(), block.size());
}

} // namespace reads
