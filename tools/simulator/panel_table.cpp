// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/panel_table.h"

#include <charconv>
#include <optional>
#include <string_view>

#include "platform/files.h"

namespace simulator {

namespace {

constexpr std::size_t kColumnCount = 7;
constexpr std::string_view kHeadLine = "sample\tnumber\tformat\tdomain\tmutation\tpairs\tcall";
/// Pairs of one line; a slip of the finger does not fill the disk.
constexpr std::uint64_t kMostPairs = 1'000'000'000;
constexpr std::uint64_t kMostSampleNumber = 1'000'000;

std::optional<std::uint64_t> wholeNumber(std::string_view text, std::uint64_t most) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole && value <= most ? std::optional(value) : std::nullopt;
}

/// "12.5%" of `depth`, in whole hundredths of a per cent, rounded down.
std::optional<std::uint64_t> percentageOf(std::uint64_t depth, std::string_view text) {
    const std::size_t dot = text.find('.');
    std::string hundredths(text.substr(0, dot));
    std::string decimals(dot == std::string_view::npos ? "" : text.substr(dot + 1));
    if (hundredths.empty() || decimals.size() > 2) {
        return std::nullopt;
    }
    decimals.resize(2, '0');
    const auto value = wholeNumber(hundredths + decimals, 1'000'000);
    return value ? std::optional(depth * *value / 10'000) : std::nullopt;
}

std::optional<std::uint64_t> pairCount(std::string_view text, std::uint64_t depth) {
    if (!text.empty() && text.back() == '%') {
        return percentageOf(depth, text.substr(0, text.size() - 1));
    }
    return wholeNumber(text, kMostPairs);
}

/// A name that is safe as the start of a file name and leaves the "_S" of sequencer names alone.
bool isSampleName(std::string_view name) {
    const auto allowed = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-';
    };
    for (const char c : name) {
        if (!allowed(c)) {
            return false;
        }
    }
    return !name.empty();
}

/// Adds one line to the samples, or says what is wrong with it.
std::optional<std::string> addLine(std::vector<Sample>& samples, const std::string& line,
                                   std::uint64_t depth) {
    const std::vector<std::string> fields = platform::splitAt(line, "\t");
    if (fields.size() != kColumnCount) {
        return "expected 7 columns separated by tabs, found " + std::to_string(fields.size());
    }
    const auto number = wholeNumber(fields[1], kMostSampleNumber);
    const auto pairs = pairCount(fields[5], depth);
    if (!isSampleName(fields[0])) {
        return "a sample's name holds letters, digits and -, not '" + fields[0] + "'";
    }
    if (!number || *number == 0) {
        return "the sample's number is a whole number from 1, not '" + fields[1] + "'";
    }
    if (fields[2] != "plain" && fields[2] != "gz") {
        return "the format is plain or gz, not '" + fields[2] + "'";
    }
    if (!pairs) {
        return "pairs is a whole number up to " + std::to_string(kMostPairs) +
               " or a percentage with at most two decimals, not '" + fields[5] + "'";
    }
    const bool continues =
        !samples.empty() && samples.back().name == fields[0] && samples.back().number == *number;
    if (!continues) {
        for (const Sample& earlier : samples) {
            if (earlier.number == *number) {
                return "sample number " + fields[1] + " was used before";
            }
        }
        samples.push_back({fields[0], *number, fields[2] == "gz", {}});
    }
    if (samples.back().gzip != (fields[2] == "gz")) {
        return "sample " + fields[0] + " has two formats";
    }
    samples.back().lines.push_back({fields[3], fields[4], *pairs, fields[6]});
    return std::nullopt;
}

} // namespace

platform::Result<std::vector<Sample>>
parsePanelTable(const std::string& text, const std::string& fileName, std::uint64_t depth) {
    std::vector<Sample> samples;
    bool headSeen = false;
    std::size_t lineNumber = 0;
    for (const std::string& line : platform::splitAt(text, "\n")) {
        ++lineNumber;
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::optional<std::string> fault;
        if (headSeen) {
            fault = addLine(samples, line, depth);
        } else if (line != kHeadLine) {
            fault = "expected the head line 'sample number format domain mutation pairs call', "
                    "separated by tabs";
        }
        headSeen = true;
        if (fault) {
            return platform::Error{fileName + ":" + std::to_string(lineNumber) + ": " + *fault};
        }
    }
    if (samples.empty()) {
        return platform::Error{fileName + ": no sample in the table"};
    }
    return samples;
}

} // namespace simulator
