// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/descriptor.h"

namespace platform {

Status copyFileAtomically(const std::string& from, const std::string& to, FileIdentity* made) {
    const Result<int> opened = openRegularFileDescriptor(from);
    if (!opened) {
        return opened.error();
    }
    const Descriptor source(opened.value());
    Result<AtomicFile> target = AtomicFile::create(to, 0666, AtomicFile::Access::ofNewFile);
    if (!target) {
        return target.error();
    }
    if (made != nullptr) {
        const Result<FileIdentity> identity = target.value().identity();
        if (!identity) {
            return identity.error();
        }
        *made = identity.value();
    }
    target.value().takeFrom(source.number());
    // What the system did not copy, all of it on some file systems; a lasting trouble shows here.
    std::vector<char> block(std::size_t{256} * 1024);
    while (true) {
        const std::int64_t count = readSome(source.number(), block.data(), block.size());
        if (count < 0) {
            return systemError("read", from, static_cast<int>(-count));
        }
        if (count == 0) {
            return target.value().commitUnflushed();
        }
        const std::string_view bytes(block.data(), static_cast<std::size_t>(count));
        if (Status written = target.value().write(bytes); !written) {
            return written;
        }
    }
}

} // namespace platform
