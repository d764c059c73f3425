// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A sequencer writes a file for each lane, and a sample's lanes are one sample's reads. Readers of
// pairs know one source per read, so the lanes are put together below them, byte for byte: every
// rule of lines and records then holds as it does for one file that somebody made of the lanes.
//
// Blocks are handed on as they are, and large pieces go straight to where they are wanted, so this
// costs nothing per byte. Tested by concatenated_reads_test.cpp.
#include "reads/concatenated_reads.h"

#include <utility>

namespace reads {

ConcatenatedReads::ConcatenatedReads(std::vector<std::unique_ptr<ReadSource>> parts)
    : m_parts(std::move(parts)) {}

std::uint64_t ConcatenatedReads::fileSize() const noexcept {
    std::uint64_t sum = 0;
    for (const auto& part : m_parts) {
        sum += part->fileSize();
    }
    return sum;
}

/// What was handed on counts as taken.
std::uint64_t ConcatenatedReads::fileBytesTaken() const noexcept {
    std::uint64_t sum = 0;
    for (const auto& part : m_parts) {
        sum += part->fileBytesTaken();
    }
    return sum;
}

std::uint64_t ConcatenatedReads::gzipMembers() const noexcept {
    std::uint64_t sum = 0;
    for (const auto& part : m_parts) {
        sum += part->gzipMembers();
    }
    return sum;
}

platform::Status ConcatenatedReads::verifyRest() {
    for (const auto& part : m_parts) {
        if (platform::Status sound = part->verifyRest(); !sound) {
            return sound;
        }
    }
    return {};
}

bool ConcatenatedReads::nextBlock() {
    while (m_current < m_parts.size()) {
        ReadSource& part = *m_parts[m_current];
        if (const std::size_t size = part.available(); size > 0) {
            setBlock(part.next(), size);
            part.skip(size);
            return true;
        }
        if (!goOnWithNextPart()) {
            return false;
        }
    }
    return false;
}

std::size_t ConcatenatedReads::readPastBlock(char* to, std::size_t size) {
    while (m_current < m_parts.size()) {
        if (const std::size_t count = m_parts[m_current]->read(to, size); count > 0) {
            return count;
        }
        if (!goOnWithNextPart()) {
            return 0;
        }
    }
    return 0;
}

/// From the end of the current part. False where that end is a failure.
bool ConcatenatedReads::goOnWithNextPart() {
    setStatus(m_parts[m_current]->status());
    if (status()) {
        ++m_current;
    }
    return status().ok();
}

} // namespace reads
