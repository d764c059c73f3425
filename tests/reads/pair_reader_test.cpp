// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/pair_reader.h"

#include <gtest/gtest.h>

#include "support/memory_stream.h"

namespace reads {
namespace {

std::string record(const std::string& header, const std::string& sequence = "ACGT",
                   const std::string& quality = "IIII", const std::string& end = "\n") {
    return header + end + sequence + end + "+" + end + quality + end;
}

struct Reading {
    std::vector<std::string> names;
    std::vector<std::string> read1;
    std::vector<std::size_t> batchSizes;
    std::string error;
};

Reading readAll(const std::string& text1, const std::string& text2) {
    support::MemoryStream stream1(text1);
    support::MemoryStream stream2(text2);
    PairReader reader(stream1, stream2, "/d/r1");
    ReadPairBatch batch;
    Reading reading;
    while (reader.readLookAhead()) {
        if (const platform::Status filled = reader.fill(batch); !filled) {
            reading.error = filled.error().message;
            break;
        }
        reading.batchSizes.push_back(batch.size());
        for (std::size_t i = 0; i < batch.size(); ++i) {
            reading.names.emplace_back(nameInHeader1(batch.header1(i)));
            reading.read1.emplace_back(batch.pair(i).read1);
        }
    }
    return reading;
}

using Texts = std::vector<std::string>;
using Sizes = std::vector<std::size_t>;

TEST(PairReader, MatchesHeadersThatDifferBehindABlank) {
    const Reading reading = readAll(record("@X 1:N:0:1"), record("@X 2:N:0:1"));
    EXPECT_EQ(reading.names, Texts{"@X"});
    EXPECT_EQ(reading.error, "");
}

TEST(PairReader, StopsWhenHeadersDiffer) {
    EXPECT_EQ(readAll(record("@X 1"), record("@Y 1")).error,
              "Two fastq files do not match at @X.\n");
}

TEST(PairReader, KeepsABlankOfHeader2BeyondHeader1) {
    EXPECT_EQ(readAll(record("@X"), record("@X 2:N")).error,
              "Two fastq files do not match at @X.\n");
}

TEST(PairReader, CutsAtTheSpaceAndNotAtTheTab) {
    EXPECT_EQ(readAll(record("@X\t1"), record("@X\t2")).error,
              "Two fastq files do not match at @X\t1.\n");
}

TEST(PairReader, AcceptsAQualityLineOf509BytesAndNotOneOf510) {
    const std::string longest(509, 'I');
    EXPECT_EQ(readAll(record("@X", "A", longest), record("@X")).error, "");
    EXPECT_EQ(readAll(record("@X", "A", longest + "I"), record("@X")).error,
              "/d/r1 or /d/r1 are trimcated/\n");
    EXPECT_EQ(readAll(record("@X"), record("@X", "A", longest + "I")).error,
              "/d/r1 or /d/r1 are trimcated/\n");
}

TEST(PairReader, ReportsAMissingLine) {
    EXPECT_EQ(readAll("@X\nACGT\n+\n", record("@X")).error, "/d/r1 or /d/r1 are trimcated/\n");
}

TEST(PairReader, ReadsEveryKindOfLineEndAlike) {
    for (const std::string end : {"\n", "\r\n", "\r"}) {
        const std::string text = record("@X", "ACGT", "IIII", end) + record("@Y", "GG", "II", end);
        const Reading reading = readAll(text, text);
        EXPECT_EQ(reading.names, (Texts{"@X", "@Y"}));
        EXPECT_EQ(reading.read1, (Texts{"ACGT", "GG"}));
    }
}

TEST(PairReader, ReadsALastRecordWithoutLineFeed) {
    const std::string text = "@X\nACGT\n+\nIIII";
    EXPECT_EQ(readAll(text, text).names, Texts{"@X"});
    EXPECT_EQ(readAll(text, text).error, "");
}

TEST(PairReader, GivesNothingForAnEmptyFileOrFirstLine) {
    EXPECT_TRUE(readAll("", record("@X")).batchSizes.empty());
    EXPECT_TRUE(readAll("\n" + record("@X"), record("@X")).batchSizes.empty());
    EXPECT_TRUE(readAll(std::string("\0@X\n", 4), record("@X")).batchSizes.empty());
}

TEST(PairReader, TakesOneSurplusRead1LinePerEmptyBatch) {
    const Reading reading = readAll(record("@X") + record("@Y") + record("@Z"), record("@X"));
    // "@Y" is read as a header of the first batch, the seven lines after it are look-aheads.
    EXPECT_EQ(reading.batchSizes, (Sizes{1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(reading.error, "");
}

TEST(PairReader, IgnoresSurplusRead2Records) {
    const Reading reading = readAll(record("@X"), record("@X") + record("@Y"));
    EXPECT_EQ(reading.names, Texts{"@X"});
    EXPECT_EQ(reading.error, "");
}

TEST(PairReader, ClosesTheBatchAtAnOverlongHeaderAndGoesOnWithItsRest) {
    const std::string longHeader = "@" + std::string(509, 'L') + "@Z";
    const Reading reading =
        readAll(record("@X") + record(longHeader), record("@X") + "@Y\n" + record("@Z"));
    // The rest "@Z" of the long line is the next look-ahead; read 2 went on past "@Y" alone.
    EXPECT_EQ(reading.names, (Texts{"@X", "@Z"}));
    EXPECT_EQ(reading.batchSizes, (Sizes{1, 1}));
    EXPECT_EQ(reading.error, "");
}

TEST(PairReader, UsesAnOverlongLookAheadAsFarAsItWasRead) {
    const std::string header(510, '@');
    EXPECT_EQ(readAll(header + "rest\n", record("@X")).error,
              "Two fastq files do not match at " + header + ".\n");
}

TEST(PairReader, TakesAnEmptyHeaderElsewhereForAHeader) {
    const Reading reading = readAll(record("@X") + record(""), record("@X") + record(""));
    EXPECT_EQ(reading.names, (Texts{"@X", ""}));
}

TEST(PairReader, SeesALineOnlyUpToItsFirstNul) {
    const std::string sequence("AC\0GT", 5);
    const Reading reading = readAll(record("@X", sequence), record("@X"));
    EXPECT_EQ(reading.read1, Texts{"AC"});
    EXPECT_EQ(reading.error, "");
}

TEST(PairReader, FillsBatchesOfAThousandPairs) {
    std::string text;
    for (int i = 0; i < 2500; ++i) {
        text += record("@" + std::to_string(i));
    }
    EXPECT_EQ(readAll(text, text).batchSizes, (Sizes{1000, 1000, 500}));
}

} // namespace
} // namespace reads
