// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/descriptor.h"

#include <cerrno>
#include <system_error>

#include <unistd.h>

namespace platform {

Descriptor::~Descriptor() {
    if (isOpen()) {
        ::close(m_number);
    }
}

int Descriptor::close() noexcept {
    // Linux releases the number even when close() is interrupted: never closed twice.
    return ::close(release()) == 0 || errno == EINTR ? 0 : errno;
}

Error systemError(std::string_view action, const std::string& path, int errorNumber) {
    std::string message = "Cannot ";
    message.append(action).append(" ").append(path).append(": ");
    return Error{message + std::generic_category().message(errorNumber)};
}

std::int64_t readSome(int descriptor, char* data, std::size_t size) noexcept {
    while (true) {
        const ssize_t count = ::read(descriptor, data, size);
        if (count >= 0) {
            return count;
        }
        if (errno != EINTR) {
            return -errno;
        }
    }
}

int writeAll(int descriptor, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return 0;
}

} // namespace platform
