// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/result.h"

namespace platform {

/// How a child process ended: its exit code, or the signal that ended it.
struct ChildExit {
    int exitCode = 0;
    /// 0 when the process ended by itself.
    int signal = 0;
    /// The end of what it wrote to standard error, at most kStandardErrorKept bytes.
    std::string standardError;
};

inline constexpr std::size_t kStandardErrorKept = 4096;

/// Runs "/bin/sh" with "-c" and `command` and waits for it. Its standard output and standard error
/// are pipes that are read to their ends; its standard input is /dev/null. The child has a process
/// group of its own, so an interrupt typed at the terminal does not cut a file that it writes.
/// Fails when the shell cannot be started.
Result<ChildExit> runShellCommand(const std::string& command);

/// `text` for a place between double quotes of a shell command, where the shell reads the very
/// text: $, `, \ and " get a backslash; an ordinary name stays as it is.
std::string escapedForDoubleQuotes(const std::string& text);

/// Kills the children that still run. Async-signal-safe. For a program that is about to exit.
void killRunningChildren() noexcept;

/// From now on every start of a child fails, even one that is under way. Call it before
/// killRunningChildren() where nothing may be left running. Async-signal-safe.
void refuseNewChildren() noexcept;

/// Waits until every child has ended, and whatever held its standard streams. False when one still
/// runs after that time.
bool waitUntilNoChildRuns(std::chrono::milliseconds patience);

} // namespace platform
