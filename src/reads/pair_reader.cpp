// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of docs/matching.md, "Reading both files in lockstep", one function for each. Eight
// lines make a pair, and they are read alternately from both files. So when a file misses a line,
// both stand at the same record. A line costs a search for its end and a copy: about twice what
// BatchReader needs, which reads most of a run and leaves to this file what needs the rules. Tested
// by pair_reader_test.cpp.
#include "reads/pair_reader.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/byte_stream.h"
#include "platform/unicode.h"

namespace reads {
namespace {

/// Read marks at the end of names, as old sequencers and archives write them, make the names of a
/// pair differ.
std::string whyNamesDiffer(std::string_view name1, std::string_view name2) {
    const bool marked = name1.size() > 2 && name1.size() == name2.size() &&
                        name1.substr(name1.size() - 2) == "/1" &&
                        name2.substr(name2.size() - 2) == "/2" &&
                        name1.substr(0, name1.size() - 2) == name2.substr(0, name2.size() - 2);
    return marked ? "The read names end in /1 and /2, so no two of them are one name. Remove these "
                    "marks from both files, or put a blank before them"
                  : std::string();
}

/// One of two headers, of which at least one is missing or too long.
void accountForHeader(bool isWhole, std::string_view header, std::int64_t& longHeaders,
                      std::int64_t& unpairedLines) {
    if (!isWhole && header.size() >= kLineLimit) {
        ++longHeaders;
    } else if (std::any_of(header.begin(), header.end(), platform::isVisible)) {
        ++unpairedLines;
    }
}

/// Why a pair of lines that are due as headers do not agree, as far as more can be said of it.
std::string whyHeadersDisagree(std::string_view header1, std::string_view header2) {
    return header1.empty() || header2.empty()
               ? "A line without text stands where a read name is due"
               : whyNamesDiffer(nameInHeader1(header1), nameInHeader1(header2));
}

constexpr auto kLimit = static_cast<std::ptrdiff_t>(kLineLimit);

bool readLine(char* buffer, platform::ByteStream& stream) {
    return platform::readLineFromStream(buffer, kLimit, stream) != nullptr;
}

} // namespace

PairReader::PairReader(platform::ByteStream& read1, platform::ByteStream& read2,
                       std::string read1Path)
    : m_read1(read1), m_read2(read2), m_read1Path(std::move(read1Path)) {}

bool PairReader::readLookAhead() {
    const int first = m_read1.peek();
    // Deliberate: the outcome is not looked at. An over-long header is used as far as it was read.
    readLine(m_lookAhead.data(), m_read1);
    if (m_lookAhead[0] != '\0') {
        return true;
    }
    m_end = first == platform::ByteStream::kEnd ? ReadingEnd::endOfFile
            : first == '\0'                     ? ReadingEnd::zeroByte
                                                : ReadingEnd::emptyLine;
    return false;
}

platform::Status PairReader::fill(ReadPairBatch& batch) {
    batch.clear();
    while (!batch.full() && readHeaders(batch.size() == 0)) {
        if (!keepHeaders(batch) || !keepSequencesAndQualities(batch)) {
            return platform::Error{m_error};
        }
        batch.completePairs(1);
    }
    return {};
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
    const bool haveBoth = haveHeader1 && haveHeader2;
    if (!haveBoth) {
        accountForHeader(haveHeader1, m_header1.data(), m_longHeaders1, m_unpairedLines1);
        accountForHeader(haveHeader2, m_header2.data(), m_longHeaders2, m_unpairedLines2);
    }
    return haveBoth;
}

bool PairReader::keepHeaders(ReadPairBatch& batch) {
    const std::string_view header1 = m_header1.data();
    const std::string_view header2 = m_header2.data();
    if (!headersAgree(header1, header2)) {
        m_error = "Two fastq files do not match at ";
        m_error.append(nameInHeader1(header1)).append(".\n");
        m_hint = whyHeadersDisagree(header1, header2);
        return false;
    }
    batch.text1().addLine(header1);
    batch.text2().addLine(header2);
    return true;
}

bool PairReader::keepSequencesAndQualities(ReadPairBatch& batch) {
    const auto keep = [](RecordText& text, platform::ByteStream& stream) {
        const bool haveLine = readLine(text.lineBuffer(), stream);
        text.keepLine();
        return haveLine;
    };
    // The sequences, the separators, the qualities.
    for (std::size_t line = 1; line < kLinesPerRecord; ++line) {
        if (!keep(batch.text1(), m_read1) || !keep(batch.text2(), m_read2)) {
            // Deliberate: read 1's path stands in both places, and the wording is fixed.
            m_error = m_read1Path + " or " + m_read1Path + " are trimcated/\n";
            if (m_header1[0] == '\0') {
                m_hint = "A line without text stands where a read name is due";
            }
            return false;
        }
    }
    return true;
}

std::string_view nameInHeader1(std::string_view header1) noexcept {
    return header1.substr(0, header1.find(' '));
}

bool headersAgree(std::string_view header1, std::string_view header2) noexcept {
    const std::string_view name = nameInHeader1(header1);
    if (header2.substr(0, name.size()) != name) {
        return false;
    }
    const bool header1HasBlank = name.size() < header1.size();
    return header2.size() == name.size() || (header1HasBlank && header2[name.size()] == ' ');
}

} // namespace reads
