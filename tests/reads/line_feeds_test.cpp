// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/line_ends.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/avx2.h"

namespace {

using reads::LineFeeds;

using Search = LineFeeds (*)(const char*, std::size_t, std::uint32_t, std::uint32_t*, std::size_t);

struct Way {
    const char* name;
    Search search;
};

/// Every rule holds for each way, and for the one that is chosen.
class LineFeedsTest : public testing::TestWithParam<Way> {
protected:
    void SetUp() override {
        if (GetParam().search == reads::findLineFeedsByAvx2 && !platform::avx2IsThere()) {
            GTEST_SKIP() << "this processor has no AVX2";
        }
    }

    struct Found {
        std::vector<std::uint32_t> places;
        bool oddBytes = false;
    };

    /// Searches a copy that ends where its memory ends, so that a sanitizer sees a step too far.
    static Found find(const std::string& text, std::size_t most, std::uint32_t base = 0) {
        const std::vector<char> exact(text.begin(), text.end());
        std::vector<std::uint32_t> places(most + reads::kLineFeedsBeyond);
        const LineFeeds found =
            GetParam().search(exact.data(), exact.size(), base, places.data(), most);
        places.resize(std::min(found.count, places.size()));
        EXPECT_EQ(found.count, places.size());
        return {places, found.oddBytes};
    }

    static std::vector<std::uint32_t> allPlaces(const std::string& text, std::uint32_t base = 0) {
        std::vector<std::uint32_t> places;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n') {
                places.push_back(base + static_cast<std::uint32_t>(i));
            }
        }
        return places;
    }
};

TEST_P(LineFeedsTest, AreFoundAtEveryPlaceOfTextsOfEverySize) {
    for (std::size_t size = 0; size <= 200; ++size) {
        EXPECT_TRUE(find(std::string(size, 'A'), 5).places.empty());
        for (std::size_t place = 0; place < size; ++place) {
            std::string text(size, 'A');
            text[place] = '\n';
            ASSERT_EQ(find(text, 5).places, allPlaces(text)) << place << " of " << size;
        }
    }
}

TEST_P(LineFeedsTest, AreFoundHoweverDenseTheyAre) {
    std::mt19937 random(7);
    for (const unsigned rarity : {1u, 2u, 3u, 10u, 100u}) {
        for (int round = 0; round < 100; ++round) {
            std::string text(random() % 1000, '\x0b');
            for (char& byte : text) {
                byte = random() % rarity == 0 ? '\n' : static_cast<char>(0x80 + random() % 128);
            }
            const Found found = find(text, text.size(), 1000);
            ASSERT_EQ(found.places, allPlaces(text, 1000));
            ASSERT_FALSE(found.oddBytes);
        }
    }
}

TEST_P(LineFeedsTest, StopSoonBehindTheMostThatAreWanted) {
    const std::string text(500, '\n');
    for (std::size_t most = 0; most <= text.size(); ++most) {
        const Found found = find(text, most);
        ASSERT_GE(found.places.size(), most);
        const auto all = allPlaces(text);
        ASSERT_TRUE(std::equal(found.places.begin(), found.places.end(), all.begin()));
    }
}

TEST_P(LineFeedsTest, NoticeACarriageReturnOrNulAtEveryPlace) {
    for (const char odd : {'\r', '\0'}) {
        for (std::size_t size = 1; size <= 150; ++size) {
            for (std::size_t place = 0; place < size; ++place) {
                std::string text(size, 'A');
                text[place] = odd;
                ASSERT_TRUE(find(text, 5).oddBytes) << place << " of " << size;
            }
        }
    }
}

TEST_P(LineFeedsTest, TakeOtherControlBytesForText) {
    EXPECT_FALSE(find("\x01\t\x0b\x0c\x0e\x1f\x7f\xff\n", 5).oddBytes);
}

INSTANTIATE_TEST_SUITE_P(Ways, LineFeedsTest,
                         testing::Values(Way{"Chosen", reads::findLineFeeds},
                                         Way{"Portable", reads::findLineFeedsPortably},
                                         Way{"Avx2", reads::findLineFeedsByAvx2}),
                         [](const auto& way) { return way.param.name; });

} // namespace
