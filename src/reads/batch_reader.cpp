// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Reading as two stations that every batch passes in order, file 1 and then file 2, each with one
// thread in it. A thread takes its batch through both and goes on to match it, with the text still
// in its core's cache; behind it the next one follows. Nothing is handed from thread to thread, and
// with two threads both files, the disk's or the decoder's work included, are read at once. Tested
// by batch_reader_test.cpp.
#include "reads/batch_reader.h"

#include <algorithm>

#include "reads/pair_reader.h"

namespace reads {
namespace {

/// A stretch is about as long as the one before: so much more makes it fit mostly.
constexpr std::size_t kSizeToSpare = 4096;

/// Whether both begin with the same `size` letters, the last of them a blank. Then they agree,
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

/// Puts the pairs of two regular stretches together; whether none of them takes judgement.
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
        // Here and nowhere later: with its turn at file 1 the next thread must know.
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
        m_stopped = true; // before anybody else gets to the file, where lines are missing now
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

/// Those who come later give back what stands behind it.
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

} // namespace reads
