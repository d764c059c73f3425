// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What an analysis says of its folder before it reads anything. A folder may hold ten thousand
// files that nobody reads: the first of them are named, the others counted, and the record has all.
// Tested by analysis_account_test.cpp.
#include "document/analysis_account.h"

namespace document {
namespace {

using run::Warning;

/// As many as somebody reads.
constexpr std::size_t kFilesNamed = 20;

void addUnusedReads(std::vector<Warning>& warnings, const std::vector<UnusedReads>& unused) {
    std::size_t usual = 0;
    std::size_t unusual = 0;
    for (const UnusedReads& file : unused) {
        if (file.isUsual) {
            ++usual;
        } else if (!file.isTold && ++unusual <= kFilesNamed) {
            warnings.push_back({Warning::Kind::unusedReads,
                                file.name + ": these reads are not used: " + file.reason});
        }
    }
    if (unusual > kFilesNamed) {
        warnings.push_back({Warning::Kind::unusedReads, std::to_string(unusual - kFilesNamed) +
                                                            " more files of reads are not used"});
    }
    if (usual > 0) {
        warnings.push_back({Warning::Kind::usualFiles,
                            std::to_string(usual) +
                                (usual == 1 ? " file of index reads or of sample 0 is"
                                            : " files of index reads or of sample 0 are") +
                                " not used, as usual"});
    }
}

} // namespace

std::string textOf(const DoubtfulPair& pair) {
    const std::string sample = "sample " + std::to_string(pair.sampleNumber);
    switch (pair.kind) {
    case DoubtfulPair::Kind::sameRead:
        return pair.one + " and " + pair.other + " are both the same read of " + sample;
    case DoubtfulPair::Kind::noReads:
        return pair.one + " is taken for reads of " + sample +
               " by its name, although it ends as no file of reads does";
    case DoubtfulPair::Kind::namesDiffer:
        break;
    }
    return pair.one + " and " + pair.other + " make up " + sample +
           ", but their names differ in more than the read mark";
}

std::vector<Warning> warningsOf(const std::vector<UnusedReads>& unused,
                                const std::vector<DoubtfulPair>& doubtful) {
    std::vector<Warning> warnings;
    warnings.reserve(doubtful.size());
    for (const DoubtfulPair& pair : doubtful) {
        const bool areReads = pair.kind != DoubtfulPair::Kind::noReads;
        warnings.push_back(
            {Warning::Kind::doubtfulNames,
             textOf(pair) + (areReads ? ". Reads of two people may be mixed up" : "")});
    }
    addUnusedReads(warnings, unused);
    return warnings;
}

const char* wordOf(PatientAccount::Outcome outcome) {
    switch (outcome) {
    case PatientAccount::Outcome::analysed:
        return "analysed";
    case PatientAccount::Outcome::failed:
        return "failed";
    case PatientAccount::Outcome::cancelled:
        return "cancelled";
    case PatientAccount::Outcome::skipped:
        break;
    }
    return "skipped";
}

} // namespace document
