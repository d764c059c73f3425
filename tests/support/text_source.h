// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "reads/read_source.h"
#include "support/memory_stream.h"

namespace support {

/// Reads that lie in memory, given out in blocks of `blockSize` bytes; ends with `error` if one is
/// given.
class TextSource : public reads::ReadSource {
public:
    explicit TextSource(const std::string& text, std::size_t blockSize = 64,
                        std::string errorAtEnd = "")
        : m_size(text.size()), m_stream(text, blockSize, std::move(errorAtEnd)) {}

    std::uint64_t fileSize() const noexcept override { return m_size; }
    std::uint64_t fileBytesTaken() const noexcept override { return m_taken; }

protected:
    bool nextBlock() override {
        const std::size_t size = m_stream.available();
        if (size == 0) {
            setStatus(m_stream.status());
            return false;
        }
        setBlock(m_stream.next(), size);
        m_stream.skip(size);
        m_taken += size;
        return true;
    }

private:
    std::uint64_t m_size;
    std::uint64_t m_taken = 0;
    MemoryStream m_stream;
};

} // namespace support
