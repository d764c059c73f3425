// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The reader of pairs ends where its rules say so: at an empty line, at the end of the shorter
// file. Nothing fails there, and a count of a third of the reads looks like a count of all. So each
// run keeps account of what it read of each file and what it left. Tested by
// input_account_test.cpp.
#include "reads/input_account.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "platform/unicode.h"

namespace reads {
namespace {

constexpr std::size_t kColonsOfAName = 6;
constexpr std::size_t kColonsUpToTheLane = 4;

std::string_view nameOf(std::string_view header) {
    return header.substr(0, header.find(' '));
}

/// What follows the first blank says which read it is: '1', '2', or '\0' where it does not.
char readNumberOf(std::string_view header) {
    const std::size_t blank = header.find(' ');
    if (blank == std::string_view::npos || header.size() < blank + 3 || header[blank + 2] != ':') {
        return '\0';
    }
    return header[blank + 1];
}

} // namespace

void HeaderFacts::add(std::string_view header) {
    const char number = readNumberOf(header);
    m_read1Headers += number == '1' ? 1 : 0;
    m_read2Headers += number == '2' ? 1 : 0;
    addLaneOf(header);
}

void HeaderFacts::addLaneOf(std::string_view header) {
    if (!m_lanePrefix.empty() && header.substr(0, m_lanePrefix.size()) == m_lanePrefix) {
        return;
    }
    const std::string_view name = nameOf(header);
    std::array<std::size_t, kColonsOfAName> colons{};
    std::size_t count = 0;
    for (std::size_t at = name.find(':'); at != std::string_view::npos && count < colons.size();
         at = name.find(':', at + 1)) {
        colons[count++] = at;
    }
    m_lanePrefix.clear();
    if (count < colons.size()) {
        return;
    }
    const auto field = [&](std::size_t number) {
        return std::string(
            name.substr(colons[number - 1] + 1, colons[number] - colons[number - 1] - 1));
    };
    m_lanePrefix = name.substr(0, colons[kColonsUpToTheLane - 1] + 1);
    keep({field(2), field(3)});
}

void HeaderFacts::keep(FlowCellLane lane) {
    const auto place = std::lower_bound(m_lanes.begin(), m_lanes.end(), lane);
    if ((place == m_lanes.end() || *place != lane) && m_lanes.size() < kMostLanes) {
        m_lanes.insert(place, std::move(lane));
    }
}

void HeaderFacts::add(const HeaderFacts& other) {
    m_read1Headers += other.m_read1Headers;
    m_read2Headers += other.m_read2Headers;
    for (const FlowCellLane& lane : other.m_lanes) {
        keep(lane);
    }
}

RestOfFile countRest(platform::ByteStream& stream) {
    RestOfFile rest;
    char last = '\n';
    for (std::size_t size = stream.available(); size > 0; size = stream.available()) {
        const std::string_view block(stream.next(), size);
        const auto count = [&block](char byte) {
            return static_cast<std::uint64_t>(std::count(block.begin(), block.end(), byte));
        };
        const std::uint64_t feeds = count('\n');
        const std::uint64_t returns = count('\r');
        rest.bytes += size;
        rest.zeroBytes += count('\0');
        rest.textBytes += static_cast<std::uint64_t>(
            std::count_if(block.begin(), block.end(), platform::isVisible));
        // A carriage return ends a line, with the line feed behind it if there is one.
        rest.lines += static_cast<std::int64_t>(feeds + returns);
        for (std::size_t at = returns > 0 ? block.find("\r\n") : std::string_view::npos;
             at != std::string_view::npos; at = block.find("\r\n", at + 2)) {
            --rest.lines;
        }
        if (last == '\r' && block.front() == '\n') {
            --rest.lines;
        }
        last = block.back();
        stream.skip(size);
    }
    if (last != '\n' && last != '\r') {
        ++rest.lines;
    }
    return rest;
}

void closeAccount(InputAccount& account, const EndOfReading& end) {
    account.complete = true;
    account.read1.end = end.end;
    account.read1.rest = end.rest1;
    account.read2.rest = end.rest2;
    if (account.read1.endedEarly()) {
        return;
    }
    account.read1.surplusRecords = recordsOfLines(end.unpairedLines1);
    const std::int64_t linesLeft = end.rest2.textBytes > 0 ? end.rest2.lines : 0;
    account.read2.surplusRecords = recordsOfLines(end.unpairedLines2 + linesLeft);
}

} // namespace reads
