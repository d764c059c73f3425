// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments.h"

#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "cli/help_texts.h"
#include "cli/run_settings.h"
#include "cli/version.h"

namespace cli {
namespace {

/// Arguments as the parser fills them, before texts become values.
struct RawArguments {
    Arguments arguments;
    std::vector<std::string> settingTexts;
    bool direct = false;
};

// Heads of the lists in --help.
constexpr const char* kCommands = "Commands";
constexpr const char* kOutputs = "Outputs (\"-\" is standard output)";

struct Commands {
    CLI::App* analyze = nullptr;
    CLI::App* analyzeAll = nullptr;
    CLI::App* show = nullptr;
    CLI::App* catalogueList = nullptr;
    CLI::App* catalogueCheck = nullptr;
};

void addCatalogueOption(CLI::App& command, Arguments& arguments) {
    command
        .add_option("--catalogue", arguments.cataloguePath,
                    "definition file instead of the one that ships")
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
    command.add_flag("--quiet", raw.arguments.quiet,
                     "no progress and no notes, only errors and warnings");
}

void addSaveOption(CLI::App& command, OutputPaths& outputs) {
    command.add_option("--save", outputs.save, "result document, for vexta show and the window")
        ->type_name("FILE.vexta")
        ->group(kOutputs);
}

CLI::App* addAnalyze(CLI::App& app, RawArguments& raw) {
    auto* command = app.add_subcommand("analyze", "Analyse one patient: either file of the pair")
                        ->group(kCommands);
    command->add_option("FASTQ", raw.arguments.input, "read-1 or read-2 file, plain or .gz")
        ->required()
        ->type_name("");
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
    command->footer(std::string(help::kAnalyze) + help::kExitStatus);
    return command;
}

CLI::App* addAnalyzeAll(CLI::App& app, RawArguments& raw) {
    auto* command = app.add_subcommand("analyze-all", "Analyse every complete pair in a directory")
                        ->group(kCommands);
    command->add_option("DIRECTORY", raw.arguments.input, "directory of a sequencer run")
        ->required()
        ->type_name("");
    addSaveOption(*command, raw.arguments.outputs);
    addOutputOptions(*command, raw.arguments.outputs);
    addCatalogueOption(*command, raw.arguments);
    addSettingOptions(*command, raw);
    addRunOptions(*command, raw);
    command->footer(std::string(help::kAnalyzeAll) + help::kExitStatus);
    return command;
}

CLI::App* addShow(CLI::App& app, RawArguments& raw) {
    auto* command =
        app.add_subcommand("show", "Reopen a result document and export it")->group(kCommands);
    command->add_option("FILE.vexta", raw.arguments.input, "result document")
        ->required()
        ->type_name("");
    addOutputOptions(*command, raw.arguments.outputs);
    command->footer(help::kShow);
    return command;
}

void addCatalogue(CLI::App& app, RawArguments& raw, Commands& commands) {
    auto* catalogue =
        app.add_subcommand("catalogue", "List or check a definition file")->group(kCommands);
    catalogue->require_subcommand(1);
    catalogue->footer(help::kCatalogue);
    commands.catalogueList =
        catalogue->add_subcommand("list", "Print every mutation as a tab-separated table")
            ->group(kCommands);
    addCatalogueOption(*commands.catalogueList, raw.arguments);
    commands.catalogueList->footer(help::kCatalogueList);

    commands.catalogueCheck =
        catalogue->add_subcommand("check", "Report errors and doubtful places with line numbers")
            ->group(kCommands);
    addCatalogueOption(*commands.catalogueCheck, raw.arguments);
    addSettingOptions(*commands.catalogueCheck, raw);
    commands.catalogueCheck->footer(help::kCatalogueCheck);
}

Commands addCommands(CLI::App& app, RawArguments& raw) {
    Commands commands;
    commands.analyze = addAnalyze(app, raw);
    commands.analyzeAll = addAnalyzeAll(app, raw);
    commands.show = addShow(app, raw);
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
                       : "expected a command: analyze, analyze-all, show or catalogue";
    }
    return surplus[0] + ": no such command or option";
}

/// What the parser cannot see: values of settings, and options that exclude each other by sense.
ParsedArguments checked(RawArguments raw, Command command) {
    Arguments& arguments = raw.arguments;
    arguments.command = command;
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
    if (arguments.workingCopies && arguments.outputs.unassigned) {
        return refused("--unassigned " + *arguments.outputs.unassigned +
                       ": needs direct reading, not --working-copies");
    }
    OutputPaths& outputs = arguments.outputs;
    const bool exports =
        command == Command::analyze || command == Command::analyzeAll || command == Command::show;
    if (exports && !outputs.save && !outputs.report && !outputs.summary && !outputs.json) {
        outputs.summary = kStandardOutput;
    }
    return {std::move(raw.arguments), Outcome::success, {}};
}

} // namespace

ParsedArguments parseArguments(int argc, const char* const* argv) {
    RawArguments raw;
    CLI::App app("Counts and calls target sequences in paired-end sequencing reads.", "vexta");
    app.set_version_flag("--version", versionLine());
    app.require_subcommand(1);
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.footer(std::string(help::kProgram) + help::kExitStatus);
    const Commands commands = addCommands(app, raw);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return {std::nullopt, Outcome::success, app.help()};
    } catch (const CLI::CallForVersion& version) {
        return {std::nullopt, Outcome::success, std::string(version.what()) + "\n"};
    } catch (const CLI::ParseError& error) {
        return refused(reasonOf(app, error));
    }
    return checked(std::move(raw), chosenCommand(commands));
}

} // namespace cli
