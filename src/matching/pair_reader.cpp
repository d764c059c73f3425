// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/pair_reader.h"

#include <cstring>
#include <utility>

#include "platform/line_reader.h"

namespace matching {
namespace {

constexpr auto kLimit = static_cast<std::ptrdiff_t>(kLineLimit);

bool readLine(char* buffer, platform::ByteStream& stream) {
    return platform::readLineFromStream(buffer, kLimit, stream) != nullptr;
}

} // namespace

PairReader::PairReader(platform::ByteStream& read1, platform::ByteStream& read2,
                       std::string read1Path)
    : m_read1(read1), m_read2(read2), m_read1Path(std::move(read1Path)) {}

bool PairReader::readLookAhead() {
    // Deliberate: the outcome is not looked at. An over-long header is used as far as it was read.
    readLine(m_lookAhead.data(), m_read1);
    return m_lookAhead[0] != '\0';
}

bool PairReader::fill(ReadPairBatch& batch) {
    batch.clear();
    while (!batch.full() && readHeaders(batch.size() == 0)) {
        if (!keepName(batch) || !keepSequencesAndQualities(batch)) {
            return false;
        }
        batch.completePair();
    }
    return true;
}

/// Both headers are read even if the first is missing: the files stay in lockstep.
bool PairReader::readHeaders(bool firstOfBatch) {
    bool haveHeader1 = true;
    if (firstOfBatch) {
        m_header1 = m_lookAhead;
    } else {
        haveHeader1 = readLine(m_header1.data(), m_read1);
    }
    const bool haveHeader2 = readLine(m_header2.data(), m_read2);
    return haveHeader1 && haveHeader2;
}

bool PairReader::keepName(ReadPairBatch& batch) {
    cutHeaders(m_header1.data(), m_header2.data());
    if (std::strcmp(m_header1.data(), m_header2.data()) != 0) {
        m_error = "Two fastq files do not match at " + std::string(m_header1.data()) + ".\n";
        return false;
    }
    std::memcpy(batch.lineBuffer(), m_header1.data(), std::strlen(m_header1.data()) + 1);
    batch.keepLine(ReadPairBatch::kName);
    return true;
}

bool PairReader::keepSequencesAndQualities(ReadPairBatch& batch) {
    const auto keep = [&](ReadPairBatch::Line line, platform::ByteStream& stream) {
        const bool haveLine = readLine(batch.lineBuffer(), stream);
        batch.keepLine(line);
        return haveLine;
    };
    const bool complete =
        keep(ReadPairBatch::kRead1, m_read1) && keep(ReadPairBatch::kRead2, m_read2) &&
        readLine(m_separator.data(), m_read1) && readLine(m_separator.data(), m_read2) &&
        keep(ReadPairBatch::kQuality1, m_read1) && keep(ReadPairBatch::kQuality2, m_read2);
    if (!complete) {
        // Deliberate: read 1's path stands in both places, and the wording is fixed.
        m_error = m_read1Path + " or " + m_read1Path + " are trimcated/\n";
    }
    return complete;
}

void cutHeaders(char* header1, char* header2) noexcept {
    const std::size_t length = std::strlen(header1);
    for (std::size_t place = 0; place < length; ++place) {
        const bool endsHere = header1[place] == ' ';
        if (endsHere) {
            header1[place] = '\0';
        }
        // Beyond its own end header 2 holds leftovers, which a cut does not bring back.
        if (header2[place] == ' ') {
            header2[place] = '\0';
        }
        if (endsHere) {
            return;
        }
    }
}

} // namespace matching
