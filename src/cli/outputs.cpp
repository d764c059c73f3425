// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The outputs of a command: what they hold, whether their places are sound, and how they get there.
//
// Results take minutes to hours to make, so a place that could only fail is refused before the run.
// And a script must never meet half of a result: every file is written whole beside its place, and
// a last step renames all of them. Renaming takes but a moment, so the program's end waits for it;
// flushing to disk may take longer than an end can wait, and so it comes before and after. A stream
// cannot be taken back: it comes last, when nothing else can fail.
//
// Tested by outputs_test.cpp; held_run_program_test.cpp ends the program while it writes.
#include "cli/outputs.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "cli/terminal_text.h"
#include "document/result_document.h"
#include "document/text_exports.h"
#include "platform/descriptor.h"
#include "platform/files.h"
#include "platform/program_end.h"
#include "report/run_record.h"

namespace cli {

namespace fs = std::filesystem;
using platform::Error;
using platform::Status;

bool isSamePlace(const std::string& one, const std::string& other) {
    if (one == kStandardOutput || other == kStandardOutput) {
        return one == other;
    }
    std::error_code failure;
    if (fs::equivalent(one, other, failure)) {
        return true;
    }
    std::error_code otherFailure;
    const fs::path onePath = fs::weakly_canonical(fs::absolute(one, failure), failure);
    const fs::path otherPath =
        fs::weakly_canonical(fs::absolute(other, otherFailure), otherFailure);
    return !failure && !otherFailure && onePath == otherPath;
}

namespace {

struct NamedPath {
    std::string option;
    std::string path;
};

/// Where the record of a run goes; nullopt: nowhere. A stream has no place beside it.
std::optional<std::string> recordPath(const OutputPaths& outputs) {
    if (!outputs.save || outputs.withoutRecord || isStreamed(*outputs.save)) {
        return std::nullopt;
    }
    return report::recordPathOf(*outputs.save);
}

std::vector<NamedPath> namedPaths(const OutputPaths& outputs) {
    std::vector<NamedPath> paths;
    const auto add = [&paths](const char* option, const std::optional<std::string>& path) {
        if (path) {
            paths.push_back({option, *path});
        }
    };
    add("--save", outputs.save);
    add("--report", outputs.report);
    add("--summary", outputs.summary);
    add("--json", outputs.json);
    add("--unassigned", outputs.unassigned);
    add("--status", outputs.status);
    if (const auto record = recordPath(outputs)) {
        add("--save (its record)", record);
    }
    return paths;
}

/// Why no file can be made or replaced at `path`; success when one can.
Status checkPlace(const std::string& path) {
    if (isStreamed(path)) {
        return {};
    }
    std::error_code failure;
    if (path.empty()) {
        return Error{"expected a file name"};
    }
    if (fs::is_directory(path, failure)) {
        return Error{"is a directory"};
    }
    const std::string directory = platform::directoryOf(resolvedOutputPath(path));
    if (access(directory.c_str(), W_OK | X_OK) != 0) {
        return Error{"no file can be made in " + directory + ": " + std::strerror(errno)};
    }
    return {};
}

Status checkOne(const NamedPath& output, const std::vector<NamedPath>& others,
                const std::vector<std::string>& inputs) {
    const auto refused = [&output](const std::string& reason) {
        return Error{output.option + " " + output.path + ": " + reason};
    };
    for (const NamedPath& other : others) {
        if (isSamePlace(output.path, other.path)) {
            return refused("the same place as " + other.option + " " + other.path);
        }
    }
    for (const std::string& input : inputs) {
        if (isSamePlace(output.path, input)) {
            return refused("this is the input " + input);
        }
    }
    const Status place = checkPlace(output.path);
    return place ? place : refused(place.error().message);
}

Error namingOption(const Output& output, const Error& error) {
    return {output.option + ": " + error.message};
}

Status writeTo(std::ostream& stream, const std::string& name,
               const std::function<Status(const TextSink&)>& write) {
    errno = 0;
    const auto failure = [&name] {
        return Error{"cannot write to " + name + ": " +
                     (errno != 0 ? std::strerror(errno) : "the stream is closed")};
    };
    Status written = write([&](std::string_view text) -> Status {
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        return stream ? Status() : Status(failure());
    });
    if (!written) {
        return written;
    }
    return stream.flush() ? Status() : Status(failure());
}

using WrittenFiles = std::vector<std::pair<const Output*, platform::AtomicFile>>;

Status forEach(WrittenFiles& files, Status (platform::AtomicFile::*step)()) {
    for (auto& [output, file] : files) {
        const Status done = (file.*step)();
        if (!done) {
            return namingOption(*output, done.error());
        }
    }
    return {};
}

/// Puts them in their places; a program that is told to end meanwhile ends before the first or
/// after the last, since renaming takes it but a moment. Waiting for a disk may take longer than an
/// end can be put off, and so comes before and after.
Status commitTogether(WrittenFiles& files) {
    if (Status flushed = forEach(files, &platform::AtomicFile::flush); !flushed) {
        return flushed;
    }
    {
        const platform::EndPutOff untilAllAreInPlace;
        if (Status inPlace = forEach(files, &platform::AtomicFile::commitUnflushed); !inPlace) {
            return inPlace;
        }
    }
    return forEach(files, &platform::AtomicFile::flushName);
}

platform::Result<platform::AtomicFile> writtenFile(const Output& output) {
    if (!output.finishedFile.empty()) {
        auto finished =
            platform::AtomicFile::ofFinished(output.finishedFile, resolvedOutputPath(output.path));
        return finished ? std::move(finished) : namingOption(output, finished.error());
    }
    auto file = platform::AtomicFile::create(resolvedOutputPath(output.path));
    if (!file) {
        return namingOption(output, file.error());
    }
    const Status written =
        output.write([&file](std::string_view text) { return file.value().write(text); });
    if (!written) {
        return namingOption(output, written.error());
    }
    return file;
}

/// The report of the clipboard with every patient selected.
std::string reportOfAll(const run::PatientList& patients) {
    std::vector<std::int64_t> rows(archive::orEmpty(patients).size());
    std::iota(rows.begin(), rows.end(), std::int64_t{0});
    return document::fullReport(patients, rows);
}

} // namespace

std::vector<Output> resultOutputs(const OutputPaths& paths, const run::MainMutDictionary& results,
                                  const RunTexts& run, bool outIsTerminal) {
    std::vector<Output> outputs;
    const auto add = [&](const char* option, const std::optional<std::string>& path,
                         const std::function<Status(const TextSink&)>& write) {
        if (path) {
            outputs.push_back({option, *path, write});
        }
    };
    /// A table of the patients, of whom a terminal gets a copy with texts that it only shows.
    const auto table = [&](const std::optional<std::string>& path, const auto& textOf) {
        const bool shown = path && (*path == kStandardOutput ? outIsTerminal : isTerminal(*path));
        return [&results, shown, textOf](const TextSink& sink) {
            const run::PatientList& patients = results.summaryForEachPatientMutAr;
            return sink(shown ? textOf(withShowableTexts(patients)) : textOf(patients));
        };
    };
    add("--save", paths.save, [&results, &run](const TextSink& sink) -> Status {
        if (!run.document.empty()) {
            return sink(run.document);
        }
        const auto bytes = document::encodeResultDocument(results);
        return bytes ? sink(bytes.value()) : Status(bytes.error());
    });
    add("--report", paths.report, table(paths.report, reportOfAll));
    add("--summary", paths.summary, table(paths.summary, document::summaryTable));
    add("--json", paths.json, [&results, &run](const TextSink& sink) {
        return report::writeJson(results.summaryForEachPatientMutAr, results.selectedPatientRowNo,
                                 run.record, sink);
    });
    add("--status", paths.status, [&run](const TextSink& sink) { return sink(run.status); });
    if (!run.recordFile.empty()) {
        add("--save (its record)", recordPath(paths),
            [&run](const TextSink& sink) { return sink(run.recordFile); });
    }
    return outputs;
}

std::vector<Output> failureOutputs(const OutputPaths& paths, const RunTexts& run) {
    static const run::MainMutDictionary kNoResults = {run::PatientList(std::in_place), -1};
    OutputPaths wanted;
    wanted.json = paths.json;
    wanted.status = paths.status;
    return resultOutputs(wanted, kNoResults, run, false);
}

Status checkOutputPaths(const OutputPaths& outputs, const std::vector<std::string>& inputs) {
    std::vector<NamedPath> seen;
    for (const NamedPath& output : namedPaths(outputs)) {
        Status status = checkOne(output, seen, inputs);
        if (!status) {
            return status;
        }
        seen.push_back(output);
    }
    return {};
}

bool isStreamed(const std::string& path) {
    std::error_code failure;
    const auto type = fs::status(path, failure).type();
    return path == kStandardOutput || type == fs::file_type::fifo ||
           type == fs::file_type::character || type == fs::file_type::socket ||
           type == fs::file_type::block;
}

bool isTerminal(const std::string& path) {
    std::error_code failure;
    if (fs::status(path, failure).type() != fs::file_type::character) {
        return false;
    }
    const platform::Descriptor device(
        open(path.c_str(), O_WRONLY | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    return device.isOpen() && isatty(device.number()) == 1;
}

std::string resolvedOutputPath(const std::string& path) {
    std::error_code failure;
    const fs::path resolved = fs::canonical(path, failure);
    return failure ? path : resolved.string();
}

Status writeStreamed(const Output& output, std::ostream& out) {
    Status status;
    if (output.path == kStandardOutput) {
        status = writeTo(out, "standard output", output.write);
    } else {
        std::ofstream stream(output.path, std::ios::binary | std::ios::app);
        TerminalBuffer shown(*stream.rdbuf());
        std::ostream terminal(stream ? &shown : nullptr);
        status = isTerminal(output.path) ? writeTo(terminal, output.path, output.write)
                                         : writeTo(stream, output.path, output.write);
    }
    return status ? status : namingOption(output, status.error());
}

Status writeOutputs(const std::vector<Output>& outputs, std::ostream& out) {
    WrittenFiles files;
    for (const Output& output : outputs) {
        if (isStreamed(output.path)) {
            continue;
        }
        auto file = writtenFile(output);
        if (!file) {
            return file.error();
        }
        files.emplace_back(&output, std::move(file).value());
    }
    if (Status committed = commitTogether(files); !committed) {
        return committed;
    }
    for (const Output& output : outputs) {
        Status streamed = isStreamed(output.path) ? writeStreamed(output, out) : Status();
        if (!streamed) {
            return streamed;
        }
    }
    return {};
}

} // namespace cli
