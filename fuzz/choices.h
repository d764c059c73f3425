// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

namespace fuzzing {

/// Choices taken from a fuzzer's bytes, always the first one when these have run out.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}

    bool atEnd() const noexcept { return m_next == m_end; }

    /// One byte decides where there are up to 256 possibilities, else two do.
    std::size_t below(std::size_t limit) noexcept {
        std::size_t number = byte();
        if (limit > 256) {
            number = number << 8 | byte();
        }
        return number % limit;
    }

    template <class T>
    T choose(std::initializer_list<T> list) noexcept {
        return list.begin()[below(list.size())];
    }

    /// The next `count` bytes as they are, or as many as there are.
    std::string bytes(std::size_t count) {
        count = std::min(count, static_cast<std::size_t>(m_end - m_next));
        const std::uint8_t* const begin = m_next;
        m_next += count;
        return {begin, m_next};
    }
    std::string rest() { return {m_next, m_end}; }

private:
    std::size_t byte() noexcept { return atEnd() ? 0 : *m_next++; }

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

} // namespace fuzzing
