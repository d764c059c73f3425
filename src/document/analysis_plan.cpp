// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// An analysis runs patients, and there are several ways to say who they are: a directory's names by
// the one rule that needs no options, by wider rules, two files, a table. All of them end in a
// plan, so that what follows does not care. Tested by analysis_plan_test.cpp.
#include "document/analysis_plan.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>

#include <sys/stat.h>

#include "document/reads_name.h"
#include "platform/files.h"

namespace document {
namespace {

/// Whether both paths lead to one directory.
bool isOneDirectory(const std::string& one, const std::string& other) {
    std::error_code failure;
    return one == other || std::filesystem::equivalent(one, other, failure);
}

/// Both names of a slot, one of them only looked for.
ReadPairFiles filesOfSlot(const std::string& directory, const PatientSlot& slot) {
    return findMate(directory + "/" + (slot.file1.empty() ? slot.file2 : slot.file1));
}

} // namespace

std::string file1Of(const PlannedPatient& patient) {
    return platform::lastPathComponent(patient.lanes.front().read1Path);
}

std::string file2Of(const PlannedPatient& patient) {
    return platform::lastPathComponent(patient.lanes.front().read2Path);
}

PlannedPatient patientOfPair(const std::string& directory, const std::string& file1,
                             const std::string& file2) {
    const std::string absolute = platform::absolutePath(directory);
    PlannedPatient patient;
    patient.sample = sampleNameOf(file1);
    patient.number = patientNumberOf(file1).value_or(std::string());
    patient.directory = directory;
    patient.lanes = {{absolute + "/" + file1, absolute + "/" + file2}};
    return patient;
}

AnalysisPlan planOfSlots(const std::string& directory, const std::vector<std::string>& names,
                         const std::vector<PatientSlot>& slots) {
    AnalysisPlan plan;
    plan.directory = directory;
    for (const PatientSlot& slot : slots) {
        plan.patients.push_back(patientOfPair(directory, slot.file1, slot.file2));
    }
    plan.unusedReads = unusedReads(names, slots);
    plan.doubtful = doubtfulPairs(names, slots);
    return plan;
}

AnalysisPlan planOfPatient(PlannedPatient patient) {
    AnalysisPlan plan;
    plan.directory = patient.directory;
    const auto names = platform::namesInDirectory(platform::absolutePath(patient.directory));
    if (names) {
        const std::set<std::string> used = namesUsedIn(patient.directory, {patient});
        const auto others = otherReadsOfSample(
            names.value(), {file1Of(patient), file2Of(patient), patient.directory, true});
        std::copy_if(others.begin(), others.end(), std::back_inserter(plan.unusedReads),
                     [&used](const UnusedReads& other) { return used.count(other.name) == 0; });
    }
    plan.patients.push_back(std::move(patient));
    return plan;
}

std::string unpairedText(const std::string& patient) {
    return "Patient " + patient + " has unpaired fastq file.";
}

std::string withoutMateText(const std::string& name, const std::string& mate) {
    const std::string plain(withoutGz(mate));
    return name + ": found neither " + plain + " nor " + plain + ".gz";
}

PatientAccount unpairedPatient(const std::string& directory, const PatientSlot& slot) {
    const ReadPairFiles files = filesOfSlot(directory, slot);
    const std::string& there = slot.file1.empty() ? slot.file2 : slot.file1;
    const std::string read1 = files.file1.value_or(slot.file1);
    const std::string read2 = files.file2.value_or(slot.file2);
    PatientAccount patient;
    patient.sample = sampleNameOf(there);
    patient.number = patientNumberOf(there).value_or(std::string());
    patient.file1 = slot.file1;
    patient.file2 = slot.file2;
    patient.lines = {unpairedText(std::to_string(slot.sampleNumber)),
                     withoutMateText(there, slot.file1.empty() ? read1 : read2)};
    return patient;
}

void passOver(AnalysisPlan& plan, PatientAccount patient) {
    for (const std::string& line : patient.lines) {
        plan.warnings.push_back(
            {run::Warning::Kind::unusedReads, line.substr(0, line.find_last_not_of('.') + 1)});
    }
    plan.passedOver.push_back(std::move(patient));
}

AnalysisPlan planWithoutUnpaired(const std::string& directory,
                                 const std::vector<std::string>& names,
                                 const std::vector<PatientSlot>& slots) {
    std::vector<PatientSlot> pairs;
    std::copy_if(slots.begin(), slots.end(), std::back_inserter(pairs),
                 [](const auto& slot) { return !slot.file1.empty() && !slot.file2.empty(); });
    AnalysisPlan plan = planOfSlots(directory, names, pairs);
    for (const PatientSlot& slot : slots) {
        if (slot.file1.empty() || slot.file2.empty()) {
            passOver(plan, unpairedPatient(directory, slot));
        }
    }
    for (UnusedReads& file : plan.unusedReads) {
        for (const PatientAccount& patient : plan.passedOver) {
            if (file.name == patient.file1 || file.name == patient.file2) {
                file.reason = "its mate is missing";
                file.isTold = true;
            }
        }
    }
    return plan;
}

std::optional<FileKey> keyOfFile(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0 || facts.st_ino == 0) {
        return std::nullopt;
    }
    return FileKey{facts.st_dev, facts.st_ino};
}

std::vector<std::string> filesReadTwice(const AnalysisPlan& plan) {
    std::vector<std::string> lines;
    for (const PlannedPatient& patient : plan.patients) {
        if (patient.lanes.size() == 1) {
            continue;
        }
        std::map<FileKey, std::string> seen;
        for (const run::LaneFiles& lane : patient.lanes) {
            for (const std::string& path : {lane.read1Path, lane.read2Path}) {
                const auto key = keyOfFile(path);
                const auto known = key ? seen.emplace(*key, path).first : seen.end();
                if (key && known->second != path) {
                    lines.push_back(known->second + " and " + path + " are one file");
                }
            }
        }
    }
    return lines;
}

std::set<std::string> namesUsedIn(const std::string& directory,
                                  const std::vector<PlannedPatient>& patients) {
    const std::string absolute = platform::absolutePath(directory);
    std::map<std::string, bool> isThatDirectory;
    std::set<std::string> used;
    const auto add = [&](const std::string& path) {
        const std::string parent = platform::directoryOf(path);
        const auto known = isThatDirectory.find(parent);
        const bool isThere =
            known != isThatDirectory.end() ? known->second : isOneDirectory(parent, absolute);
        isThatDirectory[parent] = isThere;
        if (isThere) {
            used.insert(platform::lastPathComponent(path));
        }
    };
    for (const PlannedPatient& patient : patients) {
        for (const run::LaneFiles& lane : patient.lanes) {
            add(lane.read1Path);
            add(lane.read2Path);
        }
    }
    return used;
}

} // namespace document
