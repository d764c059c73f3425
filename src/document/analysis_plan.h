// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "document/analysis_account.h"
#include "document/folder_account.h"
#include "document/input_discovery.h"
#include "run/run_account.h"
#include "run/run_files.h"

namespace document {

/// A patient who is to be run: who it is, and which files hold the reads.
struct PlannedPatient {
    std::string sample; ///< "" where nothing tells it
    std::string number; ///< the patient number of the results
    /// Of the first read-1 file, as the record names it.
    std::string directory;
    /// Full paths; at least one lane. Lanes are read one after the other.
    std::vector<run::LaneFiles> lanes;
    /// Whether the rule of names gave the number.
    bool numberIsFromName = true;
};

/// Names without directory, of the first lane.
std::string file1Of(const PlannedPatient& patient);
std::string file2Of(const PlannedPatient& patient);

/// What an analysis is to run, and what it is to say of what it does not run.
struct AnalysisPlan {
    std::string directory;
    /// In the order of the run.
    std::vector<PlannedPatient> patients;
    /// Patients that are known and not run; their lines tell why.
    std::vector<PatientAccount> passedOver;
    std::vector<UnusedReads> unusedReads;
    std::vector<DoubtfulPair> doubtful;
    std::vector<run::Warning> warnings;
};

/// A plan, or the lines that tell why nothing may run.
struct Planned {
    AnalysisPlan plan;
    std::vector<std::string> faults;
};

/// A patient of more lanes than this is a slip; the files of all lanes are open at once.
inline constexpr std::size_t kMostLanes = 200;

/// The patient of a pair in a directory, with the number that the rule of names gives it; "" where
/// it gives none.
PlannedPatient patientOfPair(const std::string& directory, const std::string& file1,
                             const std::string& file2);

/// The plan of a directory's pairs, by the rule of planBatch(). `names` as listed. REQUIRES: each
/// slot has both files.
AnalysisPlan planOfSlots(const std::string& directory, const std::vector<std::string>& names,
                         const std::vector<PatientSlot>& slots);

/// The plan of one patient; tells of files of the same sample beside its own.
AnalysisPlan planOfPatient(PlannedPatient patient);

/// "Patient 3 has unpaired fastq file.": scripts rely on these words.
std::string unpairedText(const std::string& patient);

/// The patient as one that is not run since only one of its two files is there: the line that says
/// so, and one that names the file and the names that were looked for.
PatientAccount unpairedPatient(const std::string& directory, const PatientSlot& slot);

/// Takes the pairs of the slots into the plan and passes over the others, with a warning each.
AnalysisPlan planWithoutUnpaired(const std::string& directory,
                                 const std::vector<std::string>& names,
                                 const std::vector<PatientSlot>& slots);

/// Passes over the patient; its lines become warnings.
void passOver(AnalysisPlan& plan, PatientAccount patient);

/// "A.fastq: found neither B.fastq nor B.fastq.gz", of a file and the name of its mate.
std::string withoutMateText(const std::string& name, const std::string& mate);

/// What tells a file from every other one, whatever its path; nullopt where nothing can.
using FileKey = std::pair<std::uint64_t, std::uint64_t>;
std::optional<FileKey> keyOfFile(const std::string& path);

/// "A and B are one file", for each file that a patient of several lanes would read twice: links
/// give one file two names.
std::vector<std::string> filesReadTwice(const AnalysisPlan& plan);

/// The names of files in `directory` that the patients read.
std::set<std::string> namesUsedIn(const std::string& directory,
                                  const std::vector<PlannedPatient>& patients);

} // namespace document
