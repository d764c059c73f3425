// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "archive/deep_copy.h"

#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "archive/archive_records.h"

using archive::deepCopy;
using archive::ListOf;
using archive::RecordList;
using archive_records::Everything;
using archive_records::leaf;
using archive_records::Leaf;
using archive_records::Link;
using testing::SizeIs;

TEST(DeepCopy, SharesNoRecordWithItsSource) {
    const auto record = std::make_shared<Everything>();
    record->record = leaf("one");
    record->list = RecordList<Leaf>::of({leaf("two")});
    const ListOf<Everything> source = RecordList<Everything>::of({record});
    const ListOf<Everything> copy = deepCopy(source);
    ASSERT_THAT(*copy, SizeIs(1));
    EXPECT_NE((*copy)[0], record);
    EXPECT_NE((*copy)[0]->record, record->record);
    EXPECT_NE((*(*copy)[0]->list)[0], (*record->list)[0]);

    (*record->list)[0]->name = "changed";
    EXPECT_EQ((*(*copy)[0]->list)[0]->name, "two");
}

TEST(DeepCopy, KeepsWhatIsSharedWithinTheListShared) {
    const auto shared = leaf("shared");
    const auto copy = deepCopy(ListOf<Leaf>(RecordList<Leaf>::of({shared, leaf("x"), shared})));
    EXPECT_EQ((*copy)[0], (*copy)[2]);
    EXPECT_NE((*copy)[0], (*copy)[1]);
}

TEST(DeepCopy, KeepsNullAndEmptyListsApart) {
    EXPECT_FALSE(deepCopy(ListOf<Leaf>()).has_value());
    const auto empty = deepCopy(ListOf<Leaf>(RecordList<Leaf>()));
    ASSERT_TRUE(empty.has_value());
    EXPECT_TRUE(empty->empty());
}

TEST(DeepCopy, IsGrowableEvenOfAFixedList) {
    const auto source = RecordList<Leaf>::of({leaf("one")});
    const auto fixed = RecordList<Leaf>::fixedCopyOf(source);
    for (const auto& list : {source, fixed}) {
        ListOf<Leaf> copy = deepCopy(ListOf<Leaf>(list));
        copy->append(leaf("two"));
        EXPECT_THAT(*copy, SizeIs(2));
    }
}

TEST(DeepCopy, LeavesNothingOfAFreshRecord) {
    // A fresh one of these holds values of its own.
    const auto copy =
        deepCopy(ListOf<Everything>(RecordList<Everything>::of({std::make_shared<Everything>()})));
    const Everything& copied = *(*copy)[0];
    EXPECT_EQ(copied.text, std::nullopt);
    EXPECT_FALSE(copied.boolean);
    EXPECT_EQ(copied.integer, 0);
    EXPECT_EQ(copied.real, 0.0);
    EXPECT_EQ(copied.record, nullptr);
    EXPECT_FALSE(copied.list.has_value());
}

TEST(DeepCopy, RefusesANullRecordInAList) {
    const ListOf<Leaf> list = RecordList<Leaf>::of({leaf("one"), nullptr});
    EXPECT_THROW(deepCopy(list), std::logic_error);
}

TEST(DeepCopy, RefusesARecordThatLeadsBackToItself) {
    const auto first = std::make_shared<Link>();
    const auto second = std::make_shared<Link>();
    first->next = second;
    second->list = RecordList<Link>::of({first});
    EXPECT_THROW(deepCopy(ListOf<Link>(RecordList<Link>::of({first}))), std::logic_error);
    second->list.reset(); // else they would keep each other for good
}

TEST(ListOfRecords, OfFixedSizeTakesNoFurtherRecord) {
    const auto source = RecordList<Leaf>::of({leaf("one")});
    auto fixed = RecordList<Leaf>::fixedCopyOf(source);
    EXPECT_EQ(fixed[0], source[0]);
    EXPECT_THROW(fixed.append(leaf("two")), std::logic_error);
    EXPECT_THAT(fixed, SizeIs(1));
}

TEST(ListOfRecords, OfNoListReadsAsEmpty) {
    EXPECT_TRUE(archive::orEmpty(ListOf<Leaf>()).empty());
}
