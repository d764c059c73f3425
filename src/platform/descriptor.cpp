// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The system calls on an open file, with what each caller would otherwise repeat: calls that a
// signal interrupts are made again, writes that the system cuts are continued, and errno becomes an
// error value before anything can overwrite it. Tested by files_test.cpp and fresh_file_test.cpp.
#include "platform/descriptor.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

Descriptor::~Descriptor() {
    if (isOpen()) {
        ::close(m_number);
    }
}

Result<std::size_t> Descriptor::read(char* data, std::size_t size) const {
    while (true) {
        const ssize_t count = ::read(m_number, data, size);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            return reasonOf(errno);
        }
    }
}

Status Descriptor::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_number, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return reasonOf(errno);
        }
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    return {};
}

Status Descriptor::close() {
    // Linux releases the number even when close() is interrupted: never closed twice.
    return ::close(std::exchange(m_number, -1)) == 0 || errno == EINTR ? Status() : reasonOf(errno);
}

Result<Descriptor> openRegularFileDescriptor(const std::string& path) {
    // Without O_NONBLOCK, opening a FIFO would wait for a writer. For a regular file it means
    // nothing.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        return systemError("open", path, errno);
    }
    struct stat facts = {};
    if (::fstat(file.number(), &facts) != 0) {
        return systemError("examine", path, errno);
    }
    if (!S_ISREG(facts.st_mode)) {
        return Error{path + " is not a regular file"};
    }
    return file;
}

Error reasonOf(int errorNumber) {
    return Error{std::generic_category().message(errorNumber)};
}

Error systemError(std::string_view action, const std::string& path, const Error& reason) {
    std::string message = "Cannot ";
    message.append(action).append(" ").append(path).append(": ").append(reason.message);
    return Error{std::move(message)};
}

Error systemError(std::string_view action, const std::string& path, int errorNumber) {
    return systemError(action, path, reasonOf(errorNumber));
}

} // namespace platform
