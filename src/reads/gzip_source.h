// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/byte_stream.h"
#include "reads/read_source.h"

namespace reads {

/// What one step of decompression did.
struct InflateStep {
    enum class State { going, finished, damaged };
    /// Bytes of the input that were used. Negative when an earlier step took too many and the end
    /// of the data was among them: by kMostBytesGivenBack at most.
    std::ptrdiff_t taken = 0;
    std::size_t produced = 0;
    State state = State::going;
};

/// A decompression library: raw deflate data and CRC-32, nothing of the gzip format around them.
class Inflater {
public:
    static constexpr std::size_t kMostBytesGivenBack = 8;

    virtual ~Inflater() = default;
    virtual void start() = 0;
    virtual InflateStep step(const unsigned char* input, std::size_t inputSize,
                             unsigned char* output, std::size_t outputSize) = 0;
    virtual std::uint32_t crc32(std::uint32_t crc, const unsigned char* data,
                                std::size_t size) const = 0;
};

std::unique_ptr<Inflater> makeZlibInflater();
/// REQUIRES: isalIsBuiltIn().
std::unique_ptr<Inflater> makeIsalInflater();
bool isalIsBuiltIn() noexcept;

/// Compressed bytes with a little look-ahead and a little way back.
class CompressedInput {
public:
    explicit CompressedInput(std::unique_ptr<platform::ByteStream> stream);

    /// Whether `count` bytes (a few) are there to be looked at; fetches them.
    bool has(std::size_t count);
    const unsigned char* data() const noexcept { return m_bytes.data() + m_next; }
    std::size_t size() const noexcept { return m_bytes.size() - m_next; }
    void move(std::ptrdiff_t count) noexcept;
    std::uint64_t position() const noexcept { return m_position; }
    /// What went wrong with the file itself; empty: nothing.
    const platform::Status& status() const noexcept { return m_stream->status(); }

private:
    std::unique_ptr<platform::ByteStream> m_stream;
    std::vector<unsigned char> m_bytes;
    std::size_t m_next = Inflater::kMostBytesGivenBack;
    std::uint64_t m_position = 0;
};

/// Decodes gzip members one after the other. The format (headers, trailers, what may follow) is
/// read here and the same for every library.
class GzipSource final : public ReadSource {
public:
    GzipSource(std::unique_ptr<platform::ByteStream> compressed, std::uint64_t fileSize,
               std::unique_ptr<Inflater> inflater);

    std::uint64_t fileSize() const noexcept override { return m_fileSize; }
    std::uint64_t fileBytesTaken() const noexcept override { return m_input.position(); }
    std::uint64_t gzipMembers() const noexcept override { return m_members; }
    std::string warning() const override;
    platform::Status verifyRest() override;

private:
    enum class Place { betweenMembers, inMember, atEnd };

    bool nextBlock() override;
    std::size_t readPastBlock(char* to, std::size_t size) override;
    void beginMember();
    bool readHeader();
    bool skipHeaderFields(unsigned flags);
    bool skipHeaderText();
    /// The next byte of the header, or -1 after the end.
    int headerByte();
    std::size_t inflateSome(unsigned char* output, std::size_t outputSize);
    void readTrailer();
    void endWithoutMember();
    void failAt(const std::string& what);
    void failTruncated();

    CompressedInput m_input;
    std::uint64_t m_fileSize;
    std::unique_ptr<Inflater> m_inflater;
    /// Allocated when a caller looks at bytes instead of having them decoded to a place of its own.
    std::vector<char> m_block;
    Place m_place = Place::betweenMembers;
    /// Where the last member ended; 0 before the first.
    std::uint64_t m_memberEnd = 0;
    std::uint64_t m_members = 0;
    std::uint64_t m_paddingBytes = 0;
    std::uint32_t m_headerCrc = 0;
    std::uint32_t m_crc = 0;
    std::uint32_t m_length = 0;
};

} // namespace reads
