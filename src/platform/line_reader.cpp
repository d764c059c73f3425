// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/line_reader.h"

namespace platform {

char* readLineFromStream(char* buffer, std::ptrdiff_t limit, ByteStream& stream) {
    std::ptrdiff_t stored = 0;
    while (stored < limit) {
        const int byte = stream.get();
        if (byte == '\n') {
            buffer[stored] = '\0';
            return buffer;
        }
        if (byte == '\r') {
            if (stream.peek() != ByteStream::kEnd) {
                if (stream.peek() == '\n') {
                    stream.skip(1);
                }
                buffer[stored] = '\0';
                return buffer;
            }
            break;
        }
        if (byte == ByteStream::kEnd) {
            break;
        }
        buffer[stored++] = static_cast<char>(byte);
    }
    buffer[stored] = '\0';
    const bool endedAtLimit = stored >= limit;
    return endedAtLimit || stored == 0 ? nullptr : buffer;
}

} // namespace platform
