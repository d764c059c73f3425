// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/pair_matching.h"

#include <utility>

#include "platform/files.h"
#include "run/matching_run.h"
#include "run/run_files.h"

namespace run {
namespace {

void clearCounts(const catalogue::MutDomains& domains) {
    for (const auto& domain : archive::orEmpty(domains)) {
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            mutation->match = 0;
        }
    }
}

/// The first mutation of a domain is its normal one; the others make up the mutant reads. Without
/// mutations the normal reads stay as they are.
void sumDomainTotals(const catalogue::MutDomains& domains) {
    for (const auto& domain : archive::orEmpty(domains)) {
        domain->totalNumberOfMutantReads = 0;
        bool first = true;
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            if (first) {
                domain->totalNumberOfNormalReads = mutation->match;
            } else {
                domain->totalNumberOfMutantReads += mutation->match;
            }
            first = false;
        }
    }
}

void startCounters(ReadCounters& counters, RunDisplay& display, ReadingProgress& progress) {
    counters = {};
    progress.bytesTotal = 0;
    progress.bytesTaken = 0;
    progress.pairs = 0;
    display.showText(RunField::readsFailedToBeMapped, "0");
    display.showText(RunField::readsMapped, "0");
    display.showText(RunField::totalNumberOfReads, "0");
}

} // namespace

std::string failedReadsPathFor(const std::string& read1Path) {
    return platform::splitAt(read1Path, "_R1_").front() + ".failedToBeAssignedReads";
}

bool matchReadPairs(const PairedReads& reads, const catalogue::MutDomains& domains,
                    ReadCounters& counters, RunDisplay& display, ReadingProgress& progress,
                    platform::WorkerPool& workers) {
    startCounters(counters, display, progress);
    clearCounts(domains);
    RunFiles files;
    if (const auto failure = openFiles(reads, files)) {
        display.displayError(failure->line);
        for (const std::string& reason : failure->reasons) {
            display.displayError(reason);
        }
        return false;
    }
    MatchingRun run(reads, domains, std::move(files), counters, display, progress, workers);
    const bool succeeded = run.readAndMatch();
    run.showWarnings();
    if (!succeeded) {
        display.displayError(run.error());
        return false;
    }
    sumDomainTotals(domains);
    counters.readsMapped = counters.totalNumberOfReads - counters.readsFailedToBeMapped;
    display.showText(RunField::totalNumberOfReads, std::to_string(counters.totalNumberOfReads));
    display.showText(RunField::readsFailedToBeMapped,
                     std::to_string(counters.readsFailedToBeMapped));
    display.showText(RunField::readsMapped, std::to_string(counters.readsMapped));
    return true;
}

} // namespace run
