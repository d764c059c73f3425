// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The two decompression libraries, each behind the same small class. ISA-L decodes several times
// faster, by vectors; a program can be built without it. zlib is always there. gzip_source_test.cpp
// holds both to one rule.
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>

#include <zlib.h>

#if VEXTA_WITH_ISAL
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#endif

#include "reads/gzip_source.h"

namespace reads {

// --- zlib

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

// --- ISA-L

#if VEXTA_WITH_ISAL

namespace {

class IsalInflater final : public Inflater {
public:
    void start() override {
        ::isal_inflate_init(&m_state);
        m_state.crc_flag = ISAL_DEFLATE;
    }

    InflateStep step(const unsigned char* input, std::size_t inputSize, unsigned char* output,
                     std::size_t outputSize) override {
        // The library's interface lacks the const; the input is only read.
        m_state.next_in = const_cast<unsigned char*>(input);
        m_state.avail_in = static_cast<std::uint32_t>(inputSize);
        m_state.next_out = output;
        m_state.avail_out = static_cast<std::uint32_t>(outputSize);
        const int outcome = ::isal_inflate(&m_state);
        InflateStep step;
        step.taken = m_state.next_in - input;
        step.produced = static_cast<std::size_t>(m_state.next_out - output);
        if (outcome != ISAL_DECOMP_OK && outcome != ISAL_END_INPUT &&
            outcome != ISAL_OUT_OVERFLOW) {
            step.state = InflateStep::State::damaged;
        } else if (m_state.block_state == ISAL_BLOCK_FINISH) {
            step.state = InflateStep::State::finished;
            step.taken -= wholeBytesHeldBack();
        }
        return step;
    }

    std::uint32_t crc32(std::uint32_t crc, const unsigned char* data,
                        std::size_t size) const override {
        return ::crc32_gzip_refl(crc, data, size);
    }

private:
    /// The library takes up to 8 bytes into its bit buffer at a time; those after the end of the
    /// deflate data are not part of it.
    std::ptrdiff_t wholeBytesHeldBack() const noexcept {
        return m_state.read_in_length > 0 ? m_state.read_in_length / 8 : 0;
    }

    inflate_state m_state{};
};

} // namespace

std::unique_ptr<Inflater> makeIsalInflater() {
    return std::make_unique<IsalInflater>();
}

bool isalIsBuiltIn() noexcept {
    return true;
}

#else

std::unique_ptr<Inflater> makeIsalInflater() {
    return nullptr;
}

bool isalIsBuiltIn() noexcept {
    return false;
}

#endif

} // namespace reads
