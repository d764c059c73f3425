// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "archive/keyed_archiver.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "archive/archive_records.h"

using archive::ArchiveGraph;
using archive::ArchiveList;
using archive::ArchiveNull;
using archive::ArchiveRecord;
using archive::ArchiveValue;
using archive::KeyedArchiver;
using archive::ListOf;
using archive::RecordList;
using archive::Text;
using archive::Uid;
using archive_records::Everything;
using archive_records::leaf;
using archive_records::Leaf;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

template <class Value>
ArchiveGraph graphOf(const Value& value) {
    KeyedArchiver archiver;
    const Uid root = archiver.encode(value);
    return archiver.takeGraph(root);
}

template <class Kind>
const Kind& objectOf(const ArchiveGraph& graph, Uid uid) {
    return std::get<Kind>(graph.objects.at(uid.index));
}

const ArchiveValue& valueOf(const ArchiveGraph& graph, Uid uid, std::string_view key) {
    for (const auto& [name, value] : objectOf<ArchiveRecord>(graph, uid).fields) {
        if (name == key) {
            return value;
        }
    }
    throw std::out_of_range("no such key");
}

Uid referenceOf(const ArchiveGraph& graph, Uid uid, std::string_view key) {
    return std::get<Uid>(valueOf(graph, uid, key));
}

} // namespace

TEST(KeyedArchiver, WritesARecordsFieldsInTheirOrder) {
    const ArchiveGraph graph = graphOf(std::make_shared<Everything>());
    const auto& record = objectOf<ArchiveRecord>(graph, graph.root);
    EXPECT_EQ(record.className, "Everything");
    std::vector<std::string> keys;
    for (const auto& field : record.fields) {
        keys.emplace_back(field.first);
    }
    EXPECT_THAT(keys, ElementsAre("text", "boolean", "integer", "real", "record", "list"));
}

TEST(KeyedArchiver, WritesEveryCoderType) {
    const auto record = std::make_shared<Everything>();
    record->text = "words";
    record->boolean = true;
    record->integer = -(std::int64_t{1} << 62U);
    record->real = 0.001;
    record->record = leaf("one");
    record->list = RecordList<Leaf>::of({leaf("two")});
    const ArchiveGraph graph = graphOf(record);

    EXPECT_EQ(objectOf<std::string>(graph, referenceOf(graph, graph.root, "text")), "words");
    EXPECT_TRUE(std::get<bool>(valueOf(graph, graph.root, "boolean")));
    EXPECT_EQ(std::get<std::int64_t>(valueOf(graph, graph.root, "integer")),
              -(std::int64_t{1} << 62U));
    EXPECT_EQ(std::get<double>(valueOf(graph, graph.root, "real")), 0.001);
    const Uid one = referenceOf(graph, graph.root, "record");
    EXPECT_EQ(objectOf<std::string>(graph, referenceOf(graph, one, "name")), "one");
    const auto& list = objectOf<ArchiveList>(graph, referenceOf(graph, graph.root, "list"));
    ASSERT_THAT(list.items, SizeIs(1));
    EXPECT_EQ(objectOf<std::string>(graph, referenceOf(graph, list.items[0], "name")), "two");
}

TEST(KeyedArchiver, WritesNullAsTheObjectWithIndexZero) {
    const ArchiveGraph graph = graphOf(std::make_shared<Everything>());
    EXPECT_TRUE(std::holds_alternative<ArchiveNull>(graph.objects.at(0)));
    for (const char* key : {"text", "record", "list"}) {
        EXPECT_EQ(referenceOf(graph, graph.root, key), Uid{}) << key;
    }
    EXPECT_EQ(graphOf(std::shared_ptr<Leaf>()).root, Uid{});
    EXPECT_EQ(graphOf(ListOf<Leaf>()).root, Uid{});
    EXPECT_EQ(graphOf(Text()).root, Uid{});
}

TEST(KeyedArchiver, TellsAnEmptyTextFromNull) {
    const ArchiveGraph graph = graphOf(Text(""));
    EXPECT_NE(graph.root, Uid{});
    EXPECT_EQ(objectOf<std::string>(graph, graph.root), "");
}

TEST(KeyedArchiver, TellsAnEmptyListFromNull) {
    const ArchiveGraph graph = graphOf(ListOf<Leaf>(RecordList<Leaf>()));
    EXPECT_NE(graph.root, Uid{});
    EXPECT_THAT(objectOf<ArchiveList>(graph, graph.root).items, SizeIs(0));
}

TEST(KeyedArchiver, TellsAGrowableListFromAFixedOne) {
    const ListOf<Leaf> growable = RecordList<Leaf>::of({leaf("x")});
    const ListOf<Leaf> fixed = RecordList<Leaf>::fixedCopyOf(*growable);
    const ArchiveGraph growableGraph = graphOf(growable);
    const ArchiveGraph fixedGraph = graphOf(fixed);
    EXPECT_TRUE(objectOf<ArchiveList>(growableGraph, growableGraph.root).growable);
    EXPECT_FALSE(objectOf<ArchiveList>(fixedGraph, fixedGraph.root).growable);
}

TEST(KeyedArchiver, StoresARecordThatIsReachedTwiceOnce) {
    const auto shared = leaf("shared");
    const ListOf<Leaf> list = RecordList<Leaf>::of({shared, leaf("shared"), shared});
    const ArchiveGraph graph = graphOf(list);
    const auto& items = objectOf<ArchiveList>(graph, graph.root).items;
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_EQ(items[0], items[2]);
    EXPECT_NE(items[0], items[1]); // equal, and yet another record
}

TEST(KeyedArchiver, StoresEqualTextsOnce) {
    const ListOf<Leaf> list = RecordList<Leaf>::of({leaf("same"), leaf("same"), leaf("other")});
    const ArchiveGraph graph = graphOf(list);
    const auto& items = objectOf<ArchiveList>(graph, graph.root).items;
    EXPECT_EQ(referenceOf(graph, items[0], "name"), referenceOf(graph, items[1], "name"));
    EXPECT_NE(referenceOf(graph, items[0], "name"), referenceOf(graph, items[2], "name"));
    EXPECT_THAT(graph.objects, SizeIs(1 + 1 + 3 + 2)); // null, list, records, texts
}

TEST(KeyedArchiver, StoresEqualNumbersOnceAndApartFromTexts) {
    KeyedArchiver archiver;
    const Uid number = archiver.encodeNumber(7);
    EXPECT_EQ(archiver.encodeNumber(7), number);
    EXPECT_NE(archiver.encodeNumber(8), number);
    EXPECT_NE(archiver.encodeText("7"), number);
    const ArchiveGraph graph = archiver.takeGraph(number);
    EXPECT_EQ(objectOf<std::int64_t>(graph, graph.root), 7);
}

TEST(KeyedArchiver, NumbersAnObjectBeforeThoseItRefersTo) {
    const auto record = std::make_shared<Everything>();
    record->text = "words";
    record->record = leaf("one");
    const ArchiveGraph graph = graphOf(record);
    EXPECT_EQ(graph.root.index, 1U);
    EXPECT_EQ(referenceOf(graph, graph.root, "text").index, 2U);
    EXPECT_EQ(referenceOf(graph, graph.root, "record").index, 3U);
}
