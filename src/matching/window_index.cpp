// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_index.h"

#include <algorithm>
#include <bit>

namespace matching {
namespace {

/// Bits of the bitmap per window: of foreign windows about one in 60 to 250 then looks known.
constexpr std::size_t kBitsPerWindow = 16;
/// A smaller bitmap (in bits) saves nothing, as this one stays in the first-level cache.
constexpr std::size_t kSmallestBitmap = std::size_t{1} << 16;

unsigned shiftFor(std::size_t powerOfTwo) noexcept {
    return 64u - static_cast<unsigned>(std::countr_zero(powerOfTwo));
}

/// The two bits that a window sets in its word of the bitmap. The word is chosen by the hash's
/// upper bits, these by its lower ones.
std::uint64_t bitsInWord(std::uint64_t hash) noexcept {
    return std::uint64_t{1} << (hash & 63) | std::uint64_t{1} << (hash >> 6 & 63);
}

} // namespace

WindowIndex::WindowIndex(WindowShape shape, Side side, const std::vector<CoreWindow>& windows)
    : m_shape(shape), m_strideLog2(static_cast<unsigned>(std::bit_width(shape.stride)) - 1),
      m_letterBits(letterBits(side)) {
    fillBitmap(windows);
    fillBuckets(windows);
}

void WindowIndex::fillBitmap(const std::vector<CoreWindow>& windows) {
    const std::size_t bits =
        std::bit_ceil(std::max(windows.size() * kBitsPerWindow, kSmallestBitmap));
    m_bitmap.resize(bits / 64);
    m_bitmapShift = shiftFor(m_bitmap.size());
    for (const CoreWindow& window : windows) {
        m_bitmap[window.hash >> m_bitmapShift] |= bitsInWord(window.hash);
    }
}

/// Sorts the windows by bucket, counting first. Within a bucket they keep their order.
void WindowIndex::fillBuckets(const std::vector<CoreWindow>& windows) {
    const std::size_t buckets = std::bit_ceil(std::max<std::size_t>(windows.size(), 2));
    m_bucketShift = shiftFor(buckets);
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

WindowIndex::Candidate* WindowIndex::collect(std::string_view text, ReadNumber read,
                                             Candidate* to) const noexcept {
    if (empty()) {
        return to;
    }
    for (std::size_t place = 0; place + m_shape.length <= text.size(); place += m_shape.stride) {
        const std::uint64_t hash = windowHash(text.data() + place, m_shape.length, m_letterBits);
        *to = {hash, read, static_cast<std::uint32_t>(place)};
        // Counted without a branch: whether a window is known cannot be predicted.
        const std::uint64_t word = m_bitmap[hash >> m_bitmapShift];
        to += word >> (hash & 63) & word >> (hash >> 6 & 63) & 1;
    }
    return to;
}

} // namespace matching
