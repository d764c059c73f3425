// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "platform/result.h"
#include "report/result_json.h"
#include "run/main_routine.h"

namespace cli {

using report::TextSink;

/// One output of a command.
struct Output {
    /// Names it in messages: "--report".
    std::string option;
    std::string path;
    /// Writes the whole text; called once.
    std::function<platform::Status(const TextSink&)> write;
    /// A file of the program's own near `path` that holds the whole text and can be moved there;
    /// empty where there is none. `write` then serves only places that no file can replace.
    std::string finishedFile = {};
};

/// The record of a run and what became of its patients, as outputs hold them.
struct RunTexts {
    /// The record as JSON text; empty: there is none.
    std::string record;
    /// The file that lies beside a result document; empty: there is none.
    std::string recordFile;
    /// The bytes of the result document, where the record's file tells their digest; else empty.
    std::string document;
    std::string status;
};

/// The outputs of results that `paths` asks for. They refer to `results` and `run`. What goes to a
/// terminal has texts that a terminal only shows; `outIsTerminal` tells it of standard output.
std::vector<Output> resultOutputs(const OutputPaths& paths, const run::MainMutDictionary& results,
                                  const RunTexts& run, bool outIsTerminal);

/// The outputs of a run without any result: the table of patients, and JSON for the sake of the
/// record in it.
std::vector<Output> failureOutputs(const OutputPaths& paths, const RunTexts& run);

/// Refuses, before anything runs, what could only fail or do harm afterwards: two outputs to one
/// place, an output that names one of the `inputs`, a directory, or a place where no file can be
/// made. Writes nothing.
platform::Status checkOutputPaths(const OutputPaths& outputs,
                                  const std::vector<std::string>& inputs);

/// Whether both paths lead to one file, or would once it is made.
bool isSamePlace(const std::string& one, const std::string& other);

/// Writes the outputs. Each file is first written whole under another name and flushed to disk;
/// then all of them appear, or replace older ones, together. Standard output and whatever is no
/// regular file (a pipe, a device) come last. A program that is ended at once leaves all the files
/// or none. Returns the first failure.
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
