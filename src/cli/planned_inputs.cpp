// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Inputs whose names are not those of one sequencer's first lane: two files by any names, a table,
// all lanes, names without number. The options choose who makes the plan; every file of it is
// opened once, so that a missing one is told before anything runs. Tested by
// named_inputs_program_test.cpp.
#include "cli/planned_inputs.h"

#include <optional>
#include <utility>

#include "cli/inputs.h"
#include "cli/outputs.h"
#include "document/name_plan.h"
#include "document/reads_name.h"
#include "document/sample_sheet.h"
#include "platform/files.h"

namespace cli {
namespace {

using document::Planned;
using document::PlannedPatient;

/// "P7" of "P7_S7_L001_R1_001.fastq", and "Anna_R1" of "Anna_R1.fq.gz".
std::string sampleOfName(const std::string& name) {
    const std::string sample = document::sampleNameOf(name);
    return sample.empty() ? name.substr(0, name.find('.')) : sample;
}

/// The number that the rule of names gives, where it is one.
std::optional<std::string> numberOfName(const std::string& name) {
    const auto number = document::patientNumberOf(name);
    return number && document::isPatientNumber(*number) ? number : std::nullopt;
}

void checkFile(Planned& planned, const std::string& option, const std::string& path) {
    if (const auto readable = checkReadsFile(path); !readable) {
        planned.faults.push_back(option + readable.error().message);
    }
}

Planned planOfNamedFiles(const Arguments& arguments) {
    Planned planned;
    const std::string read1 = normalPath(*arguments.read1Path);
    const std::string read2 = normalPath(*arguments.read2Path);
    const std::string name = platform::lastPathComponent(read1);
    checkFile(planned, "--r1: ", read1);
    checkFile(planned, "--r2: ", read2);
    if (planned.faults.empty() && isSamePlace(read1, read2)) {
        planned.faults.push_back("--r1 and --r2 are one file, " + read1);
    }
    const auto number = arguments.number ? arguments.number : numberOfName(name);
    if (!number) {
        planned.faults.push_back(name +
                                 ": the name tells no patient number; give it with --number N");
    }
    if (planned.faults.empty()) {
        PlannedPatient patient;
        patient.sample = arguments.sample.value_or(sampleOfName(name));
        patient.number = *number;
        patient.numberIsFromName = !arguments.number;
        patient.directory = platform::directoryOf(read1);
        patient.lanes = {{read1, read2}};
        planned.plan = document::planOfPatient(std::move(patient));
    }
    return planned;
}

Planned planOfLanes(const Arguments& arguments) {
    const std::string path = normalPath(arguments.input);
    Planned planned;
    checkFile(planned, "", path);
    if (!planned.faults.empty()) {
        return planned;
    }
    const auto pair = document::findMate(path);
    if (!pair.paired) {
        planned.faults = {document::kNotPaired, whyUnpaired(path, pair)};
        return planned;
    }
    const auto names = platform::namesInDirectory(pair.directory);
    if (!names) {
        planned.faults = {names.error().message};
        return planned;
    }
    return document::planOfEveryLane(pair, names.value());
}

void refuseFilesReadTwice(Planned& planned) {
    for (std::string& line : document::filesReadTwice(planned.plan)) {
        planned.faults.push_back(std::move(line));
    }
}

Planned planOfDirectory(const Arguments& arguments) {
    const std::string directory = normalPath(arguments.input);
    const auto names = platform::namesInDirectory(directory);
    if (!names) {
        return {{}, {names.error().message}};
    }
    if (arguments.anyName || arguments.everyLane) {
        Planned planned =
            document::planByNames(directory, names.value(),
                                  {arguments.anyName, arguments.everyLane, arguments.skipUnpaired,
                                   arguments.allowSharedNumbers});
        refuseFilesReadTwice(planned);
        return planned;
    }
    const auto batch = document::planBatch(names.value());
    Planned planned;
    if (!arguments.allowSharedNumbers) {
        planned.faults = sharedNumbers(names.value(), batch);
    }
    planned.plan = document::planWithoutUnpaired(directory, names.value(), batch);
    return planned;
}

void checkFiles(Planned& planned) {
    for (const PlannedPatient& patient : planned.plan.patients) {
        for (const run::LaneFiles& lane : patient.lanes) {
            checkFile(planned, "", lane.read1Path);
            checkFile(planned, "", lane.read2Path);
        }
    }
}

} // namespace

bool planNeeded(const Arguments& arguments) {
    return arguments.read1Path || arguments.sampleSheet || arguments.everyLane ||
           arguments.anyName || arguments.skipUnpaired;
}

Planned planPatient(const Arguments& arguments) {
    if (arguments.read1Path) {
        return planOfNamedFiles(arguments);
    }
    Planned planned = planOfLanes(arguments);
    if (planned.faults.empty()) {
        checkFiles(planned);
        refuseFilesReadTwice(planned);
    }
    return planned;
}

Planned planPatients(const Arguments& arguments) {
    if (!arguments.sampleSheet) {
        return planOfDirectory(arguments);
    }
    const std::optional<std::string> directory =
        arguments.input.empty() ? std::nullopt : std::optional(normalPath(arguments.input));
    if (directory) {
        if (const auto names = platform::namesInDirectory(*directory); !names) {
            return {{}, {names.error().message}};
        }
    }
    return document::planOfSampleSheet(normalPath(*arguments.sampleSheet), directory);
}

std::vector<std::string> sharedNumbers(const std::vector<std::string>& names,
                                       const std::vector<document::PatientSlot>& batch) {
    std::vector<std::string> lines;
    constexpr std::size_t kMostNamed = 20;
    const auto doubtful = document::doubtfulPairs(names, batch);
    for (std::size_t i = 0; i < doubtful.size() && i < kMostNamed; ++i) {
        lines.push_back(textOf(doubtful[i]));
    }
    if (doubtful.size() > kMostNamed) {
        lines.push_back("and " + std::to_string(doubtful.size() - kMostNamed) + " more");
    }
    if (!lines.empty()) {
        lines.emplace_back(
            "reads may be mixed up; move the files that do not belong here elsewhere, or go on "
            "all the same with --allow-shared-numbers");
    }
    return lines;
}

std::vector<std::string> unpairedFiles(const std::string& directory,
                                       const std::vector<document::PatientSlot>& batch) {
    std::vector<std::string> lines;
    for (const document::PatientSlot& slot : batch) {
        if (slot.file1.empty() || slot.file2.empty()) {
            lines.push_back(document::unpairedPatient(directory, slot).lines.back());
        }
    }
    return lines;
}

} // namespace cli
