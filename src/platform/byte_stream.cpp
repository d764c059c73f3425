// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The line reader looks for a line end in the stream's own block and copies what stands before it,
// so a line costs two searches by memchr() and a copy, wherever blocks are cut. Tested by
// line_reader_test.cpp, against a second writing of the rules byte by byte.
#include "platform/byte_stream.h"

namespace platform {
namespace {

/// How many of the bytes stand before the first LF or CR.
std::size_t lengthBeforeLineEnd(const char* text, std::size_t size) {
    const void* lineFeed = std::memchr(text, '\n', size);
    if (lineFeed != nullptr) {
        size = static_cast<std::size_t>(static_cast<const char*>(lineFeed) - text);
    }
    const void* carriageReturn = std::memchr(text, '\r', size);
    return carriageReturn != nullptr
               ? static_cast<std::size_t>(static_cast<const char*>(carriageReturn) - text)
               : size;
}

/// Takes the LF or CR that the stream stands before, and an LF behind a CR. False for a CR that is
/// the stream's last byte.
bool takeLineEnd(ByteStream& stream) {
    if (stream.get() == '\n') {
        return true;
    }
    const int next = stream.peek();
    if (next == '\n') {
        stream.skip(1);
    }
    return next != ByteStream::kEnd;
}

} // namespace

char* readLineFromStream(char* buffer, std::ptrdiff_t limit, ByteStream& stream) {
    const std::size_t room = limit > 0 ? static_cast<std::size_t>(limit) : 0;
    std::size_t stored = 0;
    bool ended = false;
    while (!ended && stored < room && stream.available() > 0) {
        const std::size_t size = std::min(stream.available(), room - stored);
        const std::size_t length = lengthBeforeLineEnd(stream.next(), size);
        std::memcpy(buffer + stored, stream.next(), length);
        stream.skip(length);
        stored += length;
        if (length < size) {
            ended = takeLineEnd(stream);
            if (!ended) {
                break;
            }
        }
    }
    buffer[stored] = '\0';
    const bool isLine = ended || (stored > 0 && stored < room);
    return isLine ? buffer : nullptr;
}

} // namespace platform
