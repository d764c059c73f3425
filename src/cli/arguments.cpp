// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// From the program's arguments to the plain Arguments. The parser fills RawArguments; checked()
// then reads the texts of settings and refuses combinations that it cannot see. No file is touched
// here, so that every slip is told before anything happens. Tested by arguments_test.cpp.
#include "cli/arguments.h"

#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/run_settings.h"
#include "document/reads_name.h"
#include "reads/read_source.h"

namespace cli {
namespace {

// --- The parts of --help that say more than the list of options

constexpr const char* kExitStatusHelp = R"(Exit status:
  0    every patient analysed, whatever was found
  1    a run failed, the catalogue has errors, or an output could not be written;
       in a batch the other patients' results are written. Also where a batch ended
       because its catalogue or settings changed, and with --strict where reads are
       missing from the counts
  2    unusable arguments or input: unpaired, missing, no pair in the directory,
       no patient number in the name, faulty catalogue; nothing is written
  130  stopped by SIGINT: finished patients are written; a second SIGINT ends at once
  129, 143
       ended at once by SIGHUP or SIGTERM: output files are written all or none
)";

constexpr const char* kProgramHelp = R"(
Examples:
  vexta analyze P_S1_L001_R1_001.fastq.gz
  vexta analyze-all --save run.vexta --report report.txt RUN_DIRECTORY
  vexta show --json run.json run.vexta
  vexta catalogue check --catalogue panel.txt

"vexta COMMAND --help" lists a command's options.

)";

constexpr const char* kAnalyzeHelp = R"(
Examples:
  vexta analyze P_S1_L001_R1_001.fastq.gz                 summary table on standard output
  vexta analyze --report P.txt --json P.json P_S1_L001_R2_001.fastq
  vexta analyze --set nD1Threshold=200 --summary - P_S1_L001_R1_001.fastq.gz
  vexta analyze --lanes all P_S1_L001_R1_001.fastq.gz     L001, L002 ... as one patient
  vexta analyze --r1 Anna_1.fq.gz --r2 Anna_2.fq.gz --sample Anna --number 7

)";

constexpr const char* kAnalyzeAllHelp = R"(
Examples:
  vexta analyze-all RUN_DIRECTORY                         summary table on standard output
  vexta analyze-all --summary run.tsv --report run.txt RUN_DIRECTORY
  vexta analyze-all --quiet --json - RUN_DIRECTORY | jq .
  vexta analyze-all --lanes all RUN_DIRECTORY             every lane of each sample
  vexta analyze-all --any-name --skip-unpaired DIRECTORY  Anna_R1.fq.gz, SRR1_1.fastq.gz ...
  vexta analyze-all --sample-sheet samples.tsv

A sample sheet is a table, its columns separated by tabs, under a head line that
names them: sample, number, r1, r2. Several lines of a sample are its lanes.
Relative paths start from DIRECTORY, or else from the sheet's own:

  sample  number  r1               r2
  Anna    7       Anna_R1.fq.gz    Anna_R2.fq.gz
  Bert    8       Bert_L1_1.fastq  Bert_L1_2.fastq
  Bert    8       Bert_L2_1.fastq  Bert_L2_2.fastq

)";

constexpr const char* kShowHelp = R"(
Examples:
  vexta show run.vexta                                    summary table on standard output
  vexta show --report run.txt --json run.json run.vexta

Exit status:
  0    the outputs were written
  1    an output could not be written
  2    unusable arguments, or a file that is no result document
)";

constexpr const char* kDigestHelp = R"(
The same results have the same fingerprint, whatever the number of threads and
whether the reads were plain or .gz: SHA-256 over the patients of "vexta show
--json" in canonical form (RFC 8785), without the names of the files.

Examples:
  vexta digest run.vexta
  vexta digest *.vexta

Exit status:
  0    printed
  1    standard output could not be written
  2    unusable arguments, or a file that is no result document
)";

constexpr const char* kCatalogueHelp = R"(
Examples:
  vexta catalogue list
  vexta catalogue check --catalogue panel.txt
)";

constexpr const char* kCatalogueListHelp = R"(
Examples:
  vexta catalogue list
  vexta catalogue list --catalogue panel.txt | cut -f 2,3

Exit status:
  0    listed
  1    standard output could not be written
  2    unusable arguments or an unreadable catalogue
)";

constexpr const char* kCatalogueCheckHelp = R"(
Examples:
  vexta catalogue check
  vexta catalogue check --catalogue panel.txt --set nD1Threshold=200
  vexta catalogue check --catalogue panel.txt --explain

Exit status:
  0    no error, perhaps warnings
  1    at least one error
  2    unusable arguments or an unreadable catalogue
)";

/// "vexta 0.1.0" and the decoders of .gz that were built in, without a line feed.
std::string versionLine() {
    const bool withIsal = reads::gzipBackendAvailable(reads::GzipBackend::isal);
    return std::string("vexta ") + VEXTA_VERSION +
           (withIsal ? " (.gz by ISA-L)" : " (.gz by zlib)");
}

// --- The commands and their options

/// Arguments as the parser fills them, before texts become values.
struct RawArguments {
    Arguments arguments;
    std::vector<std::string> settingTexts;
    bool direct = false;
    std::string lanes;
};

/// The one value of --lanes.
constexpr const char* kEveryLane = "all";

// Heads of the lists in --help.
constexpr const char* kCommands = "Commands";
constexpr const char* kInputs = "Inputs";
constexpr const char* kOutputs = "Outputs (\"-\" is standard output)";

struct Commands {
    CLI::App* analyze = nullptr;
    CLI::App* analyzeAll = nullptr;
    CLI::App* show = nullptr;
    CLI::App* digest = nullptr;
    CLI::App* catalogueList = nullptr;
    CLI::App* catalogueCheck = nullptr;
};

void addCatalogueOption(CLI::App& command, Arguments& arguments) {
    command
        .add_option(kCatalogueOption, arguments.cataloguePath,
                    "definition file (default: $VEXTA_CATALOGUE, else the one that ships)")
        ->type_name("FILE");
}

void addSettingOptions(CLI::App& command, RawArguments& raw) {
    command
        .add_option("--settings", raw.arguments.settingsPath,
                    "settings file instead of the per-user one")
        ->type_name("FILE");
    command
        .add_option("--set", raw.settingTexts,
                    "a setting for this run only, never stored; may be repeated")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
}

void addOutputOptions(CLI::App& command, OutputPaths& outputs) {
    command.add_option("--report", outputs.report, "full report of every patient")
        ->type_name("FILE")
        ->group(kOutputs);
    command
        .add_option("--summary", outputs.summary,
                    "summary table (on standard output when no output is named)")
        ->type_name("FILE")
        ->group(kOutputs);
    command.add_option("--json", outputs.json, "every record and row as JSON")
        ->type_name("FILE")
        ->group(kOutputs);
}

void addRunOptions(CLI::App& command, RawArguments& raw) {
    command.add_flag("--direct", raw.direct,
                     "read the inputs where they are, write nothing beside them (the default)");
    command.add_flag("--working-copies", raw.arguments.workingCopies,
                     "make working copies beside the inputs, as the window does");
    command.add_option("--threads", raw.arguments.threads, "worker threads, 1 to 256")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, kMaxThreads).description(""));
    command.add_flag("--strict", raw.arguments.strict,
                     "exit status 1, outputs written, where reads are missing from the counts: an "
                     "early end, surplus records, an empty file, headers of the other read, files "
                     "that are not used, nothing mapped");
    command.add_flag("--quiet", raw.arguments.quiet,
                     "no progress and no notes, only errors and warnings");
}

void addSaveOption(CLI::App& command, OutputPaths& outputs) {
    command
        .add_option("--save", outputs.save,
                    "result document, for vexta show and the window; the run's record lies beside "
                    "it as FILE.vexta.record.json")
        ->type_name("FILE.vexta")
        ->group(kOutputs);
    command.add_flag("--no-record", outputs.withoutRecord, "no record beside the result document")
        ->group(kOutputs);
    command
        .add_option("--status", outputs.status,
                    "a table of what became of each patient; written after failures, too")
        ->type_name("FILE.tsv")
        ->group(kOutputs);
}

void addLanesOption(CLI::App& command, RawArguments& raw) {
    command
        .add_option("--lanes", raw.lanes,
                    "reads the lanes of a sample one after the other as one patient, where their "
                    "names differ in the lane alone (not with --working-copies)")
        ->type_name("all")
        ->check(CLI::IsMember({kEveryLane}).description(""))
        ->group(kInputs);
}

void addNamedFiles(CLI::App& command, Arguments& arguments) {
    const auto add = [&](const char* option, std::optional<std::string>& value, const char* help,
                         const char* type) {
        command.add_option(option, value, help)->type_name(type)->group(kInputs);
    };
    add("--r1", arguments.read1Path, "read-1 file of any name, instead of FASTQ", "FILE");
    add("--r2", arguments.read2Path, "the read-2 file with it", "FILE");
    add("--sample", arguments.sample, "with these: the sample's name (default: from the file name)",
        "NAME");
    add("--number", arguments.number,
        "with these: the patient number, from 1 (default: from the file name)", "N");
}

CLI::App* addAnalyze(CLI::App& app, RawArguments& raw) {
    auto* command = app.add_subcommand("analyze", "Analyse one patient: either file of the pair")
                        ->group(kCommands);
    command->add_option("FASTQ", raw.arguments.input, "read-1 or read-2 file, plain or .gz")
        ->type_name("");
    addNamedFiles(*command, raw.arguments);
    addLanesOption(*command, raw);
    addSaveOption(*command, raw.arguments.outputs);
    addOutputOptions(*command, raw.arguments.outputs);
    command
        ->add_option("--unassigned", raw.arguments.outputs.unassigned,
                     "read pairs that no mutation claimed (not with --working-copies)")
        ->type_name("FILE")
        ->group(kOutputs);
    addCatalogueOption(*command, raw.arguments);
    addSettingOptions(*command, raw);
    addRunOptions(*command, raw);
    command->footer(std::string(kAnalyzeHelp) + kExitStatusHelp);
    return command;
}

CLI::App* addAnalyzeAll(CLI::App& app, RawArguments& raw) {
    auto* command = app.add_subcommand("analyze-all", "Analyse every complete pair in a directory")
                        ->group(kCommands);
    command->add_option("DIRECTORY", raw.arguments.input, "directory of a sequencer run")
        ->type_name("");
    command
        ->add_option("--sample-sheet", raw.arguments.sampleSheet,
                     "table of samples and their files, see below (not with --working-copies)")
        ->type_name("FILE.tsv")
        ->group(kInputs);
    addLanesOption(*command, raw);
    command
        ->add_flag("--any-name", raw.arguments.anyName,
                   "takes names without lane or number, and with any part, too: "
                   "<sample>[_S<number>][_L<lane>]_R<1|2>[_<part>].<fastq|fq>[.gz], "
                   "<sample>_<1|2>.<fastq|fq>[.gz] (not with --working-copies)")
        ->group(kInputs);
    command
        ->add_flag("--skip-unpaired", raw.arguments.skipUnpaired,
                   "goes on without samples of which only one file is there")
        ->group(kInputs);
    addSaveOption(*command, raw.arguments.outputs);
    addOutputOptions(*command, raw.arguments.outputs);
    addCatalogueOption(*command, raw.arguments);
    addSettingOptions(*command, raw);
    addRunOptions(*command, raw);
    command
        ->add_flag("--allow-shared-numbers", raw.arguments.allowSharedNumbers,
                   "go on where two samples have one number, or the names of a pair differ in "
                   "more than the read mark")
        ->group(kInputs);
    command->footer(std::string(kAnalyzeAllHelp) + kExitStatusHelp);
    return command;
}

CLI::App* addShow(CLI::App& app, RawArguments& raw) {
    auto* command =
        app.add_subcommand("show", "Reopen a result document and export it")->group(kCommands);
    command->add_option("FILE.vexta", raw.arguments.input, "result document")
        ->required()
        ->type_name("");
    addOutputOptions(*command, raw.arguments.outputs);
    command->footer(kShowHelp);
    return command;
}

CLI::App* addDigest(CLI::App& app, RawArguments& raw) {
    auto* command =
        app.add_subcommand("digest", "Print the fingerprint of the results in result documents")
            ->group(kCommands);
    command->add_option("FILE.vexta", raw.arguments.documents, "result documents")
        ->required()
        ->type_name("");
    command->footer(kDigestHelp);
    return command;
}

void addCheckOptions(CLI::App& command, CheckArguments& check) {
    auto* explain = command.add_flag("--explain", check.explain,
                                     "under each finding: what happens, and what to do about it");
    command.add_flag("--json", check.json, "the findings as a JSON array, explanations included")
        ->excludes(explain);
    command
        .add_option("--read-length", check.readLength,
                    "bases of a read, against which cores are held (150)")
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, catalogue::kLongestRead).description(""));
}

void addCatalogue(CLI::App& app, RawArguments& raw, Commands& commands) {
    auto* catalogue =
        app.add_subcommand("catalogue", "List or check a definition file")->group(kCommands);
    catalogue->require_subcommand(1);
    catalogue->footer(kCatalogueHelp);
    commands.catalogueList =
        catalogue->add_subcommand("list", "Print every mutation as a tab-separated table")
            ->group(kCommands);
    addCatalogueOption(*commands.catalogueList, raw.arguments);
    commands.catalogueList->footer(kCatalogueListHelp);

    commands.catalogueCheck =
        catalogue->add_subcommand("check", "Report errors and doubtful places with line numbers")
            ->group(kCommands);
    addCatalogueOption(*commands.catalogueCheck, raw.arguments);
    addSettingOptions(*commands.catalogueCheck, raw);
    addCheckOptions(*commands.catalogueCheck, raw.arguments.check);
    commands.catalogueCheck->footer(kCatalogueCheckHelp);
}

Commands addCommands(CLI::App& app, RawArguments& raw) {
    Commands commands;
    commands.analyze = addAnalyze(app, raw);
    commands.analyzeAll = addAnalyzeAll(app, raw);
    commands.show = addShow(app, raw);
    commands.digest = addDigest(app, raw);
    addCatalogue(app, raw, commands);
    return commands;
}

Command chosenCommand(const Commands& commands) {
    if (commands.analyzeAll->parsed()) {
        return Command::analyzeAll;
    }
    if (commands.show->parsed()) {
        return Command::show;
    }
    if (commands.digest->parsed()) {
        return Command::digest;
    }
    if (commands.catalogueList->parsed()) {
        return Command::catalogueList;
    }
    return commands.catalogueCheck->parsed() ? Command::catalogueCheck : Command::analyze;
}

ParsedArguments refused(const std::string& message) {
    return {std::nullopt, Outcome::unusable,
            "vexta: " + message + "\nvexta: \"vexta --help\" tells how it is used\n"};
}

/// Names the word that is no command, where the parser only says that one is missing.
std::string reasonOf(const CLI::App& app, const CLI::ParseError& error) {
    const auto chosen = app.get_subcommands();
    const bool isGroup = !chosen.empty() && chosen[0]->get_require_subcommand_min() > 0;
    if (!chosen.empty() && (!isGroup || !chosen[0]->get_subcommands().empty())) {
        return error.what();
    }
    const std::vector<std::string> surplus = app.remaining(true);
    if (surplus.empty()) {
        return isGroup ? "catalogue: expected list or check"
                       : "expected a command: analyze, analyze-all, show, digest or catalogue";
    }
    return surplus[0] + ": no such command or option";
}

/// Why the two files of --r1 and --r2 are not named as they must be; "" where nothing is wrong.
std::string whyNotNamed(const Arguments& arguments, bool everyLane) {
    if (!arguments.read1Path && !arguments.read2Path) {
        return arguments.sample || arguments.number ? "--sample and --number need --r1 and --r2"
               : arguments.input.empty() ? "analyze: expected a FASTQ file, or --r1 and --r2"
                                         : "";
    }
    if (!arguments.read1Path || !arguments.read2Path) {
        return "--r1 and --r2 need each other";
    }
    if (!arguments.input.empty()) {
        return arguments.input + ": --r1 and --r2 name the files already";
    }
    if (everyLane) {
        return "--lanes all finds lanes by their names, --r1 and --r2 name one; a sample sheet "
               "names "
               "several";
    }
    if (arguments.sample && arguments.sample->empty()) {
        return "--sample: expected a name";
    }
    return arguments.number && !document::isPatientNumber(*arguments.number)
               ? "--number " + *arguments.number + ": expected a whole number from 1"
               : "";
}

/// The same of the patients of a batch.
std::string whyNotNamed(const Arguments& arguments) {
    if (!arguments.sampleSheet) {
        return arguments.input.empty() ? "analyze-all: expected a DIRECTORY, or --sample-sheet"
                                       : "";
    }
    return arguments.everyLane || arguments.anyName || arguments.skipUnpaired ||
                   arguments.allowSharedNumbers
               ? "--sample-sheet names the files itself: --lanes, --any-name, --skip-unpaired and "
                 "--allow-shared-numbers do not go with it"
               : "";
}

/// Why the inputs cannot be used; "" where nothing is wrong.
std::string whyInputsAreRefused(const Arguments& arguments) {
    const bool isSingle = arguments.command == Command::analyze;
    if (!isSingle && arguments.command != Command::analyzeAll) {
        return {};
    }
    std::string reason =
        isSingle ? whyNotNamed(arguments, arguments.everyLane) : whyNotNamed(arguments);
    if (reason.empty() && arguments.workingCopies) {
        for (const auto& [option, isGiven] :
             {std::pair("--r1 and --r2", arguments.read1Path.has_value()),
              std::pair("--sample-sheet", arguments.sampleSheet.has_value()),
              std::pair("--lanes all", arguments.everyLane),
              std::pair("--any-name", arguments.anyName)}) {
            if (isGiven) {
                reason = std::string(option) + ": needs direct reading, not --working-copies";
            }
        }
    }
    return reason;
}

/// What the parser cannot see: values of settings, and options that exclude each other by sense.
ParsedArguments checked(RawArguments raw, Command command) {
    Arguments& arguments = raw.arguments;
    arguments.command = command;
    arguments.everyLane = raw.lanes == kEveryLane;
    takeCatalogueFromEnvironment(arguments);
    for (const std::string& text : raw.settingTexts) {
        auto setting = parseSetting(text);
        if (!setting) {
            return refused(setting.error().message);
        }
        arguments.settings.insert_or_assign(setting.value().key, setting.value().value);
    }
    if (arguments.workingCopies && raw.direct) {
        return refused("--direct and --working-copies exclude each other");
    }
    if (const std::string reason = whyInputsAreRefused(arguments); !reason.empty()) {
        return refused(reason);
    }
    if (arguments.workingCopies && arguments.outputs.unassigned) {
        return refused("--unassigned " + *arguments.outputs.unassigned +
                       ": needs direct reading, not --working-copies");
    }
    OutputPaths& outputs = arguments.outputs;
    const bool exports =
        command == Command::analyze || command == Command::analyzeAll || command == Command::show;
    if (exports && !outputs.save && !outputs.report && !outputs.summary && !outputs.json &&
        !outputs.status) {
        outputs.summary = kStandardOutput;
    }
    return {std::move(raw.arguments), Outcome::success, {}};
}

} // namespace

/// The parser's own reading of variables would also fill the options of commands that were not
/// chosen, and with them this path.
void takeCatalogueFromEnvironment(Arguments& arguments) {
    const char* named = std::getenv(kCatalogueVariable);
    if (!arguments.cataloguePath && named != nullptr && *named != 0) {
        arguments.cataloguePath = named;
        arguments.catalogueNamedBy = kCatalogueVariable;
    }
}

ParsedArguments parseArguments(int argc, const char* const* argv) {
    RawArguments raw;
    CLI::App app("Counts and calls target sequences in paired-end sequencing reads.", "vexta");
    app.set_version_flag("--version", versionLine());
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.footer(std::string(kProgramHelp) + kExitStatusHelp);
    const Commands commands = addCommands(app, raw);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return {std::nullopt, Outcome::success, app.help()};
    } catch (const CLI::CallForVersion& version) {
        return {std::nullopt, Outcome::success, std::string(version.what()) + "\n", true};
    } catch (const CLI::ParseError& error) {
        return refused(reasonOf(app, error));
    }
    return checked(std::move(raw), chosenCommand(commands));
}

} // namespace cli
