// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/run_request.h"

#include <utility>
#include <vector>

#include "catalogue/definition_file.h"
#include "platform/files.h"
#include "platform/resources.h"
#include "simulator/panel_table.h"
#include "simulator/sample_run.h"
#include "simulator/truth_table.h"

namespace simulator {

namespace {

platform::Result<std::vector<Molecule>> loadMolecules(const RunRequest& request) {
    std::string path = request.cataloguePath;
    if (path.empty()) {
        path = platform::resourcePath("ReferenceNucleotideSequence", "txt").value_or("");
    }
    const auto loaded = catalogue::loadDefinitionFile(path);
    if (!loaded) {
        return loaded.error();
    }
    if (!loaded.value().faults.empty()) {
        return platform::Error{loaded.value().faults.front().message};
    }
    return makeMolecules(loaded.value(), request.chemistry, request.seed);
}

platform::Result<std::string> readWhole(const std::string& path) {
    auto stream = platform::openRegularFile(path);
    if (!stream) {
        return stream.error();
    }
    std::string text;
    platform::ByteStream& bytes = *stream.value();
    while (bytes.available() > 0) {
        text.append(bytes.next(), bytes.available());
        bytes.skip(bytes.available());
    }
    if (!bytes.status()) {
        return platform::Error{path + ": " + bytes.status().error().message};
    }
    return text;
}

} // namespace

platform::Status makeRun(const RunRequest& request) {
    if (request.chemistry.fragmentBases() < request.chemistry.readLength) {
        return platform::Error{"a fragment must be at least as long as a read"};
    }
    const auto molecules = loadMolecules(request);
    if (!molecules) {
        return molecules.error();
    }
    const auto text = readWhole(request.panelPath);
    if (!text) {
        return text.error();
    }
    const auto samples = parsePanelTable(text.value(), request.panelPath, request.depth);
    if (!samples) {
        return samples.error();
    }
    for (const Sample& sample : samples.value()) {
        if (platform::Status known = checkSample(molecules.value(), sample); !known) {
            return known;
        }
    }
    std::vector<SampleTruth> truths;
    for (const Sample& sample : samples.value()) {
        auto truth = writeSample(molecules.value(), sample, request.chemistry, request.seed,
                                 request.directory);
        if (!truth) {
            return truth.error();
        }
        truths.push_back(std::move(truth).value());
    }
    const std::string truthPath =
        request.truthPath.empty() ? request.directory + "/truth.tsv" : request.truthPath;
    return platform::writeFileAtomically(truthPath, truthTable(samples.value(), truths));
}

} // namespace simulator
