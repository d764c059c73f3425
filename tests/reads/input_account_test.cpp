// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/input_account.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "reads/pair_reader.h"
#include "support/memory_stream.h"

namespace reads {
namespace {

using Lanes = std::vector<FlowCellLane>;

std::string records(int count, const std::string& end = "\n") {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "@r" + std::to_string(i) + end + "ACGT" + end + "+" + end + "IIII" + end;
    }
    return text;
}

/// Reads both texts as a run does, and keeps account.
InputAccount accountOf(const std::string& text1, const std::string& text2) {
    support::MemoryStream stream1(text1);
    support::MemoryStream stream2(text2);
    PairReader reader(stream1, stream2, "/d/r1");
    ReadPairBatch batch;
    InputAccount account;
    while (reader.readLookAhead()) {
        if (!reader.fill(batch)) {
            return account;
        }
        account.read1.records += static_cast<std::int64_t>(batch.size());
        account.read2.records += static_cast<std::int64_t>(batch.size());
    }
    closeAccount(account, {reader.end(), reader.unpairedLines1(), reader.unpairedLines2(),
                           countRest(stream1), countRest(stream2)});
    return account;
}

/// Only there does the reader look for the end of the reads; an empty line elsewhere fails the run.
constexpr int kFullBatch = kPairsPerBatch;

TEST(InputAccount, FilesOfTheSameLengthAreReadToTheirEnds) {
    for (const int count : {0, 3, kFullBatch, kFullBatch + 1}) {
        const InputAccount account = accountOf(records(count), records(count));
        EXPECT_TRUE(account.allWasRead()) << count;
        EXPECT_EQ(account.read1.records, count);
        EXPECT_EQ(account.read1.surplusRecords, 0);
        EXPECT_EQ(account.read2.surplusRecords, 0);
    }
}

TEST(InputAccount, EmptyLinesAtTheEndOfAFileHideNothing) {
    for (const char* blank : {"\n", "\n\n", "\r\n"}) {
        const std::string text = records(kFullBatch) + blank;
        EXPECT_TRUE(accountOf(text, text).allWasRead());
        EXPECT_TRUE(accountOf(records(kFullBatch), text).allWasRead());
    }
}

TEST(InputAccount, CountsTheRecordsThatTheOtherFileLacks) {
    for (const int common : {0, 1, 3, 999, 1000, 1001}) {
        for (const int more : {1, 2, 1500}) {
            SCOPED_TRACE(std::to_string(common) + " and " + std::to_string(more));
            const std::string shorter = records(common);
            const std::string longer = records(common + more);
            EXPECT_EQ(accountOf(longer, shorter).read1.surplusRecords, more);
            EXPECT_EQ(accountOf(shorter, longer).read2.surplusRecords, more);
            EXPECT_EQ(accountOf(shorter, longer).read1.surplusRecords, 0);
            EXPECT_FALSE(accountOf(longer, shorter).allWasRead());
        }
    }
}

TEST(InputAccount, CountsABegunRecordAsOne) {
    EXPECT_EQ(accountOf(records(1), records(1) + "@r1\nAC").read2.surplusRecords, 1);
    EXPECT_EQ(accountOf(records(1) + "@r1", records(1)).read1.surplusRecords, 1);
}

TEST(InputAccount, TellsOfReadsBehindAnEmptyLine) {
    const InputAccount account =
        accountOf(records(kFullBatch) + "\n" + records(5), records(kFullBatch + 5));
    EXPECT_EQ(account.read1.end, ReadingEnd::emptyLine);
    EXPECT_TRUE(account.read1.endedEarly());
    EXPECT_EQ(account.read1.records, kFullBatch);
    EXPECT_EQ(account.read1.rest.bytes, records(5).size());
    EXPECT_EQ(account.read2.surplusRecords, 0);
    EXPECT_FALSE(account.allWasRead());
}

TEST(InputAccount, TellsOfReadsBehindZeroBytes) {
    const InputAccount account = accountOf(
        records(kFullBatch) + std::string(4096, '\0') + records(5), records(kFullBatch + 8));
    EXPECT_EQ(account.read1.end, ReadingEnd::zeroByte);
    EXPECT_TRUE(account.read1.endedEarly());
    EXPECT_GT(account.read1.rest.zeroBytes, 0U);
}

TEST(InputAccount, AnEmptyFileIsOne) {
    EXPECT_TRUE(accountOf("", "").read1.isEmpty());
    EXPECT_TRUE(accountOf("\n\n", "").read1.isEmpty());
    EXPECT_FALSE(accountOf(records(1), "").read1.isEmpty());
    EXPECT_TRUE(accountOf(records(1), "").read2.isEmpty());
}

TEST(InputAccount, CountsLinesOfTheRestHoweverTheyEndAndWhereverBlocksDo) {
    for (std::size_t blockSize = 1; blockSize < 9; ++blockSize) {
        support::MemoryStream mixed("a\r\nb\rc\n\r\n\nd", blockSize);
        const RestOfFile rest = countRest(mixed);
        EXPECT_EQ(rest.lines, 6) << blockSize;
        EXPECT_EQ(rest.textBytes, 4U);
        EXPECT_EQ(rest.bytes, 11U);
    }
}

TEST(HeaderFacts, KeepsEachFlowCellAndLaneOnce) {
    HeaderFacts facts;
    for (const char* header : {"@M1:7:FC2:2:1101:1:2 1:N:0:A", "@M1:7:FC1:1:1101:1:2 1:N:0:A",
                               "@M1:7:FC1:1:1102:1:2 1:N:0:A", "@M1:7:FC1:2:1101:1:2 1:N:0:A",
                               "@SRR1.1 length=150", "@M1:7:FC2:2:1103:1:2:ACGT 1:N:0:A"}) {
        facts.add(header);
    }
    EXPECT_EQ(facts.lanes(), (Lanes{{"FC1", "1"}, {"FC1", "2"}, {"FC2", "2"}}));
    EXPECT_EQ(facts.read1Headers(), 5);
    EXPECT_EQ(facts.read2Headers(), 0);
}

TEST(HeaderFacts, ReadsWhichReadAHeaderCallsItself) {
    HeaderFacts facts;
    for (const char* header : {"@a 2:N:0:A", "@a 2", "@a 2 :", "@a", "@a ", "@a 1:Y:18:A"}) {
        facts.add(header);
    }
    EXPECT_EQ(facts.read1Headers(), 1);
    EXPECT_EQ(facts.read2Headers(), 1);
}

TEST(HeaderFacts, KeepsABoundedNumberOfLanes) {
    HeaderFacts facts;
    for (int i = 0; i < 1000; ++i) {
        facts.add("@M:1:FC" + std::to_string(i) + ":1:1:1:1 1:N:0:A");
    }
    EXPECT_EQ(facts.lanes().size(), HeaderFacts::kMostLanes);
}

} // namespace
} // namespace reads
