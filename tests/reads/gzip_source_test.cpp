// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/gzip_source.h"

#include <gtest/gtest.h>

#include "support/gzip.h"
#include "support/memory_stream.h"
#include "support/temp_dir.h"

namespace reads {
namespace {

using support::gzipMember;

struct Decoded {
    std::string text;
    std::string error;
    std::string warning;
};

/// Every rule holds for each library that is built in.
class GzipReads : public testing::TestWithParam<GzipBackend> {
protected:
    void SetUp() override {
        if (!gzipBackendAvailable(GetParam())) {
            GTEST_SKIP() << "built without ISA-L";
        }
    }

    static GzipSource sourceOf(const std::string& bytes, std::size_t blockSize) {
        auto inflater = GetParam() == GzipBackend::isal ? makeIsalInflater() : makeZlibInflater();
        return GzipSource(std::make_unique<support::MemoryStream>(bytes, blockSize), bytes.size(),
                          std::move(inflater));
    }

    Decoded decode(const std::string& bytes, std::size_t blockSize = 4096) const {
        GzipSource source = sourceOf(bytes, blockSize);
        Decoded decoded;
        while (const std::size_t size = source.available()) {
            decoded.text.append(source.next(), size);
            source.skip(size);
        }
        decoded.error = source.status() ? std::string() : source.status().error().message;
        decoded.warning = source.warning();
        return decoded;
    }
};

// Without this the tests of a library that is not found would be skipped unseen.
TEST(GzipBackends, AreThoseThatTheProgramIsBuiltWith) {
    EXPECT_TRUE(gzipBackendAvailable(GzipBackend::zlib));
    EXPECT_EQ(gzipBackendAvailable(GzipBackend::isal), VEXTA_TESTS_WITH_ISAL != 0);
}

std::string threeMembers() {
    return gzipMember("@X\nACGT\n") + gzipMember("") + gzipMember("+\nIIIIIIIIIIIIIIIIIIII\n");
}
const std::string kThreeTexts = "@X\nACGT\n+\nIIIIIIIIIIIIIIIIIIII\n";

TEST_P(GzipReads, HoldEveryMemberHoweverTheFileIsCutIntoBlocks) {
    for (const std::size_t blockSize : {1u, 2u, 3u, 7u, 4096u}) {
        const Decoded decoded = decode(threeMembers(), blockSize);
        EXPECT_EQ(decoded.text, kThreeTexts);
        EXPECT_EQ(decoded.error, "");
        EXPECT_EQ(decoded.warning, "");
    }
}

TEST_P(GzipReads, AreWholeBeyondOneBlockOfOutput) {
    std::string text;
    for (int i = 0; text.size() < 1'500'000; ++i) {
        text += std::to_string(i * 7919) + "\n";
    }
    const Decoded decoded = decode(gzipMember(text) + gzipMember(text), 65536);
    EXPECT_EQ(decoded.error, "");
    EXPECT_TRUE(decoded.text == text + text);
}

TEST_P(GzipReads, AreTheSameWhenTheyAreReadToAPlaceInPieces) {
    std::string text;
    for (int i = 0; text.size() < 200'000; ++i) {
        text += std::to_string(i * 7919) + "\n";
    }
    const std::string bytes = gzipMember(text) + gzipMember(kThreeTexts);
    for (const std::size_t pieceSize : {7u, 1000u, 65536u, 1u << 20U}) {
        GzipSource source = sourceOf(bytes, 4096);
        std::string decoded;
        std::string piece(pieceSize, '#');
        // Now and then a byte is taken from a block instead.
        for (std::size_t size = 1; size > 0;) {
            size = source.read(piece.data(), piece.size());
            decoded.append(piece, 0, size);
            if (decoded.size() % 3 == 0 && source.peek() != GzipSource::kEnd) {
                decoded.push_back(static_cast<char>(source.get()));
            }
        }
        EXPECT_TRUE(decoded == text + kThreeTexts) << pieceSize;
        EXPECT_TRUE(source.status());
        EXPECT_EQ(source.fileBytesTaken(), bytes.size());
    }
}

TEST_P(GzipReads, FailWhenTheFileIsCutInsideAMember) {
    const std::string bytes = threeMembers();
    const std::size_t first = gzipMember("@X\nACGT\n").size();
    const std::size_t second = first + gzipMember("").size();
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Decoded decoded = decode(bytes.substr(0, length));
        const bool betweenMembers = length == first || length == second;
        EXPECT_EQ(decoded.error.empty(), betweenMembers) << "cut at " << length;
    }
    EXPECT_EQ(decode("").error, "not gzip data");
    EXPECT_EQ(decode(bytes.substr(0, first - 1)).error,
              "gzip data end before the member is complete (at byte " + std::to_string(first - 1) +
                  ")");
}

TEST_P(GzipReads, NeverLoseOrChangeTextWhenAByteIsDamaged) {
    const std::string bytes = threeMembers();
    for (std::size_t place = 0; place < bytes.size(); ++place) {
        for (const int flip : {0x01, 0x04, 0x08, 0x10, 0x80, 0xff}) {
            std::string damaged = bytes;
            damaged[place] = static_cast<char>(damaged[place] ^ flip);
            const Decoded decoded = decode(damaged, 5);
            // What gzip does not protect (time, system, hints) may change without harm.
            EXPECT_TRUE(!decoded.error.empty() || decoded.text == kThreeTexts)
                << "byte " << place << " flipped by " << flip;
        }
    }
}

TEST_P(GzipReads, VerifyChecksumAndLength) {
    std::string bytes = gzipMember("ACGT");
    bytes[bytes.size() - 8] ^= 1;
    EXPECT_NE(decode(bytes).error.find("the checksum differs"), std::string::npos);
    bytes = gzipMember("ACGT");
    bytes.back() ^= 1;
    EXPECT_NE(decode(bytes).error.find("the length differs"), std::string::npos);
}

TEST_P(GzipReads, AcceptZeroPaddingWithAWarningAndReadAMemberBehindIt) {
    for (const std::size_t blockSize : {1u, 3u, 4096u}) {
        const std::string padded = gzipMember("A") + std::string(1000, '\0');
        EXPECT_EQ(decode(padded, blockSize).text, "A");
        EXPECT_EQ(decode(padded, blockSize).error, "");
        EXPECT_EQ(decode(padded, blockSize).warning,
                  "1000 zero bytes between or after gzip members are ignored");
        const Decoded between = decode(padded + gzipMember("B"), blockSize);
        EXPECT_EQ(between.text, "AB");
        EXPECT_EQ(between.error, "");
        EXPECT_EQ(between.warning, "1000 zero bytes between or after gzip members are ignored");
    }
}

TEST_P(GzipReads, FailOnOtherBytesAfterTheLastMember) {
    const std::string first = gzipMember("A");
    const std::string expected =
        "gzip data are damaged after the member ending at byte " + std::to_string(first.size());
    for (const std::size_t blockSize : {1u, 2u, 3u, 7u, 4096u}) {
        for (const std::string& tail :
             {std::string("x"), std::string("xyz"),
              std::string(5, '\0') + "x" + std::string(5, '\0'), "XX" + gzipMember("B").substr(2),
              "xyz" + gzipMember("C")}) {
            const Decoded decoded = decode(first + tail, blockSize);
            EXPECT_EQ(decoded.text, "A");
            EXPECT_EQ(decoded.error, expected) << tail;
        }
    }
}

TEST_P(GzipReads, FailOnAnyBitFlippedInTheFirstThreeBytesOfALaterMember) {
    const std::string first = gzipMember("A");
    for (std::size_t bit = 0; bit < 24; ++bit) {
        std::string damaged = first + gzipMember("B") + gzipMember("C");
        char& byte = damaged[first.size() + bit / 8];
        byte = static_cast<char>(byte ^ (1 << bit % 8));
        EXPECT_NE(decode(damaged).error, "") << bit;
    }
}

TEST_P(GzipReads, TakeATrailingPieceOfAMagicForAMemberThatWasCut) {
    const std::string member = gzipMember("A");
    for (const std::string piece : {"\x1f", "\x1f\x8b"}) {
        const Decoded decoded = decode(member + piece);
        EXPECT_EQ(decoded.error, "gzip data end before the member is complete (at byte " +
                                     std::to_string(member.size() + piece.size()) + ")");
        EXPECT_EQ(decoded.warning, "");
    }
}

TEST_P(GzipReads, ReadEveryOptionalHeaderField) {
    std::string header = gzipMember("ACGT").substr(0, 10);
    header[3] = 0x1e;
    header += std::string("\x03\x00"
                          "abc"
                          "name\0comment\0",
                          18);
    const auto* bytes = static_cast<const Bytef*>(static_cast<const void*>(header.data()));
    const uLong crc = ::crc32(0, bytes, static_cast<uInt>(header.size()));
    header += static_cast<char>(crc & 0xffU);
    header += static_cast<char>(crc >> 8U & 0xffU);
    std::string whole = header + gzipMember("ACGT").substr(10);
    EXPECT_EQ(decode(whole, 1).text, "ACGT");
    EXPECT_EQ(decode(whole, 1).error, "");
    whole[header.size() - 1] ^= 1;
    EXPECT_NE(decode(whole).error.find("damaged gzip header"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Libraries, GzipReads,
                         testing::Values(GzipBackend::isal, GzipBackend::zlib),
                         [](const auto& backend) {
                             return backend.param == GzipBackend::isal ? "Isal" : "Zlib";
                         });

TEST(OpenReads, DecodesByTheNameOnlyWhenAsked) {
    const support::TempDir directory;
    const std::string bytes = gzipMember("ACGT");
    const std::string path = directory.write("x.fastq.gz", bytes);
    auto plain = openReads(path, ReadsEncoding::plain);
    auto decoded = openReads(path, ReadsEncoding::byFileName);
    ASSERT_TRUE(plain.ok() && decoded.ok());
    EXPECT_EQ(plain.value()->get(), 0x1f);
    EXPECT_EQ(plain.value()->fileBytesTaken(), 1u);
    EXPECT_EQ(decoded.value()->get(), 'A');
    EXPECT_TRUE(decoded.value()->verifyRest());
    EXPECT_EQ(decoded.value()->fileBytesTaken(), bytes.size());
    EXPECT_EQ(decoded.value()->fileSize(), bytes.size());
}

TEST(OpenReads, RefusesADirectory) {
    const support::TempDir directory;
    EXPECT_FALSE(openReads(directory.path(), ReadsEncoding::byFileName).ok());
}

} // namespace
} // namespace reads
