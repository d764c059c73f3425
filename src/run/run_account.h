// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "calling/assessability.h"
#include "reads/input_account.h"
#include "run/pair_matching.h"
#include "run/second_look.h"
#include "settings/settings_table.h"

namespace run {

/// What makes a result doubtful although nothing failed.
struct Warning {
    enum class Kind {
        earlyEnd,           ///< reads stand behind the place where reading ended
        zeroBytes,          ///< a file of text holds zero bytes
        surplusRecords,     ///< one file holds more records than the other
        cutRecord,          ///< the last record of a file is not whole
        longHeaders,        ///< headers are longer than a line may be
        sameReads,          ///< read 1 and read 2 are one file
        emptyFile,          ///< a file holds no record
        headersOfOtherRead, ///< the names in a file belong to the other read
        readMarks,          ///< names end in /1 and /2
        fewMapped,          ///< nearly no pair supports any mutation
        nothingMapped,      ///< no pair supports any mutation
        elsewhere,          ///< a core was found where the rules do not look for it
        notAssessable,      ///< every target of a kind had too few reads
        unusedReads,        ///< files of reads that were not read
        usualFiles,         ///< files that no batch reads: index reads, reads of sample 0
        doubtfulNames,      ///< reads of two samples may be mixed up
        doubtfulNumber,     ///< the patient number may not be the sample's
        changedCatalogue,   ///< not the catalogue with which the batch began
        changedSettings,    ///< not the settings with which the batch began
        padding,            ///< zero bytes beside the members of a .gz
    };
    Kind kind = Kind::earlyEnd;
    std::string text; ///< a finished sentence, without a line end
};

/// The kind's name in records: "early-end". Scripts rely on these names: never change one.
std::string_view nameOf(Warning::Kind kind);

/// The line of an error log that tells it, with its line end.
std::string logLine(const Warning& warning);

/// Whether it makes a strict command fail: that part of the reads is not in the counts, or that the
/// counts are those of nothing.
bool isSevere(Warning::Kind kind);

/// What a run leaves beside its counts and calls.
struct RunAccount {
    reads::InputAccount inputs;
    std::vector<Warning> warnings;
    calling::Assessability assessability;
    SecondLook secondLook;
    /// Of the definition file, as 64 hexadecimal digits; empty: there was none.
    std::string catalogueDigest;
    /// As the calls read them; empty where nothing was called.
    std::vector<settings::SettingInForce> settings;
    double seconds = 0.0;
};

/// What the account of the inputs says. `name1` and `name2` are the files' names for people.
std::vector<Warning> warningsOf(const reads::InputAccount& inputs, const std::string& name1,
                                const std::string& name2);

/// What the counts say, once the patient is called.
std::vector<Warning> warningsOf(const ReadCounters& counters,
                                const calling::Assessability& assessability,
                                const std::string& name1);

/// What the second look found: the places with the most pairs, a sentence each.
std::vector<Warning> warningsOf(const SecondLook& look, const std::string& name1);

} // namespace run
