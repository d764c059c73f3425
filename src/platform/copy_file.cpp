// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/descriptor.h"

namespace platform {

Status copyFileAtomically(const std::string& from, const std::string& to) {
    Result<std::unique_ptr<ByteStream>> source = openRegularFile(from);
    if (!source) {
        return source.error();
    }
    Result<AtomicFile> target = AtomicFile::create(to);
    if (!target) {
        return target.error();
    }
    ByteStream& bytes = *source.value();
    while (const std::size_t count = bytes.available()) {
        if (Status written = target.value().write({bytes.next(), count}); !written) {
            return written;
        }
        bytes.skip(count);
    }
    if (bytes.failed()) {
        return Error{"Cannot copy " + from + ": " + bytes.error()};
    }
    return target.value().commit();
}

} // namespace platform
