// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of reading and calling never fail on a torn copy, on two files exchanged, or on a
// sample without reads: they give counts, and these look like those of a healthy patient. What can
// be known about such runs is said here, a sentence each, beside results that it never changes.
// Tested by run_account_test.cpp.
#include "run/run_account.h"

#include <array>
#include <set>

namespace run {
namespace {

using Kind = Warning::Kind;

constexpr std::array<std::string_view, 20> kNames = {
    "early-end",       "zero-bytes",        "surplus-records",  "cut-record",
    "long-headers",    "same-reads",        "empty-file",       "headers-of-other-read",
    "read-marks",      "few-mapped",        "nothing-mapped",   "core-elsewhere",
    "not-assessable",  "unused-reads",      "usual-files",      "doubtful-names",
    "doubtful-number", "changed-catalogue", "changed-settings", "padding"};

/// A target is named once for each place, and a panel may be the other way round as a whole.
constexpr std::size_t kPlacesNamed = 8;

std::string counted(std::int64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

void addFileWarnings(std::vector<Warning>& warnings, const reads::FileAccount& file,
                     const std::string& name) {
    if (file.endedEarly()) {
        warnings.push_back(
            {Kind::earlyEnd,
             name + ": reading ended before record " + std::to_string(file.records + 1) + ", at " +
                 (file.end == reads::ReadingEnd::zeroByte ? "a zero byte" : "an empty line") +
                 "; at least the " + std::to_string(file.rest.bytes) +
                 " bytes behind it were not read. The file may be damaged"});
    }
    if (file.lastRecordIsCut) {
        warnings.push_back({Kind::cutRecord,
                            name + ": the last record's quality is shorter than its sequence. The "
                                   "file may be cut short"});
    }
    if (file.longHeaders > 0) {
        warnings.push_back(
            {Kind::longHeaders,
             name + ": " + counted(file.longHeaders, "header is", "headers are") + " longer than " +
                 std::to_string(reads::kLineLimit - 1) +
                 " characters. What stands behind them may be missing from the counts"});
    }
    if (file.zeroBytes > 0) {
        warnings.push_back({Kind::zeroBytes, name + ": holds " +
                                                 counted(static_cast<std::int64_t>(file.zeroBytes),
                                                         "zero byte", "zero bytes") +
                                                 ", which no text holds. The copy may be torn"});
    }
    if (file.isEmpty()) {
        warnings.push_back({Kind::emptyFile, name + ": holds no reads"});
    }
}

void addSurplusWarning(std::vector<Warning>& warnings, const reads::FileAccount& file,
                       const std::string& name, const std::string& otherName) {
    // Nothing but surplus is said by the other file's being empty.
    if (file.surplusRecords > 0) {
        warnings.push_back(
            {Kind::surplusRecords, name + ": " +
                                       counted(file.surplusRecords, "record has", "records have") +
                                       " none of " + otherName + " beside it and " +
                                       (file.surplusRecords == 1 ? "is" : "are") +
                                       " in no count. One of the files may be cut short"});
    }
}

void addHeaderWarnings(std::vector<Warning>& warnings, const reads::InputAccount& inputs,
                       const std::string& name1, const std::string& name2) {
    const bool wrong1 = inputs.read1.headers.read2Headers() > 0;
    const bool wrong2 = inputs.read2.headers.read1Headers() > 0;
    if (wrong1 && wrong2) {
        warnings.push_back(
            {Kind::headersOfOtherRead, "Read names in " + name1 + " say read 2 and those in " +
                                           name2 + " say read 1: the files seem to be exchanged"});
    } else if (wrong1) {
        warnings.push_back(
            {Kind::headersOfOtherRead, name1 + ": read names in this file of read 1 say read 2"});
    } else if (wrong2) {
        warnings.push_back(
            {Kind::headersOfOtherRead, name2 + ": read names in this file of read 2 say read 1"});
    }
}

} // namespace

std::string_view nameOf(Warning::Kind kind) {
    return kNames[static_cast<std::size_t>(kind)];
}

std::string logLine(const Warning& warning) {
    return warning.text + ".\n";
}

bool isSevere(Warning::Kind kind) {
    switch (kind) {
    case Kind::earlyEnd:
    case Kind::zeroBytes:
    case Kind::surplusRecords:
    case Kind::cutRecord:
    case Kind::longHeaders:
    case Kind::sameReads:
    case Kind::emptyFile:
    case Kind::headersOfOtherRead:
    case Kind::nothingMapped:
    case Kind::unusedReads:
        return true;
    default:
        return false;
    }
}

std::vector<Warning> warningsOf(const reads::InputAccount& inputs, const std::string& name1,
                                const std::string& name2) {
    std::vector<Warning> warnings;
    if (inputs.complete) {
        addFileWarnings(warnings, inputs.read1, name1);
        addFileWarnings(warnings, inputs.read2, name2);
        addSurplusWarning(warnings, inputs.read1, name1, name2);
        addSurplusWarning(warnings, inputs.read2, name2, name1);
    }
    addHeaderWarnings(warnings, inputs, name1, name2);
    if (inputs.matesAreEqual) {
        warnings.push_back(
            {Kind::sameReads,
             name1 + " and " + name2 + " begin with the same read: they seem to be one file"});
    }
    if (!inputs.hint.empty()) {
        warnings.push_back({Kind::readMarks, inputs.hint});
    }
    return warnings;
}

std::vector<Warning> warningsOf(const ReadCounters& counters,
                                const calling::Assessability& assessability,
                                const std::string& name1) {
    std::vector<Warning> warnings;
    if (counters.readsMapped == 0) {
        warnings.push_back(
            {Kind::nothingMapped,
             counters.totalNumberOfReads == 0
                 ? name1 + ": no read pair was counted: nothing is assessable"
                 : name1 + ": none of " +
                       counted(counters.totalNumberOfReads, "read pair", "read pairs") +
                       " is mapped: nothing is assessable"});
    } else if (nearlyNothingIsMapped(counters)) {
        warnings.push_back(
            {Kind::fewMapped,
             name1 + ": only " + std::to_string(counters.readsMapped) + " of " +
                 counted(counters.totalNumberOfReads, "read pair is", "read pairs are") +
                 " mapped"});
    }
    for (const calling::NotAssessable& kind : assessability.kinds) {
        warnings.push_back({Kind::notAssessable, name1 + ": " + kind.text()});
    }
    return warnings;
}

std::vector<Warning> warningsOf(const SecondLook& look, const std::string& name1) {
    std::vector<Warning> warnings;
    // Reads that overlap hold a target in both mates; the place with the most pairs comes first.
    std::set<std::string_view> named;
    for (const CoreElsewhere& found : look.found) {
        if (named.size() < kPlacesNamed && named.insert(found.mutation).second) {
            warnings.push_back({Kind::elsewhere, name1 + ": " + lineOf(found)});
        }
    }
    if (look.found.size() > warnings.size()) {
        warnings.push_back({Kind::elsewhere, name1 + ": " +
                                                 counted(static_cast<std::int64_t>(
                                                             look.found.size() - warnings.size()),
                                                         "more place is", "more places are") +
                                                 " in the record"});
    }
    return warnings;
}

} // namespace run
