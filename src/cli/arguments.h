// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

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
inline constexpr const char* kCatalogueOption = "--catalogue";
/// The environment variable that names a definition file where the option does not.
inline constexpr const char* kCatalogueVariable = "VEXTA_CATALOGUE";
/// More threads than this bring nothing and are refused as a slip of the keyboard.
inline constexpr std::size_t kMaxThreads = 256;

enum class Command { analyze, analyzeAll, show, digest, catalogueList, catalogueCheck };

/// Where results go; nullopt: not asked for.
struct OutputPaths {
    /// The result document.
    std::optional<std::string> save;
    std::optional<std::string> report;
    std::optional<std::string> summary;
    std::optional<std::string> json;
    /// Read pairs that no mutation claimed.
    std::optional<std::string> unassigned;
    /// What became of each patient.
    std::optional<std::string> status;
    /// Leaves out the record that else lies beside the result document.
    bool withoutRecord = false;
};

using settings::SettingValues;

/// What `catalogue check` does with its findings.
struct CheckArguments {
    /// Says under each finding what happens and what to do.
    bool explain = false;
    /// Prints the findings as a JSON array.
    bool json = false;
    /// Bases of a read.
    std::size_t readLength = catalogue::kUsualReadLength;
};

/// What the user asked for. No file was touched to find out.
struct Arguments {
    Command command = Command::analyze;
    /// The FASTQ file of analyze, the directory of analyze-all, the result document of show. Empty
    /// where the next ones name the inputs.
    std::string input;
    /// The two files of analyze, by any names: both or neither.
    std::optional<std::string> read1Path;
    std::optional<std::string> read2Path;
    /// With them, who it is; nullopt: the names tell.
    std::optional<std::string> sample;
    std::optional<std::string> number;
    /// The table of analyze-all that names samples and files; `input` is then where relative paths
    /// start, or empty.
    std::optional<std::string> sampleSheet;
    /// Reads the lanes of a sample one after the other, as one patient.
    bool everyLane = false;
    /// Takes names without lane or number, and other endings and parts.
    bool anyName = false;
    /// Goes on without samples of which only one file is there.
    bool skipUnpaired = false;
    /// The result documents of digest.
    std::vector<std::string> documents;
    OutputPaths outputs;
    /// nullopt: the definition file that ships.
    std::optional<std::string> cataloguePath;
    /// What named it, for messages: the option, or the variable that stands in for it.
    std::string catalogueNamedBy = kCatalogueOption;
    /// nullopt: the per-user store.
    std::optional<std::string> settingsPath;
    /// Values of --set.
    SettingValues settings;
    CheckArguments check;
    bool workingCopies = false;
    bool quiet = false;
    /// Fails where reads are missing from the counts, or nothing was found to count.
    bool strict = false;
    /// Goes on where two samples of a directory have one number.
    bool allowSharedNumbers = false;
    /// nullopt: as many as the machine runs at once.
    std::optional<std::size_t> threads;
};

/// Arguments, or what to print instead of running a command.
struct ParsedArguments {
    std::optional<Arguments> arguments;
    /// Without arguments: success when `message` answers --help or --version, else unusable.
    Outcome outcome = Outcome::success;
    std::string message;
    /// Whether it answers --version, to which the catalogue belongs.
    bool isVersion = false;
};

/// A laboratory names its catalogue once, in VEXTA_CATALOGUE. It counts where no option names one,
/// unless it is empty.
void takeCatalogueFromEnvironment(Arguments& arguments);

/// Reads the program's arguments, and the catalogue's variable where no option names one. Every
/// combination that no command can use is refused here.
ParsedArguments parseArguments(int argc, const char* const* argv);

} // namespace cli
