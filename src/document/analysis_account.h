// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "document/folder_account.h"
#include "run/run_account.h"
#include "run/summary_for_each_patient.h"
#include "settings/settings_table.h"

namespace document {

/// One patient of an analysis, whatever became of it.
struct PatientAccount {
    enum class Outcome {
        skipped,   ///< its turn never came
        analysed,  ///< it has a result
        failed,    ///< it has none; `lines` tell why
        cancelled, ///< the user stopped the batch before its turn
    };

    std::string sample; ///< "" where the file name tells none
    std::string number;
    std::string file1; ///< without directory
    std::string file2;
    /// Of the lanes behind the first one, read 1 and read 2, without directory.
    std::vector<std::pair<std::string, std::string>> furtherFiles;
    Outcome outcome = Outcome::skipped;
    /// What the error log says of it, without line ends.
    std::vector<std::string> lines;
    run::RunAccount run;
    /// The result; null unless analysed.
    std::shared_ptr<const run::SummaryForEachPatient> summary;
};

/// What an analysis met, beside its results: for records, status tables and notices. Empty before
/// the first analysis of a document, and for a reopened result.
struct AnalysisAccount {
    std::string directory;
    /// Every patient that was planned, in the order of the batch.
    std::vector<PatientAccount> patients;
    /// Files of reads in the directory that no patient of the batch reads; of a single run, those
    /// of the same sample.
    std::vector<UnusedReads> unusedReads;
    /// What is doubtful of the analysis as a whole.
    std::vector<run::Warning> warnings;
    /// The definition file with which the analysis began: its path, digest and mutations.
    std::string cataloguePath;
    std::string catalogueDigest;
    std::size_t catalogueMutations = 0;
    /// The settings with which it began.
    std::vector<settings::SettingInForce> settings;
    bool catalogueChanged = false;
    bool settingsChanged = false;
};

/// What to warn of in a folder before anything runs: reads that may be mixed up, files of reads
/// that are not used.
std::vector<run::Warning> warningsOf(const std::vector<UnusedReads>& unused,
                                     const std::vector<DoubtfulPair>& doubtful);

/// "A.fastq and B.fastq are both read 1 of sample 3", without a full stop.
std::string textOf(const DoubtfulPair& pair);

/// The word of an outcome in records and status tables. Scripts rely on these words.
const char* wordOf(PatientAccount::Outcome outcome);

} // namespace document
