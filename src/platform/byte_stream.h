// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <utility>

#include "platform/result.h"

namespace platform {

/// A stream of bytes that is read once, front to back, through a block that the stream owns.
/// A subclass supplies blocks; the reading functions here cost a comparison per byte.
/// A stream belongs to one thread at a time.
class ByteStream {
public:
    static constexpr int kEnd = -1;

    virtual ~ByteStream() = default;
    ByteStream(const ByteStream&) = delete;
    ByteStream& operator=(const ByteStream&) = delete;

    /// The next byte (0 to 255) without taking it, or kEnd at the end or after an error.
    int peek() { return m_next != m_end || refill() ? static_cast<unsigned char>(*m_next) : kEnd; }

    /// Takes and returns the next byte, or kEnd.
    int get() {
        const int byte = peek();
        if (byte != kEnd) {
            ++m_next;
        }
        return byte;
    }

    /// What is left of the current block: [next(), next() + available()). Empty only at the end.
    const char* next() const noexcept { return m_next; }
    std::size_t available() {
        return m_next != m_end || refill() ? static_cast<std::size_t>(m_end - m_next) : 0;
    }
    /// Takes `count` bytes. REQUIRES: count <= available().
    void skip(std::size_t count) noexcept { m_next += count; }

    /// Copies up to `size` bytes to `to` and takes them; how many, 0 only at the end or after an
    /// error. Large pieces go there by the shortest way that the stream knows.
    std::size_t read(char* to, std::size_t size) {
        if (m_next == m_end) {
            return !m_status.ok() || size == 0 ? 0 : readPastBlock(to, size);
        }
        const std::size_t count = std::min(size, available());
        std::memcpy(to, m_next, count);
        skip(count);
        return count;
    }

    /// Whether all went well so far; else the bare reason ("Input/output error"), to which the
    /// caller puts the file's name. A stream that failed looks like one that has ended, so a caller
    /// asks at the end.
    const Status& status() const noexcept { return m_status; }

protected:
    ByteStream() = default;

    /// Makes the next block current with setBlock() and returns true. Returns false at the end,
    /// after fail(), and whenever it is called again after that.
    virtual bool nextBlock() = 0;

    /// What read() does when nothing is left of the current block; `size` is not 0. A subclass that
    /// can give its bytes without a block of its own does so here.
    virtual std::size_t readPastBlock(char* to, std::size_t size) {
        return available() > 0 ? read(to, size) : 0;
    }

    void setBlock(const char* data, std::size_t size) noexcept {
        m_next = data;
        m_end = data + size;
    }
    void fail(std::string reason) { m_status = Error{std::move(reason)}; }
    /// Takes over how another stream fares, on which this one is built.
    void setStatus(Status status) { m_status = std::move(status); }

private:
    bool refill() { return m_status.ok() && nextBlock() && m_next != m_end; }

    const char* m_next = nullptr;
    const char* m_end = nullptr;
    Status m_status;
};

/// Reads one line into `buffer`, NUL-terminated, without its line end. The one line reader of the
/// system: definition files and FASTQ files are read by the same rules.
///
/// `buffer` has room for `limit` + 1 bytes. LF, CR LF and a lone CR end a line. Returns `buffer`,
/// or nullptr when there is no line to give:
/// - `limit` is below 1 (an empty text is stored);
/// - the stream has ended (or failed: ask it) before a byte of the line was stored;
/// - the count of stored bytes reached `limit` before a line end; the text stored so far stands in
///   `buffer`, and the rest of the line stays in the stream.
/// A lone CR that is the last byte of the stream ends its line as the end of the stream does, so an
/// empty line ended that way is no line. NUL bytes are stored and counted like any other.
char* readLineFromStream(char* buffer, std::ptrdiff_t limit, ByteStream& stream);

} // namespace platform
