// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/catalogue_commands.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "calling/result_calc.h"
#include "catalogue/catalogue_check.h"
#include "catalogue/definition_file.h"
#include "cli/definition_choice.h"
#include "cli/outputs.h"
#include "cli/run_settings.h"
#include "settings/settings_table.h"

namespace cli {
namespace {

using catalogue::Catalogue;
using catalogue::Finding;

struct LoadedCatalogue {
    std::string path;
    Catalogue catalogue;
};

std::optional<LoadedCatalogue> load(const Arguments& arguments, Console& console) {
    const auto path = chooseDefinitionFile(arguments);
    if (!path) {
        console.error(path.error().message);
        return std::nullopt;
    }
    if (!path.value()) {
        console.error(std::string("the catalogue that ships, ") + kShippedDefinition +
                      ", is missing");
        return std::nullopt;
    }
    LoadedCatalogue loaded{*path.value(), catalogue::loadDefinitionFile(*path.value())};
    if (!loaded.catalogue.opened) {
        console.error(loaded.catalogue.openError);
        return std::nullopt;
    }
    return loaded;
}

/// The shortest text that reads back as the same number, in every locale.
std::string numberText(double number) {
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

std::string tableRow(const catalogue::MutDomain& domain, const catalogue::Mutation& mutation) {
    using archive::stringOrEmpty;
    return stringOrEmpty(domain.name) + '\t' + stringOrEmpty(domain.type) + '\t' +
           stringOrEmpty(mutation.name) + '\t' + stringOrEmpty(mutation.strandRequiredToRead) +
           '\t' + std::to_string(archive::orEmpty(mutation.coreSeq).size()) + '\t' +
           numberText(mutation.referenceFrequencyOfTheMutantReads) + '\t' +
           numberText(mutation.allowableFalsePositiveRate) + '\t' +
           numberText(mutation.allowableFalseNegativeRate) + '\t' +
           std::to_string(mutation.minimumRequiredNumberOfInformativeReads) + '\n';
}

std::string table(const Catalogue& catalogue) {
    std::string text = "Domain\tType\tMutation\tStrand\tCore length\tReference frequency\t"
                       "False-positive rate\tFalse-negative rate\tInformative reads\n";
    for (const auto& domain : archive::orEmpty(catalogue.domains)) {
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            text += tableRow(*domain, *mutation);
        }
    }
    return text;
}

/// The read threshold of a run with these settings. A check stores nothing, so what a run would
/// store at its start or as a repair goes into a copy.
std::int64_t readThreshold(const SettingValues& settings) {
    settings::MemorySettingsStore values;
    for (const auto& [key, value] : settings) {
        values.setValue(key, value);
    }
    settings::key::writeFirstRunValues(values);
    return calling::ResultCalc::readThreshold(values);
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string findingLine(const std::string& path, const Finding& finding) {
    const std::string place = finding.line == 0 ? path : path + ":" + std::to_string(finding.line);
    const bool isError = finding.severity == Finding::Severity::error;
    return place + (isError ? ": error: " : ": warning: ") + finding.message + "\n";
}

Outcome print(const std::string& text, const Streams& streams, Console& console) {
    const auto status = writeStreamed(
        {"catalogue", kStandardOutput, [&text](const TextSink& sink) { return sink(text); }},
        streams.out);
    if (!status) {
        console.error(status.error().message);
    }
    return status ? Outcome::success : Outcome::failed;
}

} // namespace

Outcome listCatalogue(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const auto loaded = load(arguments, console);
    return loaded ? print(table(loaded->catalogue), streams, console) : Outcome::unusable;
}

Outcome checkCatalogue(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const auto loaded = load(arguments, console);
    if (!loaded) {
        return Outcome::unusable;
    }
    const auto settings = readSettings(arguments, console);
    if (!settings) {
        console.error(settings.error().message);
        return Outcome::unusable;
    }
    const std::int64_t threshold = readThreshold(settings.value());
    const auto findings = catalogue::checkCatalogue(
        loaded->catalogue, [threshold](const catalogue::Mutation& mutation) {
            return calling::ResultCalc::callsPositiveWithoutMutantReads(mutation, threshold);
        });
    std::string text;
    std::size_t errors = 0;
    for (const Finding& finding : findings) {
        text += findingLine(loaded->path, finding);
        errors += finding.severity == Finding::Severity::error ? 1 : 0;
    }
    text += loaded->path + ": " + counted(errors, "error") + ", " +
            counted(findings.size() - errors, "warning") + "\n";
    const Outcome printed = print(text, streams, console);
    return errors > 0 ? Outcome::failed : printed;
}

} // namespace cli
