// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>
#include <string>

#include <zlib.h>

namespace support {

/// The text as one gzip member.
inline std::string gzipMember(const std::string& text, int level = 6) {
    z_stream stream{};
    if (::deflateInit2(&stream, level, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("cannot start zlib");
    }
    std::string input = text;
    std::string member(::deflateBound(&stream, static_cast<uLong>(text.size())) + 32, '\0');
    stream.next_in = static_cast<Bytef*>(static_cast<void*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = static_cast<Bytef*>(static_cast<void*>(member.data()));
    stream.avail_out = static_cast<uInt>(member.size());
    const int outcome = ::deflate(&stream, Z_FINISH);
    member.resize(stream.total_out);
    ::deflateEnd(&stream);
    if (outcome != Z_STREAM_END) {
        throw std::runtime_error("zlib did not finish");
    }
    return member;
}

/// The same uncompressed: the bytes of the text stand in it as they are.
inline std::string storedGzipMember(const std::string& text) {
    return gzipMember(text, Z_NO_COMPRESSION);
}

} // namespace support
