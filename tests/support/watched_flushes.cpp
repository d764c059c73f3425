// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "support/watched_flushes.h"

#include <cerrno>
#include <utility>

#include <sys/syscall.h>
#include <unistd.h>

namespace support {
namespace {

WatchedFlushes::OnFlush watcher;

} // namespace

WatchedFlushes::WatchedFlushes(OnFlush onFlush) {
    watcher = std::move(onFlush);
}

WatchedFlushes::~WatchedFlushes() {
    watcher = nullptr;
}

} // namespace support

/// Takes the place of the C library's, as a program's own symbols come first.
extern "C" int fsync(int descriptor) {
    struct stat facts = {};
    if (support::watcher && ::fstat(descriptor, &facts) == 0) {
        errno = support::watcher(facts);
        if (errno != 0) {
            return -1;
        }
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}
