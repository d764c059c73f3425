// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "catalogue/catalogue_check.h"
#include "settings/settings_store.h"

namespace cli {

/// How a command ended. The numbers are the program's exit status, which scripts rely on: never
/// change them.
enum class Outcome {
    success = 0,       ///< every patient analysed, whatever was found
    failed = 1,        ///< a run failed, a catalogue has errors, or an output could not be written
    unusable = 2,      ///< unusable arguments or input; nothing was written
    hungUp = 129,      ///< ended by SIGHUP; output files were written all or none
    interrupted = 130, ///< stopped by SIGINT; finished patients were written
    terminated = 143,  ///< ended by SIGTERM; output files were written all or none
};

/// Stands for standard output where an output file is named.
inline constexpr const char* kStandardOutput = "-";
/// More threads than this bring nothing and are refused as a slip of the keyboard.
inline constexpr std::size_t kMaxThreads = 256;

enum class Command { analyze, analyzeAll, show, catalogueList, catalogueCheck };

/// Where results go; nullopt: not asked for.
struct OutputPaths {
    /// The result document.
    std::optional<std::string> save;
    std::optional<std::string> report;
    std::optional<std::string> summary;
    std::optional<std::string> json;
    /// Read pairs that no mutation claimed.
    std::optional<std::string> unassigned;
};

/// What `catalogue check` does with its findings.
struct CheckArguments {
    /// Says under each finding what happens and what to do.
    bool explain = false;
    /// Prints the findings as a JSON array.
    bool json = false;
    /// Bases of a read.
    std::size_t readLength = catalogue::kUsualReadLength;
};

using SettingValues = std::map<std::string, settings::SettingValue, std::less<>>;

/// What the user asked for. No file was touched to find out.
struct Arguments {
    Command command = Command::analyze;
    /// The FASTQ file of analyze, the directory of analyze-all, the result document of show.
    std::string input;
    OutputPaths outputs;
    /// nullopt: the definition file that ships.
    std::optional<std::string> cataloguePath;
    /// nullopt: the per-user store.
    std::optional<std::string> settingsPath;
    /// Values of --set.
    SettingValues settings;
    CheckArguments check;
    bool workingCopies = false;
    bool quiet = false;
    /// nullopt: as many as the machine runs at once.
    std::optional<std::size_t> threads;
};

/// Arguments, or what to print instead of running a command.
struct ParsedArguments {
    std::optional<Arguments> arguments;
    /// Without arguments: success when `message` answers --help or --version, else unusable.
    Outcome outcome = Outcome::success;
    std::string message;
};

/// Reads the program's arguments. Every combination that no command can use is refused here.
ParsedArguments parseArguments(int argc, const char* const* argv);

} // namespace cli
