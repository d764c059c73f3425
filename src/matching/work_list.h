// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>

namespace matching {

/// A list that is written to without asking first whether what is written will be kept: which of
/// many things hold cannot be predicted, and so had better not be a branch. Memory is never given
/// back, and not set before it is written.
template <class T>
class WorkList {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    std::size_t size() const noexcept { return m_size; }
    bool empty() const noexcept { return m_size == 0; }
    void clear() noexcept { m_size = 0; }
    T* begin() noexcept { return m_items.get(); }
    T* end() noexcept { return m_items.get() + m_size; }
    const T& operator[](std::size_t index) const noexcept { return m_items[index]; }
    std::span<const T> all() const noexcept { return {m_items.get(), m_size}; }

    /// Where the next `count` elements are to be written, the first of them at end().
    T* room(std::size_t count) {
        if (m_capacity - m_size < count) {
            grow(m_size + count);
        }
        return end();
    }
    /// Keeps those written from end() up to here. REQUIRES: there was room() for them.
    void keepUpTo(const T* newEnd) noexcept {
        m_size = static_cast<std::size_t>(newEnd - m_items.get());
    }

private:
    void grow(std::size_t least) {
        const std::size_t capacity = std::max(least, 2 * m_capacity);
        auto items = std::make_unique_for_overwrite<T[]>(capacity);
        std::copy(begin(), end(), items.get());
        m_items = std::move(items);
        m_capacity = capacity;
    }

    std::unique_ptr<T[]> m_items;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace matching
