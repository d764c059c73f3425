// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a laboratory asks of a definition file before it trusts it: every mutation as a table, and
// every finding as a line in the form of compilers, which editors jump to. Both commands load the
// file with the loader of a run.
//
// The catalogue knows nothing of calls. So the checker's one question about them, whether a
// mutation could be positive without a mutant read, is a function that comes from calling, with the
// read threshold that a run would use. Tested by catalogue_program_test.cpp.
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "catalogue/catalogue_check.h"
#include "catalogue/definition_file.h"
#include "cli/commands.h"
#include "cli/findings_text.h"
#include "cli/inputs.h"
#include "cli/outputs.h"
#include "cli/run_settings.h"
#include "settings/settings_table.h"

namespace cli {
namespace {

using catalogue::Catalogue;

struct LoadedCatalogue {
    std::string path;
    Catalogue catalogue;
};

platform::Result<LoadedCatalogue> load(const Arguments& arguments) {
    const auto path = chooseDefinitionFile(arguments);
    if (!path) {
        return path.error();
    }
    if (!path.value()) {
        return platform::Error{std::string("the catalogue that ships, ") + kShippedDefinition +
                               ", is missing"};
    }
    auto loaded = catalogue::loadDefinitionFile(*path.value());
    if (!loaded) {
        return loaded.error();
    }
    return LoadedCatalogue{*path.value(), std::move(loaded).value()};
}

Outcome refuseCatalogue(Console& console, const platform::Error& error) {
    console.error(error.message);
    return Outcome::unusable;
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

/// What the check asks the calling, with the answers of a run.
catalogue::CheckOptions checkOptions(std::int64_t readThreshold, std::size_t readLength) {
    catalogue::CheckOptions options;
    options.positiveWithoutMutantReads = [readThreshold](const catalogue::Mutation& mutation) {
        return calling::ResultCalc::callsPositiveWithoutMutantReads(mutation, readThreshold);
    };
    options.readsForNegative = calling::ResultCalc::readsForNegative;
    options.readThreshold = readThreshold;
    options.frequencyOfTrulyMutantReads = calling::kFrequencyOfTrulyMutantReads;
    options.readLength = readLength;
    return options;
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

std::string catalogueLine() {
    Arguments arguments;
    takeCatalogueFromEnvironment(arguments);
    const auto path = chooseDefinitionFile(arguments);
    const auto catalogue = path && path.value() ? catalogue::loadDefinitionFile(*path.value())
                                                : platform::Error{"it is missing"};
    const std::string name =
        "catalogue " + (arguments.cataloguePath ? *arguments.cataloguePath : kShippedDefinition);
    return catalogue ? name + ", sha256 " + catalogue.value().digest + "\n"
                     : name + ": " + catalogue.error().message + "\n";
}

Outcome listCatalogue(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const auto loaded = load(arguments);
    return loaded ? print(table(loaded.value().catalogue), streams, console)
                  : refuseCatalogue(console, loaded.error());
}

Outcome checkCatalogue(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const auto loaded = load(arguments);
    if (!loaded) {
        return refuseCatalogue(console, loaded.error());
    }
    const auto settings = readSettings(arguments, console);
    if (!settings) {
        return refuseCatalogue(console, settings.error());
    }
    const auto& [path, catalogue] = loaded.value();
    const auto findings = catalogue::checkCatalogue(
        catalogue, checkOptions(readThreshold(settings.value()), arguments.check.readLength));
    const std::string text = arguments.check.json
                                 ? findingsAsJson(path, findings)
                                 : findingsAsText(path, findings, arguments.check.explain);
    const Outcome printed = print(text, streams, console);
    return errorCount(findings) > 0 ? Outcome::failed : printed;
}

} // namespace cli
