// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0

#include "platform/property_list.h"

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "platform/utf16.h"

namespace {

using namespace std::string_literals;
using platform::PropertyList;
using platform::readBinaryPropertyList;
using platform::readXmlPropertyList;
using platform::Uid;
using platform::writeBinaryPropertyList;

/// One scalar as a whole binary property list.
template <class Value>
PropertyList roundTrip(Value value) {
    PropertyList list;
    list.top = list.add(value);
    auto read = readBinaryPropertyList(writeBinaryPropertyList(list));
    EXPECT_TRUE(read.ok()) << read.error().message;
    return std::move(read).value();
}

/// A property list of one object given as its bytes.
std::string fileOf(const std::string& object) {
    std::string file = "bplist00" + object;
    const char table = static_cast<char>(file.size());
    file += '\x08';
    file += "\0\0\0\0\0\0\x01\x01"s + "\0\0\0\0\0\0\0\x01"s + "\0\0\0\0\0\0\0\0"s +
            "\0\0\0\0\0\0\0"s + table;
    return file;
}

TEST(BinaryPropertyList, KeepsEveryInteger) {
    constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    for (const std::int64_t value :
         {std::int64_t{0}, std::int64_t{127}, std::int64_t{128}, std::int64_t{255},
          std::int64_t{256}, std::int64_t{65535}, std::int64_t{65536}, std::int64_t{4294967295},
          std::int64_t{4294967296}, std::int64_t{-1}, std::int64_t{-128}, kHighest, kLowest}) {
        const PropertyList list = roundTrip(value);
        EXPECT_EQ(std::get<std::int64_t>(list.objects[list.top]), value);
    }
}

TEST(BinaryPropertyList, ReadsShortIntegersAsUnsigned) {
    const auto list = readBinaryPropertyList(fileOf("\x10\xFF"));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<std::int64_t>(list.value().objects[0]), 255);
}

TEST(BinaryPropertyList, ReadsASixteenByteIntegerThatFits) {
    const auto list = readBinaryPropertyList(fileOf("\x14"s + std::string(15, '\0') + "\x07"));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<std::int64_t>(list.value().objects[0]), 7);
}

TEST(BinaryPropertyList, KeepsAnIntegerBeyond64BitsAsForeign) {
    const auto list = readBinaryPropertyList(fileOf("\x14"s + "\x01" + std::string(15, '\0')));
    ASSERT_TRUE(list.ok());
    EXPECT_TRUE(std::holds_alternative<PropertyList::Other>(list.value().objects[0]));
}

TEST(BinaryPropertyList, KeepsBooleansRealsAndReferences) {
    EXPECT_TRUE(std::get<bool>(roundTrip(true).objects[0]));
    EXPECT_FALSE(std::get<bool>(roundTrip(false).objects[0]));
    EXPECT_EQ(std::get<double>(roundTrip(0.1).objects[0]), 0.1);
    for (const std::uint32_t index : {0U, 255U, 256U, 65536U, 4294967295U}) {
        EXPECT_EQ(std::get<Uid>(roundTrip(Uid{index}).objects[0]).index, index);
    }
}

TEST(BinaryPropertyList, ReadsAFourByteReal) {
    const auto list = readBinaryPropertyList(fileOf("\x22\x3F\x80\0\0"s));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<double>(list.value().objects[0]), 1.0);
}

TEST(BinaryPropertyList, KeepsTexts) {
    for (const std::string& text :
         {""s, "ACGT"s, "14 letters 567"s, "15 letters 5678"s, std::string(70000, 'x'), "a\0b"s,
          "Zürich"s, "\xF0\x9F\xA7\xAC dna"s, "\xEF\xBF\xBD"s}) {
        EXPECT_EQ(std::get<std::string>(roundTrip(text).objects[0]), text);
    }
}

TEST(BinaryPropertyList, ReadsAsciiStoredAsUtf16) {
    const auto list = readBinaryPropertyList(fileOf("\x62\0A\0C"s));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<std::string>(list.value().objects[0]), "AC");
}

TEST(BinaryPropertyList, ReplacesBytesThatAreNoText) {
    const auto ascii = readBinaryPropertyList(fileOf("\x51\xC3"s));
    EXPECT_EQ(std::get<std::string>(ascii.value().objects[0]), "\xEF\xBF\xBD");
    const auto lone = readBinaryPropertyList(fileOf("\x61\xD8\0"s));
    EXPECT_EQ(std::get<std::string>(lone.value().objects[0]), "\xEF\xBF\xBD");
}

TEST(BinaryPropertyList, ReadsAListThatContainsItselfAsAList) {
    const auto list = readBinaryPropertyList(fileOf("\xA1\0"s));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<PropertyList::Array>(list.value().objects[0]).items.size(), 1U);
}

TEST(BinaryPropertyList, RefusesCountsBeyondTheFile) {
    for (const std::string& object :
         {"\xAF\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\x5F\x12\xFF\xFF\xFF\xFF"s, "\xDF\x10\x80"s,
          "\x6F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\xA5\0"s, "\x5F"s, "\x5F\x50"s,
          "\x13\0"s}) {
        EXPECT_FALSE(readBinaryPropertyList(fileOf(object)).ok());
    }
}

TEST(BinaryPropertyList, RefusesReferencesBeyondTheObjects) {
    EXPECT_FALSE(readBinaryPropertyList(fileOf("\xA1\x01"s)).ok());
}

TEST(BinaryPropertyList, RefusesObjectsThatShareTheirBytes) {
    PropertyList list;
    for (const char letter : {'a', 'b', 'c'}) {
        list.add(std::string(200, letter));
    }
    list.add(std::int64_t{1});
    std::string file = writeBinaryPropertyList(list);
    // Two bytes an offset: the last object of the table becomes the first text again.
    const std::size_t table = file.size() - 32 - 4 * 2;
    file.replace(table + 3 * 2, 2, file, table, 2);
    EXPECT_FALSE(readBinaryPropertyList(file).ok());
}

TEST(BinaryPropertyList, GivesAnErrorForAFileCutAnywhere) {
    PropertyList list;
    list.top = list.add(std::string("text"));
    list.top = list.add(PropertyList::Array{{0, 0}});
    const std::string file = writeBinaryPropertyList(list);
    for (std::size_t length = 0; length < file.size(); ++length) {
        EXPECT_FALSE(readBinaryPropertyList(file.substr(0, length)).ok()) << length;
    }
}

TEST(BinaryPropertyList, SurvivesEveryChangedByte) {
    PropertyList list;
    const auto key = list.add(std::string("key"));
    const auto value = list.add(std::string(30, 'v'));
    list.top = list.add(PropertyList::Dictionary{{{key, value}}});
    const std::string file = writeBinaryPropertyList(list);
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string changed = file;
            changed[at] = static_cast<char>(byte);
            const auto read = readBinaryPropertyList(changed);
            EXPECT_TRUE(read.ok() || !read.error().message.empty());
        }
    }
}

TEST(XmlPropertyList, ReadsEveryKindOfObject) {
    const auto read = readXmlPropertyList(R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0"><dict>
<key>text</key><string>a &lt; b</string>
<key>count</key><integer>-7</integer>
<key>rate</key><real>0.25</real>
<key>yes</key><true/>
<key>list</key><array><false/></array>
<key>reference</key><dict><key>CF$UID</key><integer>3</integer></dict>
</dict></plist>)");
    ASSERT_TRUE(read.ok()) << read.error().message;
    const PropertyList& list = read.value();
    const auto& top = std::get<PropertyList::Dictionary>(list.objects[list.top]);
    ASSERT_EQ(top.entries.size(), 6U);
    const auto value = [&](std::size_t i) { return list.objects[top.entries[i].second]; };
    EXPECT_EQ(std::get<std::string>(value(0)), "a < b");
    EXPECT_EQ(std::get<std::int64_t>(value(1)), -7);
    EXPECT_EQ(std::get<double>(value(2)), 0.25);
    EXPECT_TRUE(std::get<bool>(value(3)));
    EXPECT_EQ(std::get<PropertyList::Array>(value(4)).items.size(), 1U);
    EXPECT_EQ(std::get<Uid>(value(5)).index, 3U);
}

TEST(XmlPropertyList, RefusesEntitiesDeepNestingAndBrokenMarkup) {
    std::string deep = "<plist>";
    for (int i = 0; i < 100000; ++i) {
        deep += "<array>";
    }
    for (const std::string& text :
         {"<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>"s, deep, ""s,
          "<plist>"s, "<plist><dict><key>a</key></dict></plist>"s,
          "<plist><integer>12x</integer></plist>"s, "<plist><real>0,5</real></plist>"s,
          "<plist></plist>"s, "<html/>"s}) {
        const auto read = readXmlPropertyList(text);
        ASSERT_FALSE(read.ok()) << text.substr(0, 80);
        EXPECT_FALSE(read.error().message.empty());
    }
}

TEST(Utf16, TurnsEveryPlaneThereAndBack) {
    for (const std::string& text : {"ACGT"s, "\xC3\xA9"s, "\xE2\x82\xAC"s, "\xF4\x8F\xBF\xBF"s}) {
        EXPECT_EQ(platform::utf16BigEndianToUtf8(platform::utf8ToUtf16BigEndian(text)), text);
    }
}

} // namespace
