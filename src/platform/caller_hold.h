// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/work_queues.h"

namespace platform {

/// Holds its caller, the main thread, while work that takes long is done: whatever the caller does
/// next finds it finished. A program with a window goes on repainting it meanwhile.
class CallerHold {
public:
    virtual ~CallerHold() = default;
    /// Runs `work` and returns when it is done; what it throws reaches the caller. `work` may run
    /// on another thread, and tasks of the main queue may run before this returns. No user input
    /// gets to the program meanwhile. REQUIRES: called on the main thread.
    virtual void hold(const Task& work) = 0;
};

/// The hold of a program without a window: the caller does the work itself.
class DirectHold : public CallerHold {
public:
    void hold(const Task& work) override { work(); }
};

} // namespace platform
