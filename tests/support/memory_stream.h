// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/byte_stream.h"

namespace support {

/// A stream over a text, given out in blocks of `blockSize` bytes, that ends with `error` if one is
/// given.
class MemoryStream : public platform::ByteStream {
public:
    explicit MemoryStream(std::string text, std::size_t blockSize = 64, std::string error = "")
        : m_text(std::move(text)), m_blockSize(blockSize), m_errorAtEnd(std::move(error)) {}

protected:
    bool nextBlock() override {
        if (m_given == m_text.size()) {
            if (!m_errorAtEnd.empty()) {
                fail(m_errorAtEnd);
            }
            return false;
        }
        const std::size_t size = std::min(m_blockSize, m_text.size() - m_given);
        setBlock(m_text.data() + m_given, size);
        m_given += size;
        return true;
    }

private:
    std::string m_text;
    std::size_t m_blockSize;
    std::string m_errorAtEnd;
    std::size_t m_given = 0;
};

} // namespace support
