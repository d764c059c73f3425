// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "archive/keyed_unarchiver.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "archive/archive_records.h"
#include "archive/keyed_archiver.h"

using archive::ArchiveDictionary;
using archive::ArchiveGraph;
using archive::ArchiveList;
using archive::ArchiveNull;
using archive::ArchiveObject;
using archive::ArchiveRecord;
using archive::ArchiveValue;
using archive::KeyedArchiver;
using archive::KeyedUnarchiver;
using archive::ListOf;
using archive::RecordList;
using archive::Text;
using archive::Uid;
using archive_records::Everything;
using archive_records::leaf;
using archive_records::Leaf;
using archive_records::Link;
using testing::HasSubstr;
using testing::SizeIs;

namespace {

Uid uid(std::size_t index) {
    return Uid{static_cast<std::uint32_t>(index)};
}

/// A graph of null and the given objects; the root is the first of them.
ArchiveGraph graphOf(std::vector<ArchiveObject> objects) {
    ArchiveGraph graph;
    for (ArchiveObject& object : objects) {
        graph.objects.push_back(std::move(object));
    }
    graph.root = uid(1);
    return graph;
}

ArchiveRecord leafNamed(Uid name) {
    return {"Leaf", {{"name", name}}};
}

/// What one value decodes to, or the fault.
template <class Value>
struct Decoded {
    Value value;
    std::string fault;
};

template <class Value>
Decoded<Value> decode(const ArchiveGraph& graph) {
    KeyedUnarchiver unarchiver(graph);
    Decoded<Value> decoded;
    unarchiver.decode(graph.root, decoded.value);
    decoded.fault = unarchiver.status() ? "" : unarchiver.status().error().message;
    return decoded;
}

/// The record with one field, decoded without fault.
std::shared_ptr<Everything> withField(const char* key, ArchiveValue value) {
    const ArchiveGraph graph = graphOf({ArchiveRecord{"Everything", {{key, value}}}, "words"});
    const auto decoded = decode<std::shared_ptr<Everything>>(graph);
    EXPECT_EQ(decoded.fault, "");
    return decoded.value;
}

std::string faultOfField(const char* key, ArchiveValue value) {
    const ArchiveGraph graph = graphOf({ArchiveRecord{"Everything", {{key, value}}}, "words"});
    return decode<std::shared_ptr<Everything>>(graph).fault;
}

template <class Value>
Value throughAnArchive(const Value& value) {
    KeyedArchiver archiver;
    const Uid root = archiver.encode(value);
    const ArchiveGraph graph = archiver.takeGraph(root);
    const auto decoded = decode<Value>(graph);
    EXPECT_EQ(decoded.fault, "");
    return decoded.value;
}

} // namespace

// --- Round trips

TEST(KeyedUnarchiver, BringsBackEveryCoderType) {
    const auto record = std::make_shared<Everything>();
    record->text = "words";
    record->boolean = true;
    record->integer = std::numeric_limits<std::int64_t>::min();
    record->real = 0.1;
    record->record = leaf("one");
    record->list = RecordList<Leaf>::of({leaf("two"), leaf("three")});
    const auto back = throughAnArchive(record);
    ASSERT_TRUE(back);
    EXPECT_NE(back, record);
    EXPECT_EQ(back->text, "words");
    EXPECT_TRUE(back->boolean);
    EXPECT_EQ(back->integer, std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(back->real, 0.1);
    EXPECT_EQ(back->record->name, "one");
    ASSERT_THAT(*back->list, SizeIs(2));
    EXPECT_EQ((*back->list)[0]->name, "two");
    EXPECT_EQ((*back->list)[1]->name, "three");
}

TEST(KeyedUnarchiver, BringsBackRealsToTheBit) {
    for (const double real : {-0.0, std::numeric_limits<double>::denorm_min(), 0.1 + 0.2,
                              std::numeric_limits<double>::infinity()}) {
        const auto record = std::make_shared<Everything>();
        record->real = real;
        const double back = throughAnArchive(record)->real;
        EXPECT_EQ(back, real);
        EXPECT_EQ(std::signbit(back), std::signbit(real));
    }
}

TEST(KeyedUnarchiver, KeepsNullAndEmptyApart) {
    const auto record = std::make_shared<Everything>();
    const auto nulls = throughAnArchive(record);
    EXPECT_EQ(nulls->text, std::nullopt);
    EXPECT_EQ(nulls->record, nullptr);
    EXPECT_FALSE(nulls->list.has_value());

    record->text = "";
    record->list.emplace();
    const auto empties = throughAnArchive(record);
    EXPECT_EQ(empties->text, "");
    ASSERT_TRUE(empties->list.has_value());
    EXPECT_TRUE(empties->list->empty());
}

TEST(KeyedUnarchiver, KeepsNullRootsNull) {
    EXPECT_EQ(throughAnArchive(std::shared_ptr<Leaf>()), nullptr);
    EXPECT_FALSE(throughAnArchive(ListOf<Leaf>()).has_value());
    EXPECT_EQ(throughAnArchive(Text()), std::nullopt);
}

TEST(KeyedUnarchiver, KeepsGrowableAndFixedListsApart) {
    const ListOf<Leaf> growable = RecordList<Leaf>::of({leaf("x")});
    const ListOf<Leaf> fixed = RecordList<Leaf>::fixedCopyOf(*growable);
    EXPECT_TRUE(throughAnArchive(growable)->isGrowable());
    EXPECT_FALSE(throughAnArchive(fixed)->isGrowable());
}

TEST(KeyedUnarchiver, MakesOneRecordOfOneObject) {
    const auto shared = leaf("shared");
    const auto record = std::make_shared<Everything>();
    record->record = shared;
    record->list = RecordList<Leaf>::of({shared, leaf("shared"), shared});
    const auto back = throughAnArchive(record);
    EXPECT_EQ((*back->list)[0], back->record);
    EXPECT_EQ((*back->list)[2], back->record);
    EXPECT_NE((*back->list)[1], back->record);
}

TEST(KeyedUnarchiver, BringsBackVeryManyRecords) {
    constexpr std::size_t kCount = 200'000;
    std::vector<std::shared_ptr<Leaf>> leaves;
    for (std::size_t i = 0; i < kCount; ++i) {
        leaves.push_back(leaf(std::to_string(i).c_str()));
    }
    const auto back = throughAnArchive(ListOf<Leaf>(RecordList<Leaf>::of(std::move(leaves))));
    ASSERT_THAT(*back, SizeIs(kCount));
    EXPECT_EQ(back->back()->name, std::to_string(kCount - 1));
}

// --- Missing and unknown keys

TEST(KeyedUnarchiver, ReadsAMissingKeyAsNullZeroOrFalse) {
    const ArchiveGraph graph = graphOf({ArchiveRecord{"Everything", {}}});
    const auto decoded = decode<std::shared_ptr<Everything>>(graph);
    ASSERT_EQ(decoded.fault, "");
    EXPECT_EQ(decoded.value->text, std::nullopt);
    EXPECT_FALSE(decoded.value->boolean);
    EXPECT_EQ(decoded.value->integer, 0);
    EXPECT_EQ(decoded.value->real, 0.0);
    EXPECT_EQ(decoded.value->record, nullptr);
    EXPECT_FALSE(decoded.value->list.has_value());
}

TEST(KeyedUnarchiver, IgnoresUnknownKeysOfAnyKind) {
    const ArchiveGraph graph = graphOf({ArchiveRecord{
        "Everything",
        {{"newer", true}, {"integer", std::int64_t{5}}, {"text2", uid(77)}, {"Text", uid(1)}}}});
    const auto decoded = decode<std::shared_ptr<Everything>>(graph);
    EXPECT_EQ(decoded.fault, "");
    EXPECT_EQ(decoded.value->integer, 5);
    EXPECT_EQ(decoded.value->text, std::nullopt);
}

// --- Kinds of values

TEST(KeyedUnarchiver, ReadsZeroAndOneAsBooleans) {
    EXPECT_TRUE(withField("boolean", std::int64_t{1})->boolean);
    EXPECT_FALSE(withField("boolean", std::int64_t{0})->boolean);
    EXPECT_THAT(faultOfField("boolean", std::int64_t{2}), HasSubstr("\"boolean\""));
    EXPECT_THAT(faultOfField("boolean", 1.0), HasSubstr("\"boolean\""));
    EXPECT_THAT(faultOfField("boolean", uid(2)), HasSubstr("\"boolean\""));
}

TEST(KeyedUnarchiver, ReadsAWholeRealAsAnInteger) {
    EXPECT_EQ(withField("integer", 30.0)->integer, 30);
    EXPECT_EQ(withField("integer", -9223372036854775808.0)->integer,
              std::numeric_limits<std::int64_t>::min());
    for (const double real : {30.5, 9223372036854775808.0, -1e19, std::nan(""),
                              std::numeric_limits<double>::infinity()}) {
        EXPECT_THAT(faultOfField("integer", real), HasSubstr("\"integer\"")) << real;
    }
    EXPECT_THAT(faultOfField("integer", true), HasSubstr("\"integer\""));
    EXPECT_THAT(faultOfField("integer", uid(2)), HasSubstr("\"integer\""));
}

TEST(KeyedUnarchiver, ReadsAnIntegerAsAReal) {
    EXPECT_EQ(withField("real", std::int64_t{30})->real, 30.0);
    EXPECT_THAT(faultOfField("real", true), HasSubstr("\"real\""));
    EXPECT_THAT(faultOfField("real", uid(2)), HasSubstr("\"real\""));
}

TEST(KeyedUnarchiver, RefusesAPlainValueWhereAReferenceIsDue) {
    for (const char* key : {"text", "record", "list"}) {
        EXPECT_THAT(faultOfField(key, std::int64_t{0}), HasSubstr(key));
        EXPECT_THAT(faultOfField(key, false), HasSubstr(key));
        EXPECT_THAT(faultOfField(key, 0.0), HasSubstr(key));
    }
}

TEST(KeyedUnarchiver, ReadsNumberObjectsAndNullAsZero) {
    EXPECT_EQ(decode<std::int64_t>(graphOf({std::int64_t{42}})).value, 42);
    const auto null = decode<std::int64_t>(graphOf({ArchiveNull{}}));
    EXPECT_EQ(null.value, 0);
    EXPECT_EQ(null.fault, "");
    EXPECT_THAT(decode<std::int64_t>(graphOf({"42"})).fault, HasSubstr("not a whole number"));
}

// --- Faults

TEST(KeyedUnarchiver, RefusesAnObjectOfAnotherClassOrKind) {
    const std::vector<ArchiveObject> others = {
        ArchiveObject(std::string("words")), ArchiveObject(std::int64_t{1}),
        ArchiveObject(ArchiveList{}), ArchiveObject(ArchiveDictionary{}),
        ArchiveObject(ArchiveRecord{"Everything", {}})};
    for (const ArchiveObject& other : others) {
        const auto decoded = decode<std::shared_ptr<Leaf>>(graphOf({other}));
        EXPECT_THAT(decoded.fault, HasSubstr("not a Leaf")) << "kind " << other.index();
        EXPECT_EQ(decoded.value, nullptr);
    }
}

TEST(KeyedUnarchiver, RefusesAnotherKindWhereATextOrAListIsDue) {
    EXPECT_THAT(decode<Text>(graphOf({std::int64_t{1}})).fault, HasSubstr("not a text"));
    EXPECT_THAT(decode<Text>(graphOf({ArchiveList{}})).fault, HasSubstr("not a text"));
    EXPECT_THAT(decode<ListOf<Leaf>>(graphOf({"words"})).fault, HasSubstr("not a list"));
    EXPECT_THAT(decode<ListOf<Leaf>>(graphOf({leafNamed({})})).fault, HasSubstr("not a list"));
}

TEST(KeyedUnarchiver, RefusesAReferenceBeyondTheGraph) {
    for (const std::size_t index : {std::size_t{2}, std::size_t{1000}, std::size_t{0xffffffff}}) {
        EXPECT_THAT(decode<std::shared_ptr<Leaf>>(graphOf({leafNamed(uid(index))})).fault,
                    HasSubstr("beyond"));
        EXPECT_THAT(decode<ListOf<Leaf>>(graphOf({ArchiveList{true, {uid(index)}}})).fault,
                    HasSubstr("beyond"));
    }
}

TEST(KeyedUnarchiver, RefusesNullInAList) {
    const auto decoded =
        decode<ListOf<Leaf>>(graphOf({ArchiveList{true, {uid(2), Uid{}}}, leafNamed({})}));
    EXPECT_THAT(decoded.fault, HasSubstr("null"));
    EXPECT_FALSE(decoded.value.has_value());
}

TEST(KeyedUnarchiver, RefusesARecordThatLeadsBackToItself) {
    EXPECT_THAT(
        decode<std::shared_ptr<Link>>(graphOf({ArchiveRecord{"Link", {{"next", uid(1)}}}})).fault,
        HasSubstr("leads back to itself"));
    EXPECT_THAT(decode<std::shared_ptr<Link>>(graphOf({ArchiveRecord{"Link", {{"next", uid(2)}}},
                                                       ArchiveRecord{"Link", {{"next", uid(1)}}}}))
                    .fault,
                HasSubstr("leads back to itself"));
    EXPECT_THAT(decode<std::shared_ptr<Link>>(graphOf({ArchiveRecord{"Link", {{"list", uid(2)}}},
                                                       ArchiveList{true, {uid(1)}}}))
                    .fault,
                HasSubstr("leads back to itself"));
}

TEST(KeyedUnarchiver, TakesASharedRecordForNoCycle) {
    const auto decoded = decode<std::shared_ptr<Link>>(
        graphOf({ArchiveRecord{"Link", {{"next", uid(2)}, {"list", uid(3)}}},
                 ArchiveRecord{"Link", {}}, ArchiveList{true, {uid(2), uid(2)}}}));
    ASSERT_EQ(decoded.fault, "");
    EXPECT_EQ((*decoded.value->list)[1], decoded.value->next);
}

TEST(KeyedUnarchiver, KeepsTheFirstFault) {
    const ArchiveGraph graph = graphOf({"words"});
    KeyedUnarchiver unarchiver(graph);
    std::shared_ptr<Leaf> record;
    unarchiver.decode(uid(1), record);
    const std::string first = unarchiver.status().error().message;
    std::int64_t number = 0;
    unarchiver.decode(uid(9), number);
    EXPECT_EQ(unarchiver.status().error().message, first);
}

// --- Dictionaries

namespace {

/// A dictionary of "one" and "two", which refer to the objects 4 and 5.
ArchiveGraph dictionaryGraph() {
    return graphOf({ArchiveDictionary{{{uid(2), uid(4)}, {uid(3), uid(5)}}}, "one", "two",
                    std::int64_t{1}, std::int64_t{2}});
}

} // namespace

TEST(ArchiveDictionaryValue, IsFoundUnderItsKey) {
    const ArchiveGraph graph = dictionaryGraph();
    KeyedUnarchiver unarchiver(graph);
    EXPECT_EQ(unarchiver.dictionaryValue(graph.root, "one"), uid(4));
    EXPECT_EQ(unarchiver.dictionaryValue(graph.root, "two"), uid(5));
    EXPECT_TRUE(unarchiver.status());
}

TEST(ArchiveDictionaryValue, IsNullForAMissingKey) {
    const ArchiveGraph graph = dictionaryGraph();
    KeyedUnarchiver unarchiver(graph);
    EXPECT_EQ(unarchiver.dictionaryValue(graph.root, "three"), Uid{});
    EXPECT_EQ(unarchiver.dictionaryValue(graph.root, ""), Uid{});
    EXPECT_TRUE(unarchiver.status());
}

TEST(ArchiveDictionaryValue, NeedsADictionary) {
    for (const std::size_t index : {0U, 2U, 4U, 9U}) {
        const ArchiveGraph graph = dictionaryGraph();
        KeyedUnarchiver unarchiver(graph);
        EXPECT_EQ(unarchiver.dictionaryValue(uid(index), "one"), Uid{});
        EXPECT_FALSE(unarchiver.status()) << index;
    }
}

TEST(ArchiveDictionaryValue, NeedsTextsAsKeys) {
    const ArchiveGraph graph = graphOf({ArchiveDictionary{{{uid(2), uid(2)}}}, std::int64_t{1}});
    KeyedUnarchiver unarchiver(graph);
    EXPECT_EQ(unarchiver.dictionaryValue(graph.root, "one"), Uid{});
    EXPECT_FALSE(unarchiver.status());
}
