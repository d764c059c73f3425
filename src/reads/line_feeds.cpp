// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The portable search for line feeds, by memchr(), and the choice between it and its vector twin
// (line_feeds_avx2.cpp). Tested by line_feeds_test.cpp.
#include "reads/line_ends.h"

#include <cstring>

#include "platform/avx2.h"

namespace reads {

LineFeeds findLineFeeds(const char* text, std::size_t size, std::uint32_t base,
                        std::uint32_t* places, std::size_t most) {
    static const auto best = platform::avx2IsThere() ? findLineFeedsByAvx2 : findLineFeedsPortably;
    return best(text, size, base, places, most);
}

LineFeeds findLineFeedsPortably(const char* text, std::size_t size, std::uint32_t base,
                                std::uint32_t* places, std::size_t most) {
    LineFeeds found;
    std::size_t next = 0;
    while (found.count < most && next < size) {
        const void* feed = std::memchr(text + next, '\n', size - next);
        if (feed == nullptr) {
            next = size;
            break;
        }
        const auto place = static_cast<std::size_t>(static_cast<const char*>(feed) - text);
        places[found.count++] = base + static_cast<std::uint32_t>(place);
        next = place + 1;
    }
    found.oddBytes = next > 0 && (std::memchr(text, '\r', next) != nullptr ||
                                  std::memchr(text, '\0', next) != nullptr);
    return found;
}

} // namespace reads
