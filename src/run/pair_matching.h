// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "catalogue/mut_domain.h"
#include "matching/matcher.h"
#include "platform/file_identity.h"
#include "platform/program_end.h"
#include "platform/result.h"
#include "platform/work_queues.h"
#include "reads/input_account.h"
#include "run/run_display.h"
#include "run/run_files.h"

namespace run {

/// Read pairs of one run, and what was read of its files.
struct ReadCounters {
    std::int64_t totalNumberOfReads = 0;
    std::int64_t readsFailedToBeMapped = 0;
    std::int64_t readsMapped = 0;
    reads::InputAccount inputs;
};

/// Reads both files in lockstep, matches every pair against `domains` on `workers` and fills each
/// mutation's `match` and each domain's totals.
///
/// Up to 8 batches of 1000 pairs are in flight. Their results are merged in the files' order on a
/// serial queue of the run, so the same files give the same counts for any number of workers.
/// All is well when both files were read to their end. An error is one or more finished lines for
/// the error log: the counters then stay as they stood, no batch is in flight and the files are
/// closed. Runs on the caller's thread and blocks it. REQUIRES: the caller is not a task of
/// `workers`.
platform::Status matchReadPairs(const PairedReads& reads, const catalogue::MutDomains& domains,
                                ReadCounters& counters, RunDisplay& display,
                                ReadingProgress& progress, platform::WorkerPool& workers);

/// The reading and matching of it, over files that are open. Clears and sums nothing; shows the
/// running total and warnings only. An error is the finished line for the error log.
platform::Status matchOpenFiles(const PairedReads& reads, RunFiles files,
                                const catalogue::MutDomains& domains, ReadCounters& counters,
                                RunDisplay& display, ReadingProgress& progress,
                                platform::WorkerPool& workers);

} // namespace run
