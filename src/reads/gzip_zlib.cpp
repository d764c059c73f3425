// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <limits>

#include <zlib.h>

#include "reads/gzip_source.h"

namespace reads {
namespace {

uInt atMost32Bits(std::size_t size) noexcept {
    constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
    return static_cast<uInt>(size < kMost ? size : kMost);
}

class ZlibInflater final : public Inflater {
public:
    ZlibInflater() {
        // Negative: raw deflate data with a window of up to 32 KiB.
        m_ready = ::inflateInit2(&m_stream, -MAX_WBITS) == Z_OK;
    }
    ~ZlibInflater() override { ::inflateEnd(&m_stream); }
    ZlibInflater(const ZlibInflater&) = delete;
    ZlibInflater& operator=(const ZlibInflater&) = delete;

    void start() override { m_ready = ::inflateReset(&m_stream) == Z_OK; }

    InflateStep step(const unsigned char* input, std::size_t inputSize, unsigned char* output,
                     std::size_t outputSize) override {
        if (!m_ready) {
            return {0, 0, InflateStep::State::damaged};
        }
        // zlib's interface lacks the const; the input is only read.
        m_stream.next_in = const_cast<Bytef*>(input);
        m_stream.avail_in = atMost32Bits(inputSize);
        m_stream.next_out = output;
        m_stream.avail_out = atMost32Bits(outputSize);
        const int outcome = ::inflate(&m_stream, Z_NO_FLUSH);
        return {m_stream.next_in - input, static_cast<std::size_t>(m_stream.next_out - output),
                stateFor(outcome)};
    }

    std::uint32_t crc32(std::uint32_t crc, const unsigned char* data,
                        std::size_t size) const override {
        return static_cast<std::uint32_t>(::crc32_z(crc, data, size));
    }

private:
    static InflateStep::State stateFor(int outcome) noexcept {
        switch (outcome) {
        case Z_STREAM_END:
            return InflateStep::State::finished;
        case Z_OK:
        case Z_BUF_ERROR: // nothing to do without more input or room
            return InflateStep::State::going;
        default:
            return InflateStep::State::damaged;
        }
    }

    z_stream m_stream{};
    bool m_ready = false;
};

} // namespace

std::unique_ptr<Inflater> makeZlibInflater() {
    return std::make_unique<ZlibInflater>();
}

} // namespace reads
