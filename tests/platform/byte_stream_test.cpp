// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/byte_stream.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Gives one block after the other, and at the end says `fault` unless that is empty.
class BlockStream : public platform::ByteStream {
public:
    explicit BlockStream(std::vector<std::string> blocks, std::string fault = {})
        : m_blocks(std::move(blocks)), m_fault(std::move(fault)) {}

private:
    bool nextBlock() override {
        if (m_given == m_blocks.size()) {
            if (!m_fault.empty()) {
                fail(m_fault);
            }
            return false;
        }
        const std::string& block = m_blocks[m_given++];
        setBlock(block.data(), block.size());
        return true;
    }

    std::vector<std::string> m_blocks;
    std::string m_fault;
    std::size_t m_given = 0;
};

/// All that read() gives, asked for `size` bytes at a time.
std::string readAll(platform::ByteStream& stream, std::size_t size) {
    std::string text;
    std::array<char, 64> piece;
    while (const std::size_t count = stream.read(piece.data(), size)) {
        text.append(piece.data(), count);
    }
    return text;
}

TEST(ByteStream, ReadsOnFromBlockToBlockInPiecesOfAnySize) {
    for (std::size_t size = 1; size <= 20; ++size) {
        BlockStream stream({"ACGT", "A", "TTTTTTTTTT"});
        EXPECT_EQ(readAll(stream, size), "ACGTATTTTTTTTTT") << size;
        EXPECT_TRUE(stream.status());
    }
}

TEST(ByteStream, ReadsWhatIsLeftOfABlockThatWasLookedAt) {
    BlockStream stream({"ACGT", "TT"});
    EXPECT_EQ(stream.peek(), 'A');
    stream.skip(1);
    EXPECT_EQ(stream.available(), 3U);
    EXPECT_EQ(readAll(stream, 64), "CGTTT");
    EXPECT_EQ(stream.peek(), platform::ByteStream::kEnd);
    EXPECT_EQ(stream.available(), 0U);
}

TEST(ByteStream, GivesAllThatStandsBeforeAnErrorAndNothingBehindIt) {
    BlockStream stream({"ACGT"}, "Input/output error");
    EXPECT_EQ(readAll(stream, 3), "ACGT");
    EXPECT_EQ(stream.status().error().message, "Input/output error");
    std::array<char, 8> piece;
    EXPECT_EQ(stream.read(piece.data(), piece.size()), 0U);
}

} // namespace
