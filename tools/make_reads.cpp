// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// vexta-make-reads: made-up read pairs with a known truth, from a catalogue and a table of what
// each patient carries. The sample run, the end-to-end tests and the benchmarks are made with it.
#include <cstdint>
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "simulator/run_request.h"

namespace {

constexpr const char* kFooter = R"(The panel table is tab-separated and begins with the head line
    sample  number  format  domain  mutation  pairs  call
where format is plain or gz, domain and mutation name an entry of the catalogue (or background and -),
pairs is a number or a percentage of --depth, and call, which is only copied into the truth table, is
what the report has to show. See examples/panel.tsv.

Example:
    vexta-make-reads --seed 7 --error-rate 0.001 examples/panel.tsv examples/sample-run)";

void describe(CLI::App& app, simulator::RunRequest& request) {
    app.footer(kFooter);
    app.add_option("PANEL", request.panelPath, "Table of what each patient carries")->required();
    app.add_option("DIRECTORY", request.directory, "Existing directory for the FASTQ pairs")
        ->required()
        ->check(CLI::ExistingDirectory);
    app.add_option("--catalogue", request.cataloguePath,
                   "Definition file (the shipped one by default)");
    app.add_option("--truth", request.truthPath, "Truth table (DIRECTORY/truth.tsv by default)");
    app.add_option("--seed", request.seed, "The same seed gives the same reads")
        ->capture_default_str();
    app.add_option("--depth", request.depth, "Pairs that a percentage in the table refers to")
        ->check(CLI::Range(std::uint64_t{1}, std::uint64_t{1'000'000'000}))
        ->capture_default_str();
    app.add_option("--read-length", request.chemistry.readLength, "Bases of each read")
        ->check(CLI::Range(30, 500))
        ->capture_default_str();
    app.add_option("--fragment", request.chemistry.fragmentLength,
                   "Bases of a fragment (a fifth longer than a read by default)")
        ->check(CLI::Range(30, 2000));
    app.add_option("--jitter", request.chemistry.jitter,
                   "Fragments begin up to this many bases before or after their usual place")
        ->check(CLI::Range(0, 500))
        ->capture_default_str();
    app.add_option("--error-rate", request.chemistry.errorRate, "Substitutions per base")
        ->check(CLI::Range(0.0, 0.5))
        ->capture_default_str();
}

int report(const char* message) {
    std::cerr << "vexta-make-reads: " << message << '\n';
    return 1;
}

int runProgram(int argc, const char* const* argv) {
    CLI::App app("Makes FASTQ pairs of made-up patients, and a table of the truth about them.");
    simulator::RunRequest request;
    describe(app, request);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    const platform::Status made = simulator::makeRun(request);
    return made ? 0 : report(made.error().message.c_str());
}

} // namespace

int main(int argc, char** argv) {
    try {
        return runProgram(argc, argv);
    } catch (const std::exception& failure) {
        return report(failure.what());
    }
}
