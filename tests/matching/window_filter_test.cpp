// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_filter.h"

#include <algorithm>
#include <random>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "matching/record_text.h"
#include "platform/avx2.h"

namespace matching {
namespace {

std::string randomText(std::mt19937& random, std::size_t length, std::string_view letters) {
    std::string text;
    while (text.size() < length) {
        text += letters[random() % letters.size()];
    }
    return text;
}

std::uint32_t codeOf(std::string window) {
    const std::size_t length = window.size();
    window.append(RecordText::kReadableBeyond, 'T');
    return windowCode(window.data(), length);
}

/// A text and a look at each place of it.
struct Looked {
    explicit Looked(std::string given) : text(std::move(given)) {
        const std::size_t places = text.size();
        text.append(RecordText::kReadableBeyond, 'C');
        for (std::size_t place = 0; place < places; ++place) {
            looks.push_back({text.data() + place, 1, static_cast<std::uint16_t>(place)});
        }
    }
    Looked(const Looked&) = delete;

    std::string text;
    std::vector<Look> looks;
};

using Numbers = std::vector<std::uint32_t>;

template <class Select>
Numbers numbersOf(std::size_t looks, Select select) {
    Numbers numbers(looks);
    numbers.resize(static_cast<std::size_t>(select(numbers.data()) - numbers.data()));
    return numbers;
}

/// Of the first `count` looks, by every way there is.
Numbers selected(const WindowFilter& filter, const Looked& looked, std::size_t count) {
    const std::span<const Look> looks(looked.looks.data(), count);
    Numbers numbers = numbersOf(count, [&](auto* to) { return filter.select(looks, to); });
    EXPECT_EQ(numbersOf(count, [&](auto* to) { return filter.selectPortably(looks, to); }),
              numbers);
    if (platform::avx2IsThere()) {
        EXPECT_EQ(numbersOf(count, [&](auto* to) { return filter.selectByAvx2(looks, to); }),
                  numbers);
    }
    return numbers;
}

std::vector<CoreWindow> windowsOf(const std::string& text, std::size_t length) {
    std::vector<CoreWindow> windows;
    for (std::size_t place = 0; place + length <= text.size(); ++place) {
        windows.push_back({hashOfCode(codeOf(text.substr(place, length))), 0, 0});
    }
    return windows;
}

TEST(WindowCode, HasTwoBitsOfEachLetterTheFirstOnesLowest) {
    EXPECT_EQ(codeOf("AAAAAAAA"), 0u);
    EXPECT_EQ(codeOf("CAAAAAAA"), 1u);
    EXPECT_EQ(codeOf("TAAAAAAA"), 2u);
    EXPECT_EQ(codeOf("GAAAAAAA"), 3u);
    EXPECT_EQ(codeOf("AAAAAAAAC"), 1u << 16);
    EXPECT_EQ(codeOf("CCCCCCCCCCCCCCCC"), 0x55555555u);
    EXPECT_EQ(codeOf("cgatcgat"), codeOf("CGATCGAT"));
}

TEST(WindowHash, IsADifferentOneForEachCode) {
    std::set<std::uint32_t> hashes;
    for (std::uint32_t code = 0; code < 1u << 16; ++code) {
        hashes.insert(hashOfCode(code << 8));
    }
    EXPECT_EQ(hashes.size(), 1u << 16);
}

TEST(WindowFilter, SelectsNothingWithoutCores) {
    std::mt19937 random(1);
    const Looked looked(randomText(random, 100, "ACGT"));
    EXPECT_TRUE(selected(WindowFilter(), looked, 100).empty());
    EXPECT_TRUE(selected(WindowFilter(), looked, 0).empty());
}

class EveryLength : public testing::TestWithParam<std::size_t> {};

TEST_P(EveryLength, SelectsEveryWindowOfACoreAndFewOthers) {
    std::mt19937 random(2);
    const std::string core = randomText(random, 60, "ACGT");
    const WindowFilter filter(GetParam(), windowsOf(core, GetParam()));
    const Looked looked(randomText(random, 1000, "ACGT") + core + randomText(random, 1000, "ACGT"));
    const Numbers numbers = selected(filter, looked, looked.looks.size());
    for (std::uint32_t place = 1000; place + GetParam() <= 1060; ++place) {
        EXPECT_TRUE(std::binary_search(numbers.begin(), numbers.end(), place)) << place;
    }
    EXPECT_LT(numbers.size(), 61 - GetParam() + 40);
}

INSTANTIATE_TEST_SUITE_P(Lengths, EveryLength, testing::Values(8u, 9u, 12u, 15u, 16u));

TEST(WindowFilter, SelectsTheSameByEveryWayWhateverTheTextHolds) {
    std::mt19937 random(3);
    std::string bytes(256, ' ');
    std::generate(bytes.begin(), bytes.end(),
                  [byte = 0]() mutable { return static_cast<char>(byte++); });
    const std::string core = randomText(random, 300, "ACGTN");
    const WindowFilter filter(11, windowsOf(core, 11));
    const Looked looked(randomText(random, 200, bytes) + core + randomText(random, 200, "acgtn"));
    for (std::size_t count = 0; count < looked.looks.size(); ++count) {
        const Numbers numbers = selected(filter, looked, count);
        EXPECT_EQ(std::count_if(numbers.begin(), numbers.end(),
                                [](std::uint32_t number) { return number >= 200 && number < 490; }),
                  count < 200
                      ? 0
                      : std::min<std::ptrdiff_t>(static_cast<std::ptrdiff_t>(count) - 200, 290))
            << count;
    }
}

} // namespace
} // namespace matching
