// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The program `vexta`, from its arguments to its exit status: set the process up, read the
// arguments, leave signals to a thread, run the command. Signals are blocked before any thread
// starts, since threads inherit the mask; a thread that did not would take the signal. Tested from
// outside, by the tests named *_program_test.cpp.
#include <csignal>
#include <exception>
#include <initializer_list>
#include <iostream>
#include <ostream>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/interrupt.h"
#include "cli/terminal_text.h"

namespace {

using cli::Outcome;

/// Makes harmless what a caller may have left undone. A standard stream that was closed is held by
/// a descriptor on which every use fails, so that no file of ours can take its number. And a reader
/// of standard output that went away is an error of that output, not the silent end of the program.
void setUpProcess() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free number is the one given out, and those below are taken.
        if (fcntl(descriptor, F_GETFD) < 0) {
            open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
    // A reader that went away and a file that may grow no more are errors of a write.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

/// An analysis takes the interrupt, too. Any other command is ended by it as every program is: a
/// shell's loop over files then stops, which it would not at an exit status.
std::vector<int> takenSignals(cli::Command command) {
    const bool isAnalysis = command == cli::Command::analyze || command == cli::Command::analyzeAll;
    return isAnalysis ? std::vector<int>{SIGTERM, SIGHUP, SIGINT}
                      : std::vector<int>{SIGTERM, SIGHUP};
}

Outcome runCommand(const cli::Arguments& arguments, const cli::Streams& streams) {
    switch (arguments.command) {
    case cli::Command::analyze:
        return cli::analyze(arguments, streams);
    case cli::Command::analyzeAll:
        return cli::analyzeAll(arguments, streams);
    case cli::Command::show:
        return cli::show(arguments, streams);
    case cli::Command::digest:
        return cli::digest(arguments, streams);
    case cli::Command::catalogueList:
        return cli::listCatalogue(arguments, streams);
    case cli::Command::catalogueCheck:
        return cli::checkCatalogue(arguments, streams);
    }
    return Outcome::unusable;
}

Outcome answer(const cli::ParsedArguments& parsed, const cli::Streams& streams) {
    auto& stream = parsed.outcome == Outcome::success ? streams.out : streams.err;
    stream << cli::showable(parsed.message + (parsed.isVersion ? cli::catalogueLine() : ""), "\t\n")
           << std::flush;
    return stream ? parsed.outcome : Outcome::failed;
}

Outcome runProgram(int argc, const char* const* argv) {
    const bool outIsTerminal = isatty(STDOUT_FILENO) == 1;
    cli::TerminalBuffer shown(*std::cout.rdbuf());
    std::ostream terminal(&shown);
    const cli::Streams streams{outIsTerminal ? terminal : std::cout, std::cerr,
                               isatty(STDERR_FILENO) == 1, outIsTerminal};
    const cli::ParsedArguments parsed = cli::parseArguments(argc, argv);
    if (!parsed.arguments) {
        return answer(parsed, streams);
    }
    const cli::SignalBlock signalBlock(takenSignals(parsed.arguments->command));
    const cli::TerminationWatch watch({SIGTERM, SIGHUP});
    return runCommand(*parsed.arguments, streams);
}

} // namespace

int main(int argc, char** argv) {
    setUpProcess();
    std::ios::sync_with_stdio(false);
    try {
        return static_cast<int>(runProgram(argc, argv));
    } catch (const std::exception& failure) {
        std::cerr << "vexta: " << cli::showable(failure.what(), "\t") << '\n';
        return static_cast<int>(Outcome::failed);
    }
}
