// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "platform/result.h"

namespace platform {

/// Owns a file descriptor, or none (-1).
///
/// It knows no path, so its errors are bare reasons ("No space left on device"). The caller puts
/// action and path to them with systemError().
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) noexcept : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    int number() const noexcept { return m_number; }
    bool isOpen() const noexcept { return m_number >= 0; }

    /// Reads at most `size` bytes. Returns how many; 0 at the end.
    Result<std::size_t> read(char* data, std::size_t size) const;
    /// Writes all of it, however the system cuts it.
    Status write(std::string_view bytes) const;
    /// Closes now, for a caller that must know the outcome. REQUIRES: isOpen().
    Status close();

private:
    int m_number = -1;
};

/// Opens a regular file for reading. Links are followed. A directory, FIFO or device is an error,
/// never a hang. The error names the path.
Result<Descriptor> openRegularFileDescriptor(const std::string& path);

/// The bare reason that an errno stands for.
Error reasonOf(int errorNumber);

/// "Cannot ACTION PATH: REASON".
Error systemError(std::string_view action, const std::string& path, const Error& reason);
Error systemError(std::string_view action, const std::string& path, int errorNumber);

} // namespace platform
