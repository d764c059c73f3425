// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The gzip format (RFC 1952) around a library's raw inflate. A file is any number of members:
//
//     header (10 bytes and optional fields) | deflate data | CRC-32 | length
//
// Both libraries would parse that as well, but each with its own idea of what may follow a member.
// Parsing it here gives one rule, and every header CRC, CRC-32 and length is compared by us.
//
// Lost reads must not go unnoticed. So zero bytes after a member are padding and give a warning,
// but any other byte there is damage: it may be what is left of a further member. One byte off the
// magic number is a damaged header. A file whose first bytes are not gzip is no gzip file at all.
//
// Decoding goes straight to where the bytes are wanted; it costs what the library costs, and a
// CRC-32. Tested by gzip_source_test.cpp and fuzz/gzip_fuzz.cpp, both libraries against one
// another.
#include "reads/gzip_source.h"

#include <algorithm>
#include <array>
#include <utility>

namespace reads {
namespace {

constexpr std::size_t kBlockSize = std::size_t{512} * 1024;
constexpr std::array<unsigned char, 3> kMagic = {0x1f, 0x8b, 0x08};
constexpr std::size_t kTrailerSize = 8;

constexpr unsigned kFlagHeaderCrc = 0x02;
constexpr unsigned kFlagExtra = 0x04;
constexpr unsigned kFlagName = 0x08;
constexpr unsigned kFlagComment = 0x10;
constexpr unsigned kReservedFlags = 0xe0;

std::uint32_t littleEndian32(const unsigned char* bytes) noexcept {
    return std::uint32_t{bytes[0]} | std::uint32_t{bytes[1]} << 8U |
           std::uint32_t{bytes[2]} << 16U | std::uint32_t{bytes[3]} << 24U;
}

/// How many of the bytes agree with the start of a member.
std::size_t agreeingMagicBytes(const unsigned char* bytes, std::size_t size) noexcept {
    std::size_t count = 0;
    for (std::size_t i = 0; i < size && i < kMagic.size(); ++i) {
        count += bytes[i] == kMagic[i] ? 1U : 0U;
    }
    return count;
}

} // namespace

CompressedInput::CompressedInput(std::unique_ptr<platform::ByteStream> stream)
    : m_stream(std::move(stream)), m_bytes(Inflater::kMostBytesGivenBack) {}

bool CompressedInput::has(std::size_t count) {
    while (size() < count) {
        const std::size_t more = m_stream->available();
        if (more == 0) {
            return false;
        }
        const auto keptFrom = static_cast<std::ptrdiff_t>(m_next - Inflater::kMostBytesGivenBack);
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + keptFrom);
        m_next = Inflater::kMostBytesGivenBack;
        m_bytes.insert(m_bytes.end(), m_stream->next(), m_stream->next() + more);
        m_stream->skip(more);
    }
    return true;
}

void CompressedInput::move(std::ptrdiff_t count) noexcept {
    m_next += static_cast<std::size_t>(count);
    m_position += static_cast<std::uint64_t>(count);
}

GzipSource::GzipSource(std::unique_ptr<platform::ByteStream> compressed, std::uint64_t fileSize,
                       std::unique_ptr<Inflater> inflater)
    : m_input(std::move(compressed)), m_fileSize(fileSize), m_inflater(std::move(inflater)) {}

std::string GzipSource::warning() const {
    if (m_paddingBytes == 0) {
        return {};
    }
    return std::to_string(m_paddingBytes) + " zero bytes between or after gzip members are ignored";
}

platform::Status GzipSource::verifyRest() {
    while (const std::size_t size = available()) {
        skip(size);
    }
    return status();
}

bool GzipSource::nextBlock() {
    m_block.resize(kBlockSize);
    const std::size_t size = readPastBlock(m_block.data(), m_block.size());
    setBlock(m_block.data(), size);
    return size > 0;
}

/// Decodes straight to where the bytes are wanted.
std::size_t GzipSource::readPastBlock(char* to, std::size_t size) {
    void* output = to;
    while (status() && m_place != Place::atEnd) {
        if (m_place == Place::betweenMembers) {
            beginMember();
        } else if (const std::size_t produced =
                       inflateSome(static_cast<unsigned char*>(output), size);
                   produced > 0) {
            return produced;
        }
    }
    return 0;
}

void GzipSource::beginMember() {
    m_input.has(kMagic.size());
    const std::size_t size = std::min(m_input.size(), kMagic.size());
    const std::size_t agreeing = agreeingMagicBytes(m_input.data(), size);
    if (!m_input.status()) {
        setStatus(m_input.status());
    } else if (size > 0 && agreeing == size) {
        if (readHeader()) {
            m_inflater->start();
            ++m_members;
            m_crc = 0;
            m_length = 0;
            m_place = Place::inMember;
        }
    } else if (m_memberEnd == 0) {
        fail("not gzip data");
    } else if (agreeing + 1 == kMagic.size()) {
        // One byte off is surely a member.
        failAt("damaged gzip header");
    } else {
        endWithoutMember();
    }
}

/// Zero bytes are padding, and a member may follow them. Anything else may be a member of which
/// damage left nothing to recognise.
void GzipSource::endWithoutMember() {
    if (m_input.size() == 0) {
        m_place = Place::atEnd;
    } else if (*m_input.data() == 0) {
        ++m_paddingBytes;
        m_input.move(1);
    } else {
        fail("gzip data are damaged after the member ending at byte " +
             std::to_string(m_memberEnd));
    }
}

bool GzipSource::readHeader() {
    // Magic, method, flags, time (4), extra flags, system.
    constexpr std::size_t kFixedSize = 10;
    if (!m_input.has(kFixedSize)) {
        failTruncated();
        return false;
    }
    const unsigned flags = m_input.data()[3];
    m_headerCrc = m_inflater->crc32(0, m_input.data(), kFixedSize);
    m_input.move(kFixedSize);
    if ((flags & kReservedFlags) != 0) {
        failAt("damaged gzip header");
        return false;
    }
    return skipHeaderFields(flags);
}

bool GzipSource::skipHeaderFields(unsigned flags) {
    if ((flags & kFlagExtra) != 0) {
        const int low = headerByte();
        const int high = headerByte();
        for (int left = low + high * 256; left > 0 && status(); --left) {
            headerByte();
        }
    }
    if ((flags & kFlagName) != 0) {
        skipHeaderText();
    }
    if ((flags & kFlagComment) != 0) {
        skipHeaderText();
    }
    if ((flags & kFlagHeaderCrc) != 0) {
        const auto expected = static_cast<int>(m_headerCrc & 0xffffU);
        const int low = headerByte();
        const int high = headerByte();
        if (status() && low + high * 256 != expected) {
            failAt("damaged gzip header");
        }
    }
    return status().ok();
}

bool GzipSource::skipHeaderText() {
    while (headerByte() > 0) {
    }
    return status().ok();
}

int GzipSource::headerByte() {
    if (!status()) {
        return -1;
    }
    if (!m_input.has(1)) {
        failTruncated();
        return -1;
    }
    const unsigned char byte = *m_input.data();
    m_headerCrc = m_inflater->crc32(m_headerCrc, &byte, 1);
    m_input.move(1);
    return byte;
}

std::size_t GzipSource::inflateSome(unsigned char* output, std::size_t outputSize) {
    const InflateStep step = m_inflater->step(m_input.data(), m_input.size(), output, outputSize);
    m_input.move(step.taken);
    m_crc = m_inflater->crc32(m_crc, output, step.produced);
    m_length += static_cast<std::uint32_t>(step.produced);
    if (step.state == InflateStep::State::finished) {
        readTrailer();
    } else if (step.state == InflateStep::State::damaged) {
        failAt("damaged gzip data");
    } else if (step.produced == 0 && !m_input.has(m_input.size() + 1)) {
        failTruncated();
    }
    return step.produced;
}

void GzipSource::readTrailer() {
    if (!m_input.has(kTrailerSize)) {
        failTruncated();
        return;
    }
    const std::uint32_t crc = littleEndian32(m_input.data());
    const std::uint32_t length = littleEndian32(m_input.data() + 4);
    m_input.move(kTrailerSize);
    if (crc != m_crc) {
        failAt("damaged gzip data: the checksum differs");
    } else if (length != m_length) {
        failAt("damaged gzip data: the length differs");
    }
    m_memberEnd = m_input.position();
    m_place = Place::betweenMembers;
}

void GzipSource::failAt(const std::string& what) {
    fail(what + " (at byte " + std::to_string(m_input.position()) + ")");
}

void GzipSource::failTruncated() {
    if (!m_input.status()) {
        setStatus(m_input.status());
        return;
    }
    fail("gzip data end before the member is complete (at byte " +
         std::to_string(m_input.position() + m_input.size()) + ")");
}

} // namespace reads
