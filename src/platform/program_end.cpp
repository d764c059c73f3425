// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The order matters. First nobody may put the end off any more, unless somebody does so for longer
// than it waits: from then on no file and no child comes into being, and a run that fails for want
// of its child gets no further than its files.
// Then children are ended and waited for, since one that lives could make its file again. Only then
// are the files removed. Tested by program_end_test.cpp and by held_run_program_test.cpp.
#include "platform/program_end.h"

#include <atomic>
#include <chrono>

#include <unistd.h>

#include "platform/child_process.h"
#include "platform/end_put_off.h"
#include "platform/unfinished_files.h"

namespace platform {
namespace {

// Whoever puts the end off longer, and a child that even SIGKILL does not end, wait for a disk or
// a server that does not answer: then the rest is done without them.
constexpr std::chrono::milliseconds kPatienceWithSteps(600);
constexpr std::chrono::milliseconds kPatienceWithChildren(300);

} // namespace

void endAtOnce(int status) {
    static std::atomic<bool> begun{false};
    while (begun.exchange(true)) {
        ::pause();
    }
    beginEnd(kPatienceWithSteps);
    refuseNewChildren();
    killRunningChildren();
    waitUntilNoChildRuns(kPatienceWithChildren);
    removeUnfinishedFiles();
    ::_exit(status);
}

} // namespace platform
