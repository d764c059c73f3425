// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/result.h"

namespace platform {

// What the sources of this room share around a file descriptor; other rooms use files.h.

/// Owns a file descriptor, or none (-1).
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) noexcept : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    int number() const noexcept { return m_number; }
    bool isOpen() const noexcept { return m_number >= 0; }
    int release() noexcept { return std::exchange(m_number, -1); }
    /// Closes now, for a caller that must know the outcome: 0, or the errno.
    int close() noexcept;

private:
    int m_number = -1;
};

/// "Cannot ACTION PATH: REASON" with the reason of an errno value.
Error systemError(std::string_view action, const std::string& path, int errorNumber);

/// Reads at most `size` bytes: their number, 0 at the end, or the errno, negative.
std::int64_t readSome(int descriptor, char* data, std::size_t size) noexcept;

/// Writes all of it, however the system cuts it; 0, or the errno.
int writeAll(int descriptor, std::string_view bytes) noexcept;

} // namespace platform
