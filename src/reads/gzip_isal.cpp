// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include "reads/gzip_source.h"

namespace reads {
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

} // namespace reads
