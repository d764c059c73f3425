// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/batch_reader.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <new>
#include <random>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

#include "reads/pair_reader.h"
#include "reads/watched_source.h"
#include "support/temp_dir.h"
#include "support/text_source.h"

namespace reads {
namespace {

using support::TextSource;

/// Records @0, @1 and so on, whose lengths change, of one of the files.
std::string numberedRecords(int count, int file, std::size_t mostBases = 12) {
    std::string text;
    std::mt19937 random(static_cast<unsigned>(file));
    for (int i = 0; i < count; ++i) {
        const std::size_t bases = random() % mostBases;
        text += "@" + std::to_string(i) + " " + std::to_string(file) + "\n" +
                std::string(bases, "ACGT"[random() % 4]) + "\n+\n" + std::string(bases, 'I') + "\n";
    }
    return text;
}

struct Reading {
    /// The four texts of each pair and its header 1.
    std::vector<std::string> pairs;
    std::string error;
    bool failed = false;
};

void keepPairs(const ReadPairBatch& batch, Reading& reading) {
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const ReadPair pair = batch.pair(i);
        std::string text(batch.header1(i));
        for (const std::string_view line : {pair.read1, pair.read2, pair.quality1, pair.quality2}) {
            text.append("\n").append(line);
        }
        reading.pairs.push_back(text);
    }
}

void readLineByLine(platform::ByteStream& read1, platform::ByteStream& read2, Reading& reading) {
    PairReader reader(read1, read2, "r1");
    ReadPairBatch batch;
    while (reader.readLookAhead()) {
        if (const platform::Status filled = reader.fill(batch); !filled) {
            reading.error = filled.error().message;
            break;
        }
        keepPairs(batch, reading);
    }
    reading.failed = !read1.status() || !read2.status();
}

/// The judge's reading.
Reading readPlainly(const std::string& text1, const std::string& text2,
                    const std::string& error2 = "") {
    support::MemoryStream read1(text1);
    support::MemoryStream read2(text2, 64, error2);
    Reading reading;
    readLineByLine(read1, read2, reading);
    return reading;
}

/// Full batches first, then line by line, as a run does.
Reading readInTwoParts(ReadSource& source1, ReadSource& source2, std::size_t pieceSize,
                       std::size_t* fullBatches = nullptr) {
    BatchReader reader(source1, source2, pieceSize);
    Reading reading;
    ReadPairBatch batch;
    std::size_t count = 0;
    while (const auto filled = reader.read(batch)) {
        EXPECT_EQ(filled->number, count++);
        keepPairs(batch, reading);
    }
    EXPECT_TRUE(reader.hasStopped());
    EXPECT_FALSE(reader.read(batch).has_value());
    ResumedReads read1(reader.takeRest1(), source1);
    ResumedReads read2(reader.takeRest2(), source2);
    readLineByLine(read1, read2, reading);
    if (fullBatches != nullptr) {
        *fullBatches = count;
    }
    return reading;
}

Reading readInTwoParts(const std::string& text1, const std::string& text2, std::size_t pieceSize,
                       std::size_t blockSize = 64, std::size_t* fullBatches = nullptr) {
    TextSource source1(text1, blockSize);
    TextSource source2(text2, blockSize);
    return readInTwoParts(source1, source2, pieceSize, fullBatches);
}

void expectSame(const Reading& reading, const Reading& expected) {
    EXPECT_EQ(reading.pairs.size(), expected.pairs.size());
    EXPECT_TRUE(reading.pairs == expected.pairs);
    EXPECT_EQ(reading.error, expected.error);
    EXPECT_EQ(reading.failed, expected.failed);
}

TEST(BatchReader, ReadsTheSameWhereverPiecesAndBlocksEnd) {
    // Pieces shorter than a record end at each of its bytes, again and again.
    const std::string text1 = numberedRecords(2300, 1);
    const std::string text2 = numberedRecords(2300, 2);
    const Reading expected = readPlainly(text1, text2);
    ASSERT_EQ(expected.pairs.size(), 2300u);
    for (const std::size_t pieceSize : {1u, 2u, 3u, 5u, 31u, 64u, 1009u, 65536u}) {
        for (const std::size_t blockSize : {1u, 7u, 64u, 100000u}) {
            SCOPED_TRACE(std::to_string(pieceSize) + " " + std::to_string(blockSize));
            std::size_t fullBatches = 0;
            expectSame(readInTwoParts(text1, text2, pieceSize, blockSize, &fullBatches), expected);
            EXPECT_EQ(fullBatches, 2u);
        }
    }
}

TEST(BatchReader, TellsOfEveryByteThatItsBatchesTookFromTheFiles) {
    const std::string text1 = numberedRecords(2000, 1);
    const std::string text2 = numberedRecords(2000, 2);
    TextSource source1(text1);
    TextSource source2(text2);
    BatchReader reader(source1, source2, 1);
    ReadPairBatch batch;
    const auto first = reader.read(batch);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->fileBytes, source1.fileBytesTaken() + source2.fileBytesTaken());
    EXPECT_LT(first->fileBytes, text1.size() + text2.size());
    const auto second = reader.read(batch);
    ASSERT_TRUE(second);
    EXPECT_EQ(first->fileBytes + second->fileBytes, text1.size() + text2.size());
}

TEST(BatchReader, StopsBeforeTheBatchThatHoldsAnOddRecord) {
    const std::string text2 = numberedRecords(3500, 2);
    const std::vector<std::string> oddHeaders = {
        "@1500 1\r",
        "@1500\r1",
        std::string("@1500 \0", 7),
        "@1500 " + std::string(503, 'x'),  // 509 bytes are read
        "@1500 " + std::string(504, 'x'),  // 510 are too many
        "@1500 " + std::string(1504, 'x'), //
        "@1501",
        "",
        "@1500\t1",
    };
    for (const std::string& header : oddHeaders) {
        std::string text1 = numberedRecords(3500, 1);
        text1.replace(text1.find("@1500 1"), 7, header);
        const Reading expected = readPlainly(text1, text2);
        for (const std::size_t pieceSize : {3u, 4096u, 65536u}) {
            SCOPED_TRACE(header + " " + std::to_string(pieceSize));
            std::size_t fullBatches = 0;
            expectSame(readInTwoParts(text1, text2, pieceSize, 64, &fullBatches), expected);
            EXPECT_EQ(fullBatches, header.size() == 509 ? 3u : 1u);
        }
    }
}

TEST(BatchReader, LeavesTheHeaderThatMayEndTheReadsToTheJudge) {
    std::string text1 = numberedRecords(3500, 1);
    std::string text2 = numberedRecords(3500, 2);
    text1.erase(text1.find("@2000 1"), 7);
    text2.erase(text2.find("@2000 2"), 7);
    std::size_t fullBatches = 0;
    const Reading reading = readInTwoParts(text1, text2, 100, 64, &fullBatches);
    EXPECT_EQ(fullBatches, 2u);
    EXPECT_EQ(reading.pairs.size(), 2000u);
    EXPECT_EQ(reading.error, "");
    // Elsewhere an empty header is one like any other.
    text1 = numberedRecords(3500, 1);
    text2 = numberedRecords(3500, 2);
    text1.erase(text1.find("@2001 1"), 7);
    text2.erase(text2.find("@2001 2"), 7);
    EXPECT_EQ(readInTwoParts(text1, text2, 100, 64, &fullBatches).pairs.size(), 3500u);
    EXPECT_EQ(fullBatches, 3u);
}

TEST(BatchReader, HoldsTheLongestRegularLines) {
    std::string text;
    const std::string line(509, 'A');
    for (int i = 0; i < 1100; ++i) {
        text += "@" + line.substr(1) + "\n" + line + "\n" + line + "\n" + line + "\n";
    }
    std::size_t fullBatches = 0;
    const Reading reading = readInTwoParts(text, text, 65536, 1 << 20, &fullBatches);
    EXPECT_EQ(reading.pairs.size(), 1100u);
    EXPECT_EQ(fullBatches, 1u);
}

TEST(BatchReader, StopsAtALineThatNeverEnds) {
    const std::string text = numberedRecords(1500, 1) + std::string(5'000'000, 'x');
    expectSame(readInTwoParts(text, text, 65536, 1 << 20), readPlainly(text, text));
}

TEST(BatchReader, GivesBackLinesOfASourceThatFailsBeforeItSaysSo) {
    for (const int pairs : {0, 1, 999, 1000, 1500, 2000}) {
        const std::string text1 = numberedRecords(3000, 1);
        const std::string text2 = numberedRecords(pairs, 2);
        TextSource source1(text1);
        TextSource source2(text2, 64, "Input/output error");
        expectSame(readInTwoParts(source1, source2, 100),
                   readPlainly(text1, text2, "Input/output error"));
    }
}

TEST(BatchReader, ReadsAFileThatShrinksToItsNewEnd) {
    const support::TempDir directory;
    const std::string text1 = numberedRecords(4000, 1);
    const std::string text2 = numberedRecords(4000, 2);
    const std::string path1 = directory.write("r1", text1);
    auto source1 = openReads(path1, ReadsEncoding::plain);
    auto source2 = openReads(directory.write("r2", text2), ReadsEncoding::plain);
    ASSERT_TRUE(source1.ok() && source2.ok());
    BatchReader reader(*source1.value(), *source2.value(), 64);
    ReadPairBatch batch;
    Reading reading;
    ASSERT_TRUE(reader.read(batch).has_value());
    keepPairs(batch, reading);
    // Into the middle of a record's sequence.
    const std::size_t end = text1.find("@2500 1\n") + 8;
    std::filesystem::resize_file(path1, end);
    while (reader.read(batch)) {
        keepPairs(batch, reading);
    }
    ResumedReads read1(reader.takeRest1(), *source1.value());
    ResumedReads read2(reader.takeRest2(), *source2.value());
    readLineByLine(read1, read2, reading);
    expectSame(reading, [&] {
        Reading expected = readPlainly(text1.substr(0, end), text2);
        expected.failed = false;
        return expected;
    }());
    EXPECT_EQ(reading.error, "r1 or r1 are trimcated/\n");
}

/// Random texts in which odd things are common, behind a batch or two without any.
class OddFiles {
public:
    explicit OddFiles(unsigned seed) : m_random(seed) {}

    std::string spoilt(std::string text) {
        for (unsigned i = m_random() % 4; i > 0; --i) {
            const std::size_t place = text.size() * (60 + m_random() % 40) / 100;
            const std::vector<std::string> oddities = {
                "\n", "\r", std::string(1, '\0'), "\r\n", " ", "A", "\n\n", std::string(600, 'y')};
            const std::string& odd = oddities[m_random() % oddities.size()];
            text.replace(place, m_random() % 3, odd);
        }
        if (m_random() % 3 == 0) {
            text.resize(text.size() * (60 + m_random() % 41) / 100);
        }
        return text;
    }
    std::size_t pieceSize() { return 1 + m_random() % 3000; }

private:
    std::mt19937 m_random;
};

TEST(BatchReader, AgreesWithTheJudgeOnRandomFiles) {
    const std::string sound1 = numberedRecords(2600, 1);
    const std::string sound2 = numberedRecords(2600, 2);
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        OddFiles odd(seed);
        const std::string text1 = odd.spoilt(sound1);
        const std::string text2 = odd.spoilt(sound2);
        expectSame(readInTwoParts(text1, text2, odd.pieceSize()), readPlainly(text1, text2));
    }
}

/// As many threads as given read all they get; the batches by their numbers, then the rest.
Reading readByThreads(ReadSource& source1, ReadSource& source2, std::size_t threadCount) {
    BatchReader reader(source1, source2, 500);
    std::mutex mutex;
    std::map<std::uint64_t, Reading> byNumber;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            ReadPairBatch batch;
            while (const auto filled = reader.read(batch)) {
                Reading one;
                keepPairs(batch, one);
                const std::lock_guard lock(mutex);
                byNumber[filled->number] = std::move(one);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    Reading reading;
    for (const auto& [number, one] : byNumber) {
        reading.pairs.insert(reading.pairs.end(), one.pairs.begin(), one.pairs.end());
    }
    ResumedReads read1(reader.takeRest1(), source1);
    ResumedReads read2(reader.takeRest2(), source2);
    readLineByLine(read1, read2, reading);
    return reading;
}

TEST(BatchReader, GivesTheSameToAnyNumberOfThreads) {
    const std::string text1 = numberedRecords(9300, 1);
    const std::string text2 = numberedRecords(9300, 2);
    std::string odd1 = text1;
    std::string odd2 = text2;
    odd1.insert(odd1.find("@7200 1") + 8, "\r");
    odd2.insert(odd2.find("@5500 2") + 8, "\r");
    const std::string cut = text2.substr(0, text2.size() / 2);
    const std::vector<std::pair<std::string, std::string>> files = {
        {text1, text2}, {odd1, text2}, {text1, odd2}, {odd1, odd2}, {text1, cut}};
    for (const auto& [first, second] : files) {
        const Reading expected = readPlainly(first, second);
        for (const std::size_t threads : {1u, 2u, 8u}) {
            SCOPED_TRACE(threads);
            TextSource source1(first, 1000);
            TextSource source2(second, 1000);
            expectSame(readByThreads(source1, source2, threads), expected);
        }
    }
}

TEST(BatchReader, StopsForGoodWhenASourceThrows) {
    const std::string text1 = numberedRecords(3500, 1);
    const std::string text2 = numberedRecords(3500, 2);
    for (const bool inFile2 : {false, true}) {
        bool thrown = false;
        const auto throwOnce = [&](std::size_t taken) {
            if (taken >= text1.size() / 2 && !thrown) {
                thrown = true;
                throw std::bad_alloc();
            }
        };
        const auto goOn = [](std::size_t) {};
        WatchedSource source1(text1, inFile2 ? std::function<void(std::size_t)>(goOn) : throwOnce);
        WatchedSource source2(text2, inFile2 ? std::function<void(std::size_t)>(throwOnce) : goOn);
        BatchReader reader(source1, source2, 500);
        ReadPairBatch batch;
        EXPECT_TRUE(reader.read(batch).has_value());
        EXPECT_THROW(reader.read(batch), std::bad_alloc);
        EXPECT_TRUE(reader.hasStopped());
        // The source would go on, with lines missing.
        EXPECT_FALSE(reader.read(batch).has_value());
    }
}

TEST(BatchReader, LeavesFile1AloneBehindAStretchThatIsNotRegular) {
    std::string text1 = numberedRecords(3500, 1);
    const std::string text2 = numberedRecords(3500, 2);
    text1.insert(text1.find("@1500 1") + 7, "\r");
    const std::size_t behindOddBatch = text1.find("@2500 1");
    std::size_t furthest = 0;
    WatchedSource source1(text1, [&](std::size_t taken) { furthest = std::max(furthest, taken); });
    WatchedSource source2(text2, [](std::size_t) {});
    BatchReader reader(source1, source2, 500);
    ReadPairBatch batch;
    EXPECT_TRUE(reader.read(batch).has_value());
    EXPECT_FALSE(reader.hasStopped());
    EXPECT_FALSE(reader.read(batch).has_value());
    // Who has the next turn at file 1 sees it there: nothing sets it once the turn has passed.
    EXPECT_TRUE(reader.hasStopped());
    EXPECT_FALSE(reader.read(batch).has_value());
    EXPECT_LT(furthest, behindOddBatch);
}

TEST(BatchReader, GivesBackTheStretchOfFile1ThatAnotherThreadReadMeanwhile) {
    const std::string text1 = numberedRecords(3500, 1);
    std::string text2 = numberedRecords(3500, 2);
    text2.insert(text2.find("@1500 2") + 7, "\r");
    const Reading expected = readPlainly(text1, text2);
    // The batch with the odd line is held in file 2 until another thread reads the next of file 1.
    const std::size_t oddPlace = text2.find('\r');
    const std::size_t withinNext = text1.find("@2500 1");
    std::promise<void> promise;
    const std::shared_future<void> nextIsRead = promise.get_future().share();
    bool promiseIsKept = false;
    WatchedSource source1(text1, [&](std::size_t taken) {
        if (taken >= withinNext && !promiseIsKept) {
            promiseIsKept = true;
            promise.set_value();
        }
    });
    WatchedSource source2(text2, [&](std::size_t taken) {
        if (taken >= oddPlace) {
            // The limit only keeps a broken reader from hanging.
            EXPECT_EQ(nextIsRead.wait_for(std::chrono::seconds(10)), std::future_status::ready);
        }
    });
    expectSame(readByThreads(source1, source2, 2), expected);
}

} // namespace
} // namespace reads
