// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/fastq_writer.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <zlib.h>

namespace simulator {

namespace {

constexpr std::size_t kBlockBytes = std::size_t{1} << 18;

} // namespace

struct FastqWriter::State {
    std::string path;
    gzFile file = nullptr;
    std::string block;
    bool failed = false;

    State(std::string filePath, gzFile opened) : path(std::move(filePath)), file(opened) {}
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State() {
        if (file != nullptr) {
            gzclose(file);
        }
    }

    void flush() {
        const auto size = static_cast<unsigned>(block.size());
        if (size != 0 && !failed) {
            failed = gzwrite(file, block.data(), size) != static_cast<int>(size);
        }
        block.clear();
    }
};

platform::Result<FastqWriter> FastqWriter::create(const std::string& path, bool gzip) {
    errno = 0;
    // "T" writes the bytes as they are: one writer serves both kinds.
    gzFile file = gzopen(path.c_str(), gzip ? "wb6" : "wbT");
    if (file == nullptr) {
        return platform::Error{"cannot write " + path + ": " +
                               (errno != 0 ? std::strerror(errno) : "out of memory")};
    }
    return FastqWriter(std::make_unique<State>(path, file));
}

FastqWriter::FastqWriter(std::unique_ptr<State> state) : m_state(std::move(state)) {}
FastqWriter::FastqWriter(FastqWriter&&) noexcept = default;
FastqWriter& FastqWriter::operator=(FastqWriter&&) noexcept = default;
FastqWriter::~FastqWriter() = default;

void FastqWriter::writeRecord(std::string_view header, std::string_view bases,
                              std::string_view quality) {
    std::string& block = m_state->block;
    block.append(header).append("\n").append(bases).append("\n+\n").append(quality).append("\n");
    if (block.size() >= kBlockBytes) {
        m_state->flush();
    }
}

platform::Status FastqWriter::close() {
    m_state->flush();
    const bool closed = gzclose(std::exchange(m_state->file, nullptr)) == Z_OK;
    if (m_state->failed || !closed) {
        return platform::Error{"cannot write " + m_state->path + ": the disk may be full"};
    }
    return {};
}

} // namespace simulator
