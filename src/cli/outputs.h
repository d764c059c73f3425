// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/json_export.h"
#include "platform/result.h"

namespace cli {

/// One output of a command.
struct Output {
    /// Names it in messages: "--report".
    std::string option;
    std::string path;
    /// Writes the whole text; called once.
    std::function<platform::Status(const TextSink&)> write;
    /// The whole text as a file of the program's own near `path`, to be moved there; empty where
    /// there is none. Only what cannot be replaced by a file is then written.
    std::string finishedFile = {};
};

/// Refuses what could only fail, or do harm, once results are there: two outputs to one place, an
/// output that names one of the `inputs`, a directory, or a place where no file can be made. Writes
/// nothing.
platform::Status checkOutputPaths(const OutputPaths& outputs,
                                  const std::vector<std::string>& inputs);

/// Whether both paths lead to one file, or would once it is made.
bool isSamePlace(const std::string& one, const std::string& other);

/// Writes the outputs. Files appear, or replace older ones, only after each of them was written
/// whole under another name and is on disk; standard output and whatever is no regular file (a
/// pipe, a device) come last. A program that is ended at once leaves all the files or none. Returns
/// the first failure.
platform::Status writeOutputs(const std::vector<Output>& outputs, std::ostream& out);

/// Whether the text goes through a stream: standard output, a pipe or a device, which cannot be
/// replaced as a whole.
bool isStreamed(const std::string& path);
/// Whether the path is that of a terminal's device.
bool isTerminal(const std::string& path);
/// Where a file output really lies: behind links, so that a link stays one.
std::string resolvedOutputPath(const std::string& path);
/// Runs `write` with a sink into standard output or into an existing pipe or device.
platform::Status writeStreamed(const Output& output, std::ostream& out);

} // namespace cli
