// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/end_put_off.h"

#include <mutex>
#include <thread>

namespace platform {
namespace {

/// Never destroyed: a thread may wait for it until the process is gone.
std::recursive_mutex& endMutex() {
    static auto& mutex = *new std::recursive_mutex;
    return mutex;
}

} // namespace

EndPutOff::EndPutOff() {
    endMutex().lock();
}

EndPutOff::~EndPutOff() {
    endMutex().unlock();
}

bool beginEnd(std::chrono::milliseconds patience) {
    const auto last = std::chrono::steady_clock::now() + patience;
    while (!endMutex().try_lock()) {
        if (std::chrono::steady_clock::now() >= last) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace platform
