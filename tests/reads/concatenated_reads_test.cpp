// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/concatenated_reads.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "reads/read_source.h"
#include "support/gzip.h"
#include "support/temp_dir.h"
#include "support/text_source.h"

namespace reads {
namespace {

using support::gzipMember;
using support::TextSource;
using testing::ElementsAre;
using testing::HasSubstr;

ConcatenatedReads partsOf(const std::vector<std::string>& texts, std::size_t blockSize) {
    std::vector<std::unique_ptr<ReadSource>> parts;
    for (const std::string& text : texts) {
        parts.push_back(std::make_unique<TextSource>(text, blockSize));
    }
    return ConcatenatedReads(std::move(parts));
}

std::string readInPieces(ReadSource& source, std::size_t pieceSize) {
    std::string text;
    std::string piece(pieceSize, '\0');
    while (const std::size_t size = source.read(piece.data(), piece.size())) {
        text.append(piece, 0, size);
    }
    return text;
}

std::string readByBlocks(ReadSource& source) {
    std::string text;
    while (const std::size_t size = source.available()) {
        text.append(source.next(), size);
        source.skip(size);
    }
    return text;
}

std::vector<std::string> linesOf(platform::ByteStream& stream) {
    constexpr std::ptrdiff_t kLimit = 510;
    std::array<char, kLimit + 1> buffer{};
    std::vector<std::string> lines;
    while (platform::readLineFromStream(buffer.data(), kLimit, stream) != nullptr) {
        lines.emplace_back(buffer.data());
    }
    return lines;
}

TEST(ConcatenatedReads, GiveTheTextsOneAfterTheOther) {
    const std::vector<std::vector<std::string>> cases = {{"alone"},
                                                         {"one\n", "two\n", "three\n"},
                                                         {"", "behind an empty file\n"},
                                                         {"a\n", "", ""},
                                                         {"", ""},
                                                         {"cut in the mid", "dle of a line\n"}};
    for (const auto& texts : cases) {
        std::string whole;
        for (const std::string& text : texts) {
            whole += text;
        }
        for (const std::size_t size : {1U, 2U, 3U, 64U}) {
            ConcatenatedReads read = partsOf(texts, size);
            EXPECT_EQ(readInPieces(read, 5), whole) << size;
            ConcatenatedReads taken = partsOf(texts, size);
            EXPECT_EQ(readByBlocks(taken), whole) << size;
            EXPECT_TRUE(taken.status());
            EXPECT_TRUE(taken.verifyRest());
        }
    }
}

TEST(ConcatenatedReads, GoOnInTheNextFileWhereALineHasNoEnd) {
    ConcatenatedReads source = partsOf({"@a\nAC", "GT\n+\nIIII\n"}, 64);
    EXPECT_THAT(linesOf(source), ElementsAre("@a", "ACGT", "+", "IIII"));
}

TEST(ConcatenatedReads, KeepACarriageReturnAndItsLineFeedTogether) {
    ConcatenatedReads source = partsOf({"@a\r", "\nAC\r\n"}, 64);
    EXPECT_THAT(linesOf(source), ElementsAre("@a", "AC"));
}

TEST(ConcatenatedReads, MayBeReadInPiecesAndByBlocksInTurn) {
    ConcatenatedReads source = partsOf({"abcdef", "ghijkl"}, 4);
    std::array<char, 3> piece{};
    ASSERT_EQ(source.read(piece.data(), 2), 2U);
    EXPECT_EQ(source.get(), 'c');
    EXPECT_EQ(readInPieces(source, 2), "defghijkl");
}

TEST(ConcatenatedReads, SumSizesAndPositions) {
    ConcatenatedReads source = partsOf({"12345", "678"}, 64);
    EXPECT_EQ(source.fileSize(), 8U);
    EXPECT_EQ(source.fileBytesTaken(), 0U);
    std::array<char, 5> piece{};
    ASSERT_EQ(source.read(piece.data(), 5), 5U);
    EXPECT_EQ(source.fileBytesTaken(), 5U);
    EXPECT_EQ(readByBlocks(source), "678");
    EXPECT_EQ(source.fileBytesTaken(), 8U);
}

TEST(ConcatenatedReads, FailWhereAPartFailsAndReadNothingBehindIt) {
    std::vector<std::unique_ptr<ReadSource>> parts;
    parts.push_back(std::make_unique<TextSource>("one\n"));
    parts.push_back(std::make_unique<TextSource>("two\n", 64, "Input/output error"));
    parts.push_back(std::make_unique<TextSource>("three\n"));
    ConcatenatedReads source(std::move(parts));
    EXPECT_EQ(readByBlocks(source), "one\ntwo\n");
    ASSERT_FALSE(source.status());
    EXPECT_EQ(source.status().error().message, "Input/output error");
    EXPECT_TRUE(source.part(0).status());
    EXPECT_FALSE(source.part(1).status());
    EXPECT_EQ(source.available(), 0U);
}

/// Plain and compressed files as a run opens them.
class ConcatenatedFiles : public testing::Test {
protected:
    ConcatenatedReads open(const std::vector<std::pair<std::string, std::string>>& files) const {
        std::vector<std::unique_ptr<ReadSource>> parts;
        for (const auto& [name, bytes] : files) {
            auto part = openReads(directory.write(name, bytes), ReadsEncoding::byFileName);
            parts.push_back(std::move(part).value());
        }
        return ConcatenatedReads(std::move(parts));
    }

    support::TempDir directory;
    const std::string text = std::string(3000, 'A') + "\n";
};

TEST_F(ConcatenatedFiles, MayBePlainOrCompressedEachByItself) {
    const std::string packed = gzipMember("two\n") + gzipMember("three\n");
    ConcatenatedReads source =
        open({{"1.fastq", "one\n"}, {"2.fastq.gz", packed}, {"3.fastq", "four\n"}});
    EXPECT_EQ(source.fileSize(), packed.size() + 9);
    EXPECT_EQ(readInPieces(source, 4096), "one\ntwo\nthree\nfour\n");
    EXPECT_EQ(source.gzipMembers(), 2U);
    EXPECT_EQ(source.fileBytesTaken(), source.fileSize());
    EXPECT_TRUE(source.verifyRest());
}

TEST_F(ConcatenatedFiles, FailOnDamageInTheSecond) {
    const std::string packed = gzipMember(text);
    ConcatenatedReads source = open({{"1.fastq.gz", packed},
                                     {"2.fastq.gz", packed.substr(0, packed.size() - 9)},
                                     {"3.fastq.gz", packed}});
    readInPieces(source, 512);
    ASSERT_FALSE(source.status());
    EXPECT_THAT(source.status().error().message, HasSubstr("before the member is complete"));
    EXPECT_TRUE(source.part(0).status());
    EXPECT_FALSE(source.part(1).status());
}

TEST_F(ConcatenatedFiles, FindDamageBehindTheBytesThatAnybodyAskedFor) {
    const std::string packed = gzipMember(text);
    std::string damaged = packed;
    damaged[damaged.size() - 6] ^= 1; // of the checksum
    ConcatenatedReads source =
        open({{"1.fastq.gz", packed}, {"2.fastq.gz", packed}, {"3.fastq.gz", damaged}});
    std::array<char, 10> piece{};
    ASSERT_EQ(source.read(piece.data(), piece.size()), piece.size());
    EXPECT_TRUE(source.status());
    const platform::Status sound = source.verifyRest();
    ASSERT_FALSE(sound);
    EXPECT_THAT(sound.error().message, HasSubstr("checksum"));
    EXPECT_FALSE(source.part(2).status());
}

TEST_F(ConcatenatedFiles, TellTheWarningsOfEachPart) {
    ConcatenatedReads source = open({{"1.fastq.gz", gzipMember("one\n")},
                                     {"2.fastq.gz", gzipMember("two\n") + std::string(3, '\0')}});
    EXPECT_EQ(readByBlocks(source), "one\ntwo\n");
    ASSERT_EQ(source.partCount(), 2U);
    EXPECT_EQ(source.part(0).warning(), "");
    EXPECT_THAT(source.part(1).warning(), HasSubstr("3 zero bytes"));
}

} // namespace
} // namespace reads
