// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <sys/stat.h>

namespace support {

/// Whether a file was flushed to disk shows only when the machine fails. So a test program that is
/// built with watched_flushes.cpp has an fsync() of its own, which the code under test calls.
///
/// While a watch lives, its `onFlush` sees each file before it is flushed and decides: 0, or the
/// errno with which flushing fails. One at a time.
class WatchedFlushes {
public:
    using OnFlush = std::function<int(const struct stat&)>;

    explicit WatchedFlushes(OnFlush onFlush);
    ~WatchedFlushes();
    WatchedFlushes(const WatchedFlushes&) = delete;
    WatchedFlushes& operator=(const WatchedFlushes&) = delete;
};

} // namespace support
