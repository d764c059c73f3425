// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/line_ends.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/avx2.h"
#include "reads/record_text.h"

namespace reads {
namespace {

constexpr std::size_t kLength = 40;

std::string record(const std::string& header, std::size_t length = kLength) {
    return header + "\n" + std::string(length, 'A') + "\n+\n" + std::string(length, 'F') + "\n";
}

std::vector<std::uint32_t> lineEndsOf(const std::string& text) {
    std::vector<std::uint32_t> places;
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1)) {
        places.push_back(static_cast<std::uint32_t>(at));
    }
    return places;
}

/// How many records of a text with the shape of 40 letters are noted; their line ends are the ones
/// that are there.
std::size_t noted(std::string text, std::size_t most = 100, std::string behind = {}) {
    const std::vector<std::uint32_t> ends = lineEndsOf(text);
    const std::size_t size = text.size();
    // What a text before this one left behind it.
    behind += record("@left") + record("@left");
    text += behind.substr(0, RecordText::kReadableBeyond);
    std::vector<std::uint32_t> places(4 * most);
    const std::size_t count =
        noteRecordsOfShape(kLength, std::string_view(text).substr(0, size), 0, places.data(), most);
    for (std::size_t i = 0; i < 4 * count; ++i) {
        EXPECT_EQ(places[i], ends.at(i)) << i;
    }
    return count;
}

class RecordShapes : public testing::Test {
protected:
    void SetUp() override {
        if (!platform::avx2IsThere()) {
            GTEST_SKIP() << "this processor has no vectors for it";
        }
    }
};

TEST_F(RecordShapes, AreNotedWhateverTheHeadersAre) {
    std::string text;
    for (std::size_t length = 0; length < 200; ++length) {
        text += record("@" + std::string(length * length % 211, 'h'));
    }
    EXPECT_EQ(noted(text, 1000), 200u);
    EXPECT_EQ(noted(text, 7), 7u);
    EXPECT_EQ(noted(text, 0), 0u);
}

TEST_F(RecordShapes, AreNotedOnlyAsFarAsTheTextGoes) {
    const std::string text = record("@1") + record("@2 with more");
    for (std::size_t size = 0; size < text.size(); ++size) {
        // Behind it stands, and does not count, what would complete the record.
        EXPECT_EQ(noted(text.substr(0, size), 100, text.substr(size)),
                  size >= record("@1").size() ? 1u : 0u)
            << size;
    }
}

TEST_F(RecordShapes, AreGivenUpAtARecordThatHasAnother) {
    const std::string good = record("@good");
    for (const std::string& other :
         {record("@other", kLength + 1), record("@other", kLength - 1), record("@other", 0),
          "@other\n" + std::string(kLength, 'A') + "\n+other\n" + std::string(kLength, 'F') + "\n",
          "@other\n" + std::string(kLength, 'A') + "\n\n" + std::string(kLength, 'F') + "\n",
          "@other\n" + std::string(kLength, 'A') + "\n+\n" + std::string(kLength + 3, 'F') + "\n",
          "@other\n" + std::string(kLength, 'A') + "\n+\n" + std::string(kLength - 3, 'F') + "\n",
          "\n" + good}) {
        EXPECT_EQ(noted(good + good + other + good), 2u) << other;
    }
}

TEST_F(RecordShapes, AreGivenUpAtACharacterThatMayEndALine) {
    const std::string good = record("@good");
    for (std::size_t place = 0; place < good.size(); ++place) {
        for (const char odd : {'\r', '\0', '\n'}) {
            std::string other = good;
            other[place] = odd;
            if (other != good) {
                EXPECT_EQ(noted(good + other + good), 1u) << place;
            }
        }
    }
}

TEST_F(RecordShapes, TakeAnyByteOfAHeaderThatEndsNoLine) {
    for (int byte = 1; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        if (letter != '\n' && letter != '\r') {
            EXPECT_EQ(noted(record("@" + std::string(3, letter))), 1u) << byte;
        }
    }
}

TEST_F(RecordShapes, AreNotKnownOfShortSequences) {
    const std::string text = record("@short", 31);
    std::vector<std::uint32_t> places(4);
    EXPECT_EQ(noteRecordsOfShape(31, text, 0, places.data(), 1), 0u);
}

} // namespace
} // namespace reads
