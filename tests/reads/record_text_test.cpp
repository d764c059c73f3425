// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/record_text.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace reads {
namespace {

std::vector<std::string> linesOf(const std::string& text, std::size_t most) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = text.find('\n'); end != std::string::npos && lines.size() < most;
         end = text.find('\n', begin)) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

/// Records mostly of one shape, which changes; now and then a line of any length.
std::string randomRecords(std::mt19937& random, std::size_t records) {
    const auto below = [&](std::size_t limit) { return random() % limit; };
    std::string text;
    std::size_t length = 150;
    for (std::size_t i = 0; i < records; ++i) {
        length = below(20) == 0 ? below(200) : length;
        text += "@" + std::string(40 + below(40), 'h') + "\n";
        for (const char letter : {'A', '+', 'F'}) {
            const std::size_t usual = letter == '+' ? 1 : length;
            text += std::string(below(50) == 0 ? below(300) : usual, letter) + "\n";
        }
    }
    return text;
}

void fill(RecordText& text, const std::string& from, std::mt19937& random, std::size_t piece) {
    text.clear();
    std::size_t at = 0;
    while (at < from.size() && !text.hasAllLines()) {
        const std::size_t size =
            std::min({random() % piece + 1, from.size() - at, text.roomSize()});
        from.copy(text.room(), size, at);
        text.addPiece(size);
        at += size;
    }
}

TEST(RecordText, FindsTheSameLinesWhateverTheShapesOfRecordsAndPieces) {
    std::mt19937 random(4);
    RecordText text; // holds what earlier texts left
    for (std::size_t round = 0; round < 60; ++round) {
        const std::string from = randomRecords(random, 1 + random() % 1100);
        fill(text, from, random, std::size_t{1} << (5 + round % 12));
        const std::vector<std::string> lines = linesOf(from, RecordText::kMostLines);
        ASSERT_EQ(text.lineCount(), lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) {
            ASSERT_EQ(text.line(i), lines[i]) << "line " << i << " of round " << round;
        }
        EXPECT_TRUE(text.isRegular());
    }
}

TEST(RecordText, IsNotRegularWithAnOddByteOrALongLineAnywhere) {
    std::mt19937 random(5);
    const std::string good = randomRecords(random, 30);
    RecordText text;
    for (std::size_t place = 0; place < good.size(); place += 1 + random() % 40) {
        for (const char odd : {'\r', '\0'}) {
            std::string from = good;
            from[place] = odd;
            fill(text, from, random, 3000);
            EXPECT_FALSE(text.isRegular()) << place;
        }
        std::string from = good;
        from.insert(place, kLineLimit, 'A');
        fill(text, from, random, 3000);
        EXPECT_FALSE(text.isRegular()) << place;
    }
}

TEST(RecordText, CutsOffWhatStandsBehindAllItsLines) {
    std::mt19937 random(6);
    const std::string from = randomRecords(random, 1002);
    RecordText text;
    fill(text, from, random, from.size() * 2);
    ASSERT_TRUE(text.hasAllLines());
    const std::string_view rest = text.cutBehindLastLine();
    EXPECT_EQ(std::string(text.text()) + std::string(rest),
              from.substr(0, text.text().size() + rest.size()));
    EXPECT_EQ(std::count(text.text().begin(), text.text().end(), '\n'), 4000);
}

} // namespace
} // namespace reads
