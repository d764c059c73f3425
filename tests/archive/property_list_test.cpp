// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0

#include "archive/property_list.h"

#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/unicode.h"

namespace {

using namespace std::string_literals;
using archive::PropertyList;
using archive::readBinaryPropertyList;
using archive::readXmlPropertyList;
using archive::Uid;
using archive::writeBinaryPropertyList;
using testing::HasSubstr;

/// One scalar as a whole binary property list.
template <class Value>
PropertyList roundTrip(Value value) {
    PropertyList list;
    list.top = list.add(value);
    auto read = readBinaryPropertyList(writeBinaryPropertyList(list));
    EXPECT_TRUE(read.ok()) << read.error().message;
    return std::move(read).value();
}

/// A number of at most 127 in `width` bytes, big-endian.
std::string inBytes(std::size_t width, char number) {
    return std::string(width - 1, '\0') + number;
}

/// What a trailer says of its file, and the bytes in it that mean nothing.
struct Trailer {
    char offsetSize = 1;
    char referenceSize = 1;
    char objectCount = 1;
    std::string unused = std::string(6, '\0');
};

/// A property list of `objects`, one after the other from byte 8, with this table of offsets.
std::string fileOf(const std::string& objects, const std::string& offsets, const Trailer& trailer) {
    const auto table = static_cast<char>(8 + objects.size());
    return "bplist00" + objects + offsets + trailer.unused + trailer.offsetSize +
           trailer.referenceSize + inBytes(8, trailer.objectCount) + inBytes(8, 0) +
           inBytes(8, table);
}

/// A property list of one object given as its bytes.
std::string fileOf(const std::string& object) {
    return fileOf(object, "\x08", {});
}

/// The fault that reading names, or nothing if it reads.
std::string faultOf(const std::string& file) {
    const auto read = readBinaryPropertyList(file);
    return read.ok() ? "" : read.error().message;
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

TEST(BinaryPropertyList, ReadsAReferenceOfAnyWidthUpTo32Bits) {
    const auto reference = [](const std::string& number) {
        const auto marker = static_cast<char>(0x80U + number.size() - 1);
        return readBinaryPropertyList(fileOf(marker + number)).value().objects[0];
    };
    for (std::size_t width = 1; width <= 8; ++width) {
        EXPECT_EQ(std::get<Uid>(reference(inBytes(width, 7))).index, 7U) << width;
    }
    for (const std::string& tooLarge : {"\x01"s + inBytes(4, 0), "\x01"s + inBytes(7, 0),
                                        "\x01"s + inBytes(8, 7), "\x01"s + inBytes(15, 7)}) {
        EXPECT_TRUE(std::holds_alternative<PropertyList::Other>(reference(tooLarge)));
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

TEST(BinaryPropertyList, ReadsReferencesAndOffsetsOfUpToEightBytes) {
    for (char width = 1; width <= 8; ++width) {
        const std::string listOfItself = "\xA1" + inBytes(static_cast<std::size_t>(width), 0);
        const std::string offset = inBytes(static_cast<std::size_t>(width), 8);
        EXPECT_EQ(faultOf(fileOf(listOfItself, offset, {width, width})), "") << int{width};
    }
}

TEST(BinaryPropertyList, RefusesReferencesAndOffsetsOfNoneOrNineBytes) {
    // The ninth byte would fall out of a number unseen, and the file could say what it likes there.
    EXPECT_THAT(faultOf(fileOf("\xA1" + inBytes(9, 0), "\x08", {1, 9})), HasSubstr("sizes"));
    EXPECT_THAT(faultOf(fileOf("\x09", inBytes(9, 8), {9, 1})), HasSubstr("sizes"));
    EXPECT_THAT(faultOf(fileOf("\x09", "\x08", {1, 0})), HasSubstr("sizes"));
    EXPECT_THAT(faultOf(fileOf("\x09", "\x08", {0, 1})), HasSubstr("sizes"));
}

TEST(BinaryPropertyList, RefusesAnOffsetTableThatReachesIntoTheTrailer) {
    // Two objects are declared; the trailer's first byte would be the second one's offset.
    Trailer trailer;
    trailer.objectCount = 2;
    trailer.unused[0] = '\x09';
    EXPECT_THAT(faultOf(fileOf("\x08\x09", "\x08", trailer)), HasSubstr("table"));
    trailer.unused[0] = '\0';
    EXPECT_EQ(faultOf(fileOf("\x08\x09", "\x08\x09", trailer)), "");
}

TEST(BinaryPropertyList, RefusesAnOffsetIntoTheHeaderOrTheTable) {
    EXPECT_THAT(faultOf(fileOf("\x09", "\x07", {})), HasSubstr("outside"));
    EXPECT_THAT(faultOf(fileOf("\x09", "\x09", {})), HasSubstr("outside"));
}

TEST(BinaryPropertyList, RefusesAnIntegerOf32Bytes) {
    EXPECT_THAT(faultOf(fileOf("\x15" + inBytes(32, 7))), HasSubstr("unknown width"));
}

TEST(BinaryPropertyList, ReadsANegativeSixteenByteInteger) {
    const auto list = readBinaryPropertyList(fileOf("\x14" + std::string(16, '\xFF')));
    ASSERT_TRUE(list.ok());
    EXPECT_EQ(std::get<std::int64_t>(list.value().objects[0]), -1);
}

TEST(BinaryPropertyList, KeepsTheFirstIntegerBeyond64BitsAsForeign) {
    const auto list = readBinaryPropertyList(
        fileOf("\x14"s + std::string(8, '\0') + "\x80" + std::string(7, '\0')));
    ASSERT_TRUE(list.ok());
    EXPECT_TRUE(std::holds_alternative<PropertyList::Other>(list.value().objects[0]));
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

/// The fault that reading an XML property list names, or nothing if it reads.
std::string xmlFaultOf(const std::string& text) {
    const auto read = readXmlPropertyList(text);
    return read.ok() ? "" : read.error().message;
}

/// What a property list of this one element holds.
PropertyList::Object onlyXmlObject(const std::string& element) {
    const auto read = readXmlPropertyList("<plist>" + element + "</plist>");
    EXPECT_TRUE(read.ok()) << read.error().message;
    return read.ok() ? read.value().objects[read.value().top] : PropertyList::Other{};
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

TEST(XmlPropertyList, ReadsSixteenElementsDeepAndRefusesSeventeen) {
    const auto nested = [](int arrays) {
        std::string text = "<plist>";
        for (int i = 0; i < arrays; ++i) {
            text += "<array>";
        }
        for (int i = 0; i < arrays; ++i) {
            text += "</array>";
        }
        return text + "</plist>";
    };
    EXPECT_EQ(xmlFaultOf(nested(15)), "");
    EXPECT_THAT(xmlFaultOf(nested(16)), HasSubstr("too deeply"));
    EXPECT_THAT(xmlFaultOf(nested(17)), HasSubstr("too deeply"));
    // The parser still tells of the end of an empty element at which it was stopped.
    EXPECT_THAT(xmlFaultOf("<plist><array><array><array><array><array><array><array><array><array>"
                           "<array><array><array><array><array><array><set/>"),
                HasSubstr("too deeply"));
}

TEST(XmlPropertyList, CountsOnlyElementsInsideEachOtherAsDeep) {
    std::string list = "<array>";
    for (int i = 0; i < 100; ++i) {
        list += "<array><true/></array>";
    }
    EXPECT_EQ(xmlFaultOf("<plist>" + list + "</array></plist>"), "");
}

TEST(XmlPropertyList, TakesOnlyA32BitNumberAloneUnderItsKeyForAReference) {
    const auto dictionaryOf = [](const std::string& entries) {
        return onlyXmlObject("<dict>" + entries + "</dict>");
    };
    const std::string key = "<key>CF$UID</key>";
    EXPECT_EQ(std::get<Uid>(dictionaryOf(key + "<integer>0</integer>")).index, 0U);
    EXPECT_EQ(std::get<Uid>(dictionaryOf(key + "<integer>4294967295</integer>")).index,
              4294967295U);
    for (const std::string& entries :
         {key + "<integer>-1</integer>", key + "<integer>4294967296</integer>",
          key + "<integer>-4294967295</integer>", key + "<string>1</string>",
          key + "<real>1</real>", "<key>CF$UIDs</key><integer>1</integer>"s,
          "<integer>1</integer><integer>1</integer>"s,
          key + "<integer>1</integer>" + key + "<integer>1</integer>", ""s}) {
        EXPECT_TRUE(std::holds_alternative<PropertyList::Dictionary>(dictionaryOf(entries)))
            << entries;
    }
}

TEST(XmlPropertyList, ReadsNumbersToTheirLimits) {
    const auto integer = [](const std::string& digits) {
        return onlyXmlObject("<integer>" + digits + "</integer>");
    };
    EXPECT_EQ(std::get<std::int64_t>(integer("+7")), 7);
    EXPECT_EQ(std::get<std::int64_t>(integer("9223372036854775807")),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(std::get<std::int64_t>(integer("-9223372036854775808")),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_TRUE(std::holds_alternative<PropertyList::Other>(integer("9223372036854775808")));
    EXPECT_EQ(std::get<double>(onlyXmlObject("<real>-1e-3</real>")), -0.001);
}

TEST(XmlPropertyList, RefusesWhatIsNoNumber) {
    for (const std::string& text :
         {"<integer></integer>"s, "<integer/>"s, "<integer>+</integer>"s, "<integer>1 </integer>"s,
          "<integer>99999999999999999999x</integer>"s, "<integer>0.5</integer>"s}) {
        EXPECT_THAT(xmlFaultOf("<plist>" + text + "</plist>"), HasSubstr("not an integer")) << text;
    }
    for (const std::string& text : {"<real></real>"s, "<real/>"s, "<real>1.5 nm</real>"s}) {
        EXPECT_THAT(xmlFaultOf("<plist>" + text + "</plist>"), HasSubstr("not a real")) << text;
    }
}

TEST(XmlPropertyList, KeepsDatesAndDataAsForeign) {
    for (const char* text : {"<date>2020-01-01T00:00:00Z</date>", "<data>AAAA</data>"}) {
        EXPECT_TRUE(std::holds_alternative<PropertyList::Other>(onlyXmlObject(text))) << text;
    }
}

TEST(XmlPropertyList, RefusesAnElementOfNoKindAndASecondObject) {
    EXPECT_THAT(xmlFaultOf("<plist>\n<set/></plist>"),
                HasSubstr("line 2: it holds an element <set>"));
    EXPECT_THAT(xmlFaultOf("<plist><true/><true/></plist>"), HasSubstr("more than one object"));
    EXPECT_THAT(xmlFaultOf("<plist><array/><dict/></plist>"), HasSubstr("more than one object"));
}

TEST(XmlPropertyList, NamesTheFirstFaultOnly) {
    EXPECT_THAT(xmlFaultOf("<plist>\n<dict><key>a</key></dict>\n<set/></plist>"),
                HasSubstr("line 2: a dictionary has a key without a value"));
    EXPECT_THAT(xmlFaultOf("<plist><true/><dict><key>a</key></dict></plist>"),
                HasSubstr("a key without a value"));
    // The markup is at fault as well, but only behind the number.
    EXPECT_THAT(xmlFaultOf("<plist><array><integer>x</integer></plist>"),
                HasSubstr("not an integer"));
}

TEST(XmlPropertyList, NeedsNoDocumentTypeAndTakesOneWithoutDeclarations) {
    EXPECT_EQ(xmlFaultOf("<plist><true/></plist>"), "");
    EXPECT_EQ(xmlFaultOf("<!DOCTYPE plist><plist><true/></plist>"), "");
    EXPECT_EQ(xmlFaultOf("<!DOCTYPE plist SYSTEM \"none.dtd\"><plist><true/></plist>"), "");
    EXPECT_THAT(xmlFaultOf("<!DOCTYPE plist []><plist><true/></plist>"), HasSubstr("entities"));
}

TEST(XmlPropertyList, ReadsTextsLongerThanOnePieceOfTheInput) {
    const std::string text(std::size_t{3} << 20U, 'x');
    EXPECT_EQ(std::get<std::string>(onlyXmlObject("<string>" + text + "</string>")), text);
    // The fault lies in the second piece, and what follows it is not looked at.
    EXPECT_THAT(xmlFaultOf("<plist><array><string>" + text + "</string><set/><string>" + text),
                HasSubstr("<set>"));
}

TEST(XmlPropertyList, KeepsTextsApartFromWhatStandsBetweenElements) {
    const auto read = readXmlPropertyList(
        "<plist> between <array> and <string>A</string> or <string/> also </array></plist>");
    ASSERT_TRUE(read.ok()) << read.error().message;
    const PropertyList& list = read.value();
    const auto& items = std::get<PropertyList::Array>(list.objects[list.top]).items;
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(std::get<std::string>(list.objects[items[0]]), "A");
    EXPECT_EQ(std::get<std::string>(list.objects[items[1]]), "");
}

TEST(Utf16, TurnsTheEdgesOfEveryLengthAndPlaneThereAndBack) {
    struct Edge {
        std::string utf8;
        std::string utf16;
    };
    for (const auto& [utf8, utf16] : {
             Edge{"\x7F", "\0\x7F"s},
             Edge{"\xC2\x80", "\0\x80"s},
             Edge{"\xDF\xBF", "\x07\xFF"},
             Edge{"\xE0\xA0\x80", "\x08\0"s},
             Edge{"\xED\x9F\xBF", "\xD7\xFF"},
             Edge{"\xEE\x80\x80", "\xE0\0"s},
             Edge{"\xEF\xBF\xBF", "\xFF\xFF"},
             Edge{"\xF0\x90\x80\x80", "\xD8\0\xDC\0"s},
             Edge{"\xF0\x9F\xA7\xAC", "\xD8\x3E\xDD\xEC"},
             Edge{"\xF4\x8F\xBF\xBF", "\xDB\xFF\xDF\xFF"},
         }) {
        EXPECT_EQ(platform::utf8ToUtf16BigEndian(utf8), utf16);
        EXPECT_EQ(platform::utf16BigEndianToUtf8(utf16), utf8);
    }
}

TEST(Utf16, ReplacesALoneSurrogateAndKeepsWhatStandsBesideIt) {
    const std::string replacement = "\xEF\xBF\xBD";
    const std::string privateUse = "\xEE\x80\x80"; // U+E000, the first unit behind the surrogates
    for (const std::string& lone : {"\xD8\0"s, "\xDB\xFF"s, "\xDC\0"s, "\xDF\xFF"s}) {
        EXPECT_EQ(platform::utf16BigEndianToUtf8(lone), replacement);
        EXPECT_EQ(platform::utf16BigEndianToUtf8(lone + "\0A"s), replacement + "A");
        EXPECT_EQ(platform::utf16BigEndianToUtf8(lone + "\xE0\0"s), replacement + privateUse);
        EXPECT_EQ(platform::utf16BigEndianToUtf8("\xDC\0"s + lone), replacement + replacement);
    }
    EXPECT_EQ(platform::utf16BigEndianToUtf8("\xD8\0\xD8\0\xDC\0"s),
              replacement + "\xF0\x90\x80\x80");
}

} // namespace
