// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_index.h"

#include <algorithm>
#include <bit>

namespace matching {
namespace {

/// More buckets than windows, so that most hold the postings of one window and their number can be
/// predicted; but no more than the second-level cache holds.
std::size_t bucketsFor(std::size_t windows) noexcept {
    constexpr std::size_t kManyBuckets = std::size_t{1} << 15;
    return std::bit_ceil(std::max({windows, std::min(4 * windows, kManyBuckets), std::size_t{2}}));
}

} // namespace

WindowIndex::WindowIndex(WindowShape shape, const std::vector<CoreWindow>& windows)
    : m_shape(shape), m_strideLog2(static_cast<unsigned>(std::bit_width(shape.stride)) - 1),
      m_filter(shape.length, windows) {
    fillBuckets(windows);
}

/// Sorts the windows by bucket, counting first. Within a bucket they keep their order.
void WindowIndex::fillBuckets(const std::vector<CoreWindow>& windows) {
    const std::size_t buckets = bucketsFor(windows.size());
    m_bucketShift = 32u - static_cast<unsigned>(std::countr_zero(buckets));
    m_bucketStarts.resize(buckets + 1);
    for (const CoreWindow& window : windows) {
        ++m_bucketStarts[bucketOf(window.hash) + 1];
    }
    for (std::size_t bucket = 0; bucket < buckets; ++bucket) {
        m_bucketStarts[bucket + 1] += m_bucketStarts[bucket];
    }
    m_postings.resize(windows.size());
    std::vector<std::uint32_t> next(m_bucketStarts.begin(), m_bucketStarts.end() - 1);
    for (const CoreWindow& window : windows) {
        m_postings[next[bucketOf(window.hash)]++] = {window.record, window.offset,
                                                     tagOf(window.hash)};
    }
}

void WindowIndex::addLooks(std::string_view text, std::uint16_t read, WorkList<Look>& looks) const {
    if (empty()) {
        return;
    }
    // Room for too many: a shift says so sooner than a division how many there may be.
    Look* to = looks.room((text.size() >> m_strideLog2) + 1);
    for (std::size_t place = 0; place + m_shape.length <= text.size(); place += m_shape.stride) {
        *to++ = {text.data() + place, read, static_cast<std::uint16_t>(place)};
    }
    looks.keepUpTo(to);
}

} // namespace matching
