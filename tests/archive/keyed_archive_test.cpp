// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0

#include "archive/keyed_archive.h"

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "archive/keyed_archiver.h"
#include "archive/keyed_unarchiver.h"
#include "archive/property_list.h"

namespace keyed_archive {
namespace {

using namespace std::string_literals;
using archive::KeyedArchiver;
using archive::KeyedUnarchiver;
using archive::readKeyedArchive;
using archive::writeKeyedArchive;

struct Leaf {
    static constexpr std::string_view kClassName = "Leaf";
    archive::Text text;
    std::int64_t count = 0;
    double rate = 0.0;
    bool flag = false;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("text", self.text);
        visit("count", self.count);
        visit("rate", self.rate);
        visit("flag", self.flag);
    }
    static std::shared_ptr<Leaf> forDecoding() { return std::make_shared<Leaf>(); }
};

struct Tree {
    static constexpr std::string_view kClassName = "Tree";
    archive::ListOf<Leaf> leaves;
    std::shared_ptr<Leaf> favourite;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("leaves", self.leaves);
        visit("favourite", self.favourite);
    }
    static std::shared_ptr<Tree> forDecoding() { return std::make_shared<Tree>(); }
};

std::shared_ptr<Leaf> leaf(archive::Text text, std::int64_t count, double rate, bool flag) {
    auto made = std::make_shared<Leaf>();
    made->text = std::move(text);
    made->count = count;
    made->rate = rate;
    made->flag = flag;
    return made;
}

std::string archived(const std::shared_ptr<Tree>& tree) {
    KeyedArchiver archiver;
    const archive::Uid root = archiver.encode(tree);
    auto bytes = writeKeyedArchive(archiver.takeGraph(root));
    EXPECT_TRUE(bytes.ok());
    return std::move(bytes).value();
}

/// The tree, or null with the message in `fault`.
std::shared_ptr<Tree> unarchived(const std::string& bytes, std::string* fault = nullptr) {
    const auto graph = readKeyedArchive(bytes);
    std::shared_ptr<Tree> tree;
    platform::Status status;
    if (graph) {
        KeyedUnarchiver unarchiver(graph.value(), {bytes.size(), 64 * bytes.size()});
        unarchiver.decode(graph.value().root, tree);
        status = unarchiver.status();
    } else {
        status = graph.error();
    }
    if (fault) {
        *fault = status.ok() ? "" : status.error().message;
    } else {
        EXPECT_TRUE(status.ok()) << status.error().message;
    }
    return status.ok() ? tree : nullptr;
}

std::shared_ptr<Tree> sampleTree() {
    auto tree = std::make_shared<Tree>();
    tree->leaves.emplace();
    tree->leaves->append(leaf("Zürich\0x"s, -5, 0.001, true));
    tree->leaves->append(leaf(std::nullopt, 1234567890123, -0.5, false));
    tree->leaves->append(leaf("", 0, 1e300, true));
    tree->favourite = (*tree->leaves)[1];
    return tree;
}

/// An XML archive whose objects are given; root is object 1.
std::string xmlArchive(const std::string& objects, const std::string& version = "100000") {
    return R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>
<key>$version</key><integer>)" +
           version + R"(</integer><key>$archiver</key><string>NSKeyedArchiver</string>
<key>$top</key><dict><key>root</key><dict><key>CF$UID</key><integer>1</integer></dict></dict>
<key>$objects</key><array><string>$null</string>)" +
           objects + "</array></dict></plist>";
}

std::string uid(int index) {
    return "<dict><key>CF$UID</key><integer>" + std::to_string(index) + "</integer></dict>";
}

std::string instance(const std::string& fields, int classIndex) {
    return "<dict>" + fields + "<key>$class</key>" + uid(classIndex) + "</dict>";
}

std::string classEntry(const std::string& name) {
    return "<dict><key>$classname</key><string>" + name + "</string></dict>";
}

TEST(KeyedArchiveFile, KeepsEveryValueNullAndIdentity) {
    const auto copy = unarchived(archived(sampleTree()));
    ASSERT_TRUE(copy && copy->leaves);
    ASSERT_EQ(copy->leaves->size(), 3U);
    const Leaf& first = *(*copy->leaves)[0];
    EXPECT_EQ(first.text, "Zürich\0x"s);
    EXPECT_EQ(first.count, -5);
    EXPECT_EQ(first.rate, 0.001);
    EXPECT_TRUE(first.flag);
    EXPECT_EQ((*copy->leaves)[1]->text, std::nullopt);
    EXPECT_EQ((*copy->leaves)[1]->count, 1234567890123);
    EXPECT_EQ((*copy->leaves)[2]->text, "");
    EXPECT_EQ((*copy->leaves)[2]->rate, 1e300);
    EXPECT_EQ(copy->favourite, (*copy->leaves)[1]);
    EXPECT_TRUE(copy->leaves->isGrowable());
}

TEST(KeyedArchiveFile, KeepsAFixedListFixed) {
    auto tree = sampleTree();
    tree->leaves = archive::RecordList<Leaf>::fixedCopyOf(*tree->leaves);
    EXPECT_FALSE(unarchived(archived(tree))->leaves->isGrowable());
}

TEST(KeyedArchiveFile, KeepsANullListApartFromAnEmptyOne) {
    auto tree = std::make_shared<Tree>();
    EXPECT_FALSE(unarchived(archived(tree))->leaves.has_value());
    tree->leaves.emplace();
    EXPECT_TRUE(unarchived(archived(tree))->leaves.has_value());
}

TEST(KeyedArchiveFile, WritesTheSameBytesForTheSameRecords) {
    EXPECT_EQ(archived(sampleTree()), archived(sampleTree()));
}

TEST(KeyedArchiveFile, WritesInvalidTextAsTheReplacementCharacter) {
    auto tree = std::make_shared<Tree>();
    tree->favourite = leaf("a\xFFz", 0, 0.0, false);
    EXPECT_EQ(unarchived(archived(tree))->favourite->text, "a\xEF\xBF\xBDz");
}

TEST(KeyedArchiveFile, RefusesToWriteANumberThatIsNotFinite) {
    auto tree = std::make_shared<Tree>();
    tree->favourite = leaf("a", 0, std::nan(""), false);
    KeyedArchiver archiver;
    const archive::Uid root = archiver.encode(tree);
    EXPECT_FALSE(writeKeyedArchive(archiver.takeGraph(root)).ok());
}

TEST(KeyedArchiveFile, ReadsXmlWithGrowableTextsUnknownKeysAndAnyOrder) {
    // 1 tree, 2 class Tree, 3 list, 4 class NSArray, 5 leaf, 6 mutable text, 7 its class, 8 class
    // Leaf
    const auto tree = unarchived(xmlArchive(
        instance("<key>leaves</key>" + uid(3) + "<key>favourite</key>" + uid(5) +
                     "<key>colour</key><integer>3</integer>",
                 2) +
        classEntry("Tree") + instance("<key>NS.objects</key><array>" + uid(5) + "</array>", 4) +
        classEntry("NSArray") +
        instance("<key>text</key>" + uid(6) + "<key>count</key><real>7.0</real><key>rate</key>" +
                     "<integer>2</integer><key>flag</key><integer>1</integer>",
                 8) +
        instance("<key>NS.string</key><string>ACGT</string>", 7) + classEntry("NSMutableString") +
        classEntry("Leaf") + "<date>2020-01-01T00:00:00Z</date>"));
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->favourite, (*tree->leaves)[0]);
    EXPECT_EQ(tree->favourite->text, "ACGT");
    EXPECT_EQ(tree->favourite->count, 7);
    EXPECT_EQ(tree->favourite->rate, 2.0);
    EXPECT_TRUE(tree->favourite->flag);
}

TEST(KeyedArchiveFile, ReadsAMissingKeyAsNullZeroAndFalse) {
    const auto tree =
        unarchived(xmlArchive(instance("<key>favourite</key>" + uid(2), 3) + instance("", 4) +
                              classEntry("Tree") + classEntry("Leaf")));
    ASSERT_TRUE(tree && tree->favourite);
    EXPECT_FALSE(tree->leaves.has_value());
    EXPECT_EQ(tree->favourite->text, std::nullopt);
    EXPECT_EQ(tree->favourite->count, 0);
    EXPECT_FALSE(tree->favourite->flag);
}

TEST(KeyedArchiveFile, RefusesAnyOtherVersion) {
    const std::string objects = instance("", 2) + classEntry("Tree");
    ASSERT_TRUE(unarchived(xmlArchive(objects)));
    for (const std::string& version : {"99999"s, "100001"s, "200000"s, "0"s, "-100000"s}) {
        std::string fault;
        EXPECT_EQ(unarchived(xmlArchive(objects, version), &fault), nullptr) << version;
        EXPECT_EQ(fault, "its archive version is not 100000");
    }
}

/// The number that the root object is, or nullopt if it is none.
std::optional<std::int64_t> rootNumber(const std::string& object) {
    const auto graph = readKeyedArchive(xmlArchive(object));
    EXPECT_TRUE(graph.ok());
    if (!graph) {
        return std::nullopt;
    }
    KeyedUnarchiver unarchiver(graph.value());
    std::int64_t number = 0;
    unarchiver.decode(graph.value().root, number);
    return unarchiver.status().ok() ? std::optional(number) : std::nullopt;
}

TEST(KeyedArchiveFile, ReadsANumberObjectThatIsAWholeReal) {
    EXPECT_EQ(rootNumber("<real>-1.0</real>"), -1);
    EXPECT_EQ(rootNumber("<real>9223372036854774784</real>"), 9223372036854774784);
    EXPECT_EQ(rootNumber("<real>-9223372036854775808</real>"),
              std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(rootNumber("<true/>"), 1);
    EXPECT_EQ(rootNumber("<false/>"), 0);
}

TEST(KeyedArchiveFile, TakesARealThatNo64BitIntegerHoldsForNoNumber) {
    // 2^63 is the first: converting it would be undefined, and -2^63 on most processors.
    for (const std::string& real :
         {"9223372036854775808"s, "-9223372036854777856"s, "1e300"s, "0.5"s, "inf"s, "nan"s}) {
        EXPECT_EQ(rootNumber("<real>" + real + "</real>"), std::nullopt) << real;
    }
}

std::string dictionary(const std::string& keys, const std::string& values) {
    return instance("<key>NS.keys</key><array>" + keys + "</array><key>NS.objects</key><array>" +
                        values + "</array>",
                    2) +
           classEntry("NSDictionary") + "<string>first</string><string>second</string>" +
           "<integer>10</integer><integer>20</integer>";
}

TEST(KeyedArchiveFile, ReadsADictionaryObject) {
    const auto graph = readKeyedArchive(xmlArchive(dictionary(uid(3) + uid(4), uid(5) + uid(6))));
    ASSERT_TRUE(graph.ok()) << graph.error().message;
    KeyedUnarchiver unarchiver(graph.value());
    for (const auto& [key, expected] : {std::pair("first", 10), std::pair("second", 20)}) {
        std::int64_t number = 0;
        unarchiver.decode(unarchiver.dictionaryValue(graph.value().root, key), number);
        EXPECT_EQ(number, expected) << key;
    }
    EXPECT_TRUE(unarchiver.status());
}

TEST(KeyedArchiveFile, RefusesADictionaryWhoseKeysAndValuesDifferInNumber) {
    for (const std::string& object :
         {dictionary(uid(3) + uid(4), uid(5)), dictionary(uid(3), uid(5) + uid(6)),
          dictionary("", uid(5))}) {
        const auto graph = readKeyedArchive(xmlArchive(object));
        ASSERT_FALSE(graph.ok());
        EXPECT_EQ(graph.error().message,
                  "object 1 is a dictionary with more keys than values or the reverse");
    }
}

struct BadArchive {
    std::string what;
    std::string objects;
};

TEST(KeyedArchiveFile, RefusesWhatNoTreeCanBe) {
    const std::string classes = classEntry("Tree") + classEntry("Leaf"); // objects 2 and 3
    const auto treeWith = [&](const std::string& field) { return instance(field, 2) + classes; };
    const BadArchive bad[] = {
        {"another class", instance("", 3) + classes},
        {"an unknown class", instance("", 2) + classEntry("NSTask")},
        {"a class without a name", instance("", 2) + "<dict/>"},
        {"a class beyond the objects", instance("", 77)},
        {"a text where a record is due",
         treeWith("<key>favourite</key>" + uid(4)) + "<string>x</string>"},
        {"an inline text", treeWith("<key>favourite</key><string>x</string>")},
        {"a reference beyond the objects", treeWith("<key>favourite</key>" + uid(9))},
        {"a list of the old form", treeWith("<key>leaves</key>" + uid(4)) +
                                       instance("<key>NS.object.0</key>" + uid(1), 5) +
                                       classEntry("NSArray")},
        {"a null in a list", treeWith("<key>leaves</key>" + uid(4)) +
                                 instance("<key>NS.objects</key><array>" + uid(0) + "</array>", 5) +
                                 classEntry("NSArray")},
        {"a list that lists no references",
         treeWith("<key>leaves</key>" + uid(4)) +
             instance("<key>NS.objects</key><array><integer>1</integer></array>", 5) +
             classEntry("NSArray")},
        {"a fraction where a count is due", treeWith("<key>favourite</key>" + uid(4)) +
                                                instance("<key>count</key><real>0.5</real>", 3)},
        {"a number where a boolean is due", treeWith("<key>favourite</key>" + uid(4)) +
                                                instance("<key>flag</key><integer>2</integer>", 3)},
        {"a text object without text", treeWith("<key>favourite</key>" + uid(4)) +
                                           instance("<key>text</key>" + uid(5), 3) +
                                           instance("", 6) + classEntry("NSString")},
        {"a key twice",
         treeWith("<key>favourite</key>" + uid(0) + "<key>favourite</key>" + uid(0))},
        {"a class twice", instance("<key>$class</key>" + uid(2), 2) + classes},
        {"a key that is no text", treeWith("<integer>1</integer><integer>1</integer>")},
        {"a list with its references twice",
         treeWith("<key>leaves</key>" + uid(4)) +
             instance("<key>NS.objects</key><array/><key>NS.objects</key><array/>", 5) +
             classEntry("NSArray")},
        {"a rate that is not finite", treeWith("<key>favourite</key>" + uid(4)) +
                                          instance("<key>rate</key><real>nan</real>", 3)},
        {"a date where a record is due", treeWith("<key>favourite</key>" + uid(4)) + "<date/>"},
    };
    for (const BadArchive& archive : bad) {
        std::string fault;
        EXPECT_EQ(unarchived(xmlArchive(archive.objects), &fault), nullptr) << archive.what;
        EXPECT_FALSE(fault.empty()) << archive.what;
    }
}

TEST(KeyedArchiveFile, RefusesForeignFiles) {
    archive::PropertyList plain;
    plain.top = plain.add(std::string("hello"));
    for (const std::string& bytes :
         {""s, "hello"s, "bplist00"s, archive::writeBinaryPropertyList(plain),
          "<plist><dict/></plist>"s}) {
        EXPECT_FALSE(readKeyedArchive(bytes).ok());
    }
}

TEST(KeyedArchiveFile, GivesAnErrorForAFileCutAnywhere) {
    const std::string file = archived(sampleTree());
    for (std::size_t length = 0; length < file.size(); ++length) {
        std::string fault;
        EXPECT_EQ(unarchived(file.substr(0, length), &fault), nullptr) << length;
    }
}

TEST(KeyedArchiveFile, SurvivesEveryChangedByte) {
    const std::string file = archived(sampleTree());
    for (std::size_t at = 0; at < file.size(); ++at) {
        for (const int change : {1, 2, 16, 128, 255}) {
            std::string changed = file;
            changed[at] = static_cast<char>(changed[at] ^ change);
            std::string fault;
            const auto tree = unarchived(changed, &fault);
            EXPECT_TRUE(tree == nullptr || fault.empty()) << at;
        }
    }
}

TEST(KeyedArchiveFile, RefusesListsThatRepeatEachOtherBeyondTheFile) {
    // A tree of lists cannot be this small and hold a million leaves: one list is used by many
    // trees.
    std::string references;
    for (int i = 0; i < 2000; ++i) {
        references += uid(5);
    }
    std::string objects = instance("<key>leaves</key>" + uid(4), 2) + classEntry("Tree") +
                          classEntry("Leaf") +
                          instance("<key>NS.objects</key><array>" + references + "</array>", 6) +
                          instance("", 3) + classEntry("NSArray");
    const auto graph = readKeyedArchive(xmlArchive(objects));
    ASSERT_TRUE(graph.ok());
    KeyedUnarchiver enough(graph.value(), {2000, 1000});
    std::shared_ptr<Tree> tree;
    enough.decode(graph.value().root, tree);
    EXPECT_TRUE(enough.status().ok());
    KeyedUnarchiver tooFew(graph.value(), {1999, 1000});
    tooFew.decode(graph.value().root, tree);
    EXPECT_FALSE(tooFew.status().ok());
}

/// A binary archive whose "$objects" are "$null" and `count` times one object of the list, which is
/// stored once.
std::string archiveThatRepeats(archive::PropertyList list, archive::PropertyList::Index object,
                               std::size_t count) {
    const auto text = [&](const std::string& value) { return list.add(value); };
    archive::PropertyList::Array objects{{text("$null")}};
    objects.items.insert(objects.items.end(), count, object);
    archive::PropertyList::Dictionary roots{{{text("root"), list.add(archive::Uid{1})}}};
    archive::PropertyList::Dictionary top;
    top.entries = {{text("$version"), list.add(std::int64_t{100000})},
                   {text("$archiver"), text("NSKeyedArchiver")},
                   {text("$top"), list.add(roots)},
                   {text("$objects"), list.add(objects)}};
    list.top = list.add(top);
    return archive::writeBinaryPropertyList(list);
}

/// An archive of 20,000 times the one dictionary that `fill` makes.
template <class Fill>
std::string repeatedObject(Fill fill) {
    archive::PropertyList list;
    archive::PropertyList::Dictionary repeated;
    fill(list, repeated);
    const auto object = list.add(repeated);
    return archiveThatRepeats(std::move(list), object, 20'000);
}

const std::string kLong(50'000, 'x');

/// An archive of `count` times one text.
std::string repeatedText(std::size_t count) {
    archive::PropertyList list;
    const auto text = list.add(kLong);
    return archiveThatRepeats(std::move(list), text, count);
}

TEST(KeyedArchiveFile, ReadsTextsThatRepeatUpToSixteenTimesTheFile) {
    // All but a few hundred bytes of the file are the one text.
    EXPECT_TRUE(readKeyedArchive(repeatedText(16)).ok());
    EXPECT_FALSE(readKeyedArchive(repeatedText(17)).ok());
}

TEST(KeyedArchiveFile, RefusesOneTextObjectThatStandsForVeryMany) {
    const auto fill = [](archive::PropertyList& list, auto& dictionary) {
        // It is its own class entry, which no honest text is.
        dictionary.entries = {{list.add("NS.string"s), list.add(kLong)},
                              {list.add("$classname"s), list.add("NSString"s)},
                              {list.add("$class"s), list.add(archive::Uid{1})}};
    };
    EXPECT_FALSE(readKeyedArchive(repeatedObject(fill)).ok());
}

TEST(KeyedArchiveFile, RefusesOneClassNameThatIsLongerThanAnyRecords) {
    const auto fill = [](archive::PropertyList& list, auto& dictionary) {
        dictionary.entries = {{list.add("$classname"s), list.add(kLong)},
                              {list.add("$class"s), list.add(archive::Uid{1})}};
    };
    EXPECT_FALSE(readKeyedArchive(repeatedObject(fill)).ok());
}

TEST(KeyedArchiveFile, RefusesOneLargeDictionaryThatStandsForVeryMany) {
    const auto fill = [](archive::PropertyList& list, auto& dictionary) {
        const auto key = list.add("key"s);
        dictionary.entries.assign(20'000, {key, key});
    };
    EXPECT_FALSE(readKeyedArchive(repeatedObject(fill)).ok());
}

TEST(KeyedArchiveFile, KeepsATextThatReadsLikeNull) {
    auto tree = std::make_shared<Tree>();
    tree->favourite = leaf("$null", 0, 0.0, false);
    EXPECT_EQ(unarchived(archived(tree))->favourite->text, "$null");
}

} // namespace
} // namespace keyed_archive
