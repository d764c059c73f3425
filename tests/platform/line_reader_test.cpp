// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/byte_stream.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/memory_stream.h"

using platform::readLineFromStream;
using support::MemoryStream;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char kUntouched = '#';

/// What one call gave: the text up to its NUL, and the buffer as it was left.
struct Read {
    std::optional<std::string> line;
    std::string buffer;
};

Read readOne(MemoryStream& stream, std::ptrdiff_t limit) {
    const std::size_t room = limit > 0 ? static_cast<std::size_t>(limit) + 1 : 1;
    std::string buffer(room + 1, kUntouched); // one more, to see that it stays untouched
    const char* line = readLineFromStream(buffer.data(), limit, stream);
    EXPECT_EQ(buffer.back(), kUntouched);
    EXPECT_TRUE(line == nullptr || line == buffer.data());
    buffer.pop_back();
    return {line ? std::optional<std::string>(line) : std::nullopt, buffer};
}

/// All lines up to the first call that gives none, with every size of block.
std::vector<std::string> linesOf(const std::string& text, std::ptrdiff_t limit = 20) {
    std::optional<std::vector<std::string>> agreed;
    for (std::size_t blockSize = 1; blockSize <= text.size() + 1; ++blockSize) {
        MemoryStream stream(text, blockSize);
        std::vector<std::string> lines;
        while (const auto line = readOne(stream, limit).line) {
            lines.push_back(*line);
        }
        EXPECT_TRUE(!agreed || *agreed == lines) << "blocks of " << blockSize;
        agreed = lines;
    }
    return *agreed;
}

std::string restOf(MemoryStream& stream) {
    std::string rest;
    while (stream.peek() != MemoryStream::kEnd) {
        rest += static_cast<char>(stream.get());
    }
    return rest;
}

} // namespace

TEST(LineReader, EndsLinesAtLineFeeds) {
    EXPECT_THAT(linesOf("one\ntwo\n\nfour\n"), ElementsAre("one", "two", "", "four"));
}

TEST(LineReader, EndsLinesAtCarriageReturnAndLineFeedTogether) {
    EXPECT_THAT(linesOf("one\r\ntwo\r\n\r\nfour\r\n"), ElementsAre("one", "two", "", "four"));
}

TEST(LineReader, EndsLinesAtALoneCarriageReturn) {
    EXPECT_THAT(linesOf("one\rtwo\r\rfour\n"), ElementsAre("one", "two", "", "four"));
}

TEST(LineReader, TakesOneLineFeedOnlyWithACarriageReturn) {
    EXPECT_THAT(linesOf("one\r\n\ntwo\n\rthree\n"), ElementsAre("one", "", "two", "", "three"));
}

TEST(LineReader, ReadsTheLastLineWithoutALineEnd) {
    EXPECT_THAT(linesOf("one\ntwo"), ElementsAre("one", "two"));
    EXPECT_THAT(linesOf("x"), ElementsAre("x"));
}

TEST(LineReader, GivesNoLineAtTheEndOfTheStream) {
    EXPECT_THAT(linesOf(""), IsEmpty());
    MemoryStream stream("one\n");
    EXPECT_EQ(readOne(stream, 10).line, "one");
    const Read atEnd = readOne(stream, 10);
    EXPECT_EQ(atEnd.line, std::nullopt);
    EXPECT_EQ(atEnd.buffer[0], '\0');
    EXPECT_EQ(readOne(stream, 10).line, std::nullopt);
}

TEST(LineReader, EndsALineAtALastCarriageReturnAsAtTheEndOfTheStream) {
    EXPECT_THAT(linesOf("one\r"), ElementsAre("one"));
    EXPECT_THAT(linesOf("one\ntwo\r"), ElementsAre("one", "two"));
}

TEST(LineReader, GivesNoEmptyLineForALastCarriageReturn) {
    EXPECT_THAT(linesOf("\r"), IsEmpty());
    EXPECT_THAT(linesOf("one\n\r"), ElementsAre("one"));
    // The first carriage return ends an empty line, for another byte follows; the last does not.
    EXPECT_THAT(linesOf("\r\r"), ElementsAre(""));
    EXPECT_THAT(linesOf("\r\n"), ElementsAre(""));
}

TEST(LineReader, StoresAnEmptyTextForALimitBelowOne) {
    for (const std::ptrdiff_t limit : {0, -1, -1000}) {
        MemoryStream stream("one\n");
        const Read read = readOne(stream, limit);
        EXPECT_EQ(read.line, std::nullopt);
        EXPECT_EQ(read.buffer[0], '\0');
        EXPECT_EQ(restOf(stream), "one\n");
    }
}

TEST(LineReader, ReadsALineOfOneByteLessThanTheLimit) {
    EXPECT_THAT(linesOf("abcd\nx\n", 5), ElementsAre("abcd", "x"));
}

TEST(LineReader, StopsAtTheLimitAndLeavesTheRestInTheStream) {
    for (std::size_t blockSize = 1; blockSize < 10; ++blockSize) {
        MemoryStream stream("abcdefg\nx\n", blockSize);
        const Read stopped = readOne(stream, 5);
        EXPECT_EQ(stopped.line, std::nullopt);
        EXPECT_EQ(stopped.buffer, std::string("abcde\0", 6));
        EXPECT_EQ(readOne(stream, 5).line, "fg");
        EXPECT_EQ(readOne(stream, 5).line, "x");
    }
}

TEST(LineReader, StopsAtTheLimitEvenRightBeforeALineEnd) {
    for (const std::string end : {"\n", "\r\n", "\r", ""}) {
        MemoryStream stream("abcde" + end);
        const Read stopped = readOne(stream, 5);
        EXPECT_EQ(stopped.line, std::nullopt);
        EXPECT_EQ(stopped.buffer, std::string("abcde\0", 6));
        EXPECT_EQ(restOf(stream), end);
    }
}

TEST(LineReader, ReadsOnlyEmptyLinesWithALimitOfOne) {
    EXPECT_THAT(linesOf("\n\r\n\rx\n", 1), ElementsAre("", "", ""));
}

TEST(LineReader, StoresAndCountsNulBytes) {
    MemoryStream stream(std::string("ab\0cd\nx\n", 8), 3);
    const Read withNul = readOne(stream, 6);
    EXPECT_EQ(withNul.line, "ab");
    EXPECT_EQ(withNul.buffer, std::string("ab\0cd\0", 6) + kUntouched);
    EXPECT_EQ(readOne(stream, 6).line, "x");

    MemoryStream longer(std::string("ab\0cd\nx\n", 8), 3);
    EXPECT_EQ(readOne(longer, 5).line, std::nullopt);
}

TEST(LineReader, TakesALineOfNulBytesAloneForALine) {
    MemoryStream stream(std::string("\0\0", 2));
    EXPECT_EQ(readOne(stream, 10).line, "");
    EXPECT_EQ(readOne(stream, 10).line, std::nullopt);
}

TEST(LineReader, KeepsBytesBeyondAscii) {
    EXPECT_THAT(linesOf("\xff\xc3\xa4\x80\n\xfe"), ElementsAre("\xff\xc3\xa4\x80", "\xfe"));
}

TEST(LineReader, EndsWhereTheStreamFails) {
    MemoryStream stream("one\ntw", 4, "truncated data");
    EXPECT_EQ(readOne(stream, 10).line, "one");
    EXPECT_EQ(readOne(stream, 10).line, "tw");
    EXPECT_EQ(readOne(stream, 10).line, std::nullopt);
    EXPECT_FALSE(stream.status());
}

// All texts of up to six bytes over an alphabet of the bytes that matter, with every limit and
// size of block, against the rules written for a whole text.
namespace {

/// The first line of `text` by the rules, and how many bytes it takes.
std::pair<Read, std::size_t> firstLine(std::string_view text, std::size_t limit) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string stored(text.substr(0, std::min(end, limit)));
    Read read{stored.c_str(), stored + '\0'};
    if (end >= limit) {
        read.line.reset();
        return {read, limit};
    }
    const std::string_view ending = text.substr(end);
    const bool endsAtTheEnd = ending.empty() || ending == "\r";
    if (endsAtTheEnd && stored.empty()) {
        read.line.reset();
    }
    return {read,
            end + (ending.substr(0, 2) == "\r\n" ? 2 : std::min<std::size_t>(1, ending.size()))};
}

std::string textNumber(std::size_t number, std::size_t length) {
    constexpr std::string_view kBytes("A\r\n\0", 4);
    std::string text;
    for (std::size_t i = 0; i < length; ++i) {
        text += kBytes[number % kBytes.size()];
        number /= kBytes.size();
    }
    return text;
}

void expectLinesByTheRules(const std::string& text, std::size_t limit, std::size_t blockSize) {
    MemoryStream stream(text, blockSize);
    std::string_view left = text;
    do {
        const auto [expected, taken] = firstLine(left, limit);
        const Read read = readOne(stream, static_cast<std::ptrdiff_t>(limit));
        ASSERT_EQ(read.line, expected.line) << testing::PrintToString(text) << limit << blockSize;
        ASSERT_EQ(read.buffer.substr(0, expected.buffer.size()), expected.buffer);
        left.remove_prefix(taken);
    } while (!left.empty());
    ASSERT_EQ(stream.peek(), MemoryStream::kEnd);
}

} // namespace

TEST(LineReader, FollowsTheRulesOnEveryShortText) {
    for (std::size_t length = 0; length <= 6; ++length) {
        for (std::size_t number = 0; number < std::size_t{1} << (2 * length); ++number) {
            const std::string text = textNumber(number, length);
            for (std::size_t limit = 1; limit <= length + 1; ++limit) {
                for (std::size_t blockSize = 1; blockSize <= 3; ++blockSize) {
                    expectLinesByTheRules(text, limit, blockSize);
                    ASSERT_FALSE(testing::Test::HasFatalFailure());
                }
            }
        }
    }
}
