// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "catalogue/mut_domain.h"
#include "matching/matcher.h"
#include "platform/file_identity.h"
#include "platform/unfinished_files.h"
#include "platform/work_queues.h"
#include "reads/read_source.h"
#include "run/run_display.h"

namespace run {

struct PairedReads {
    std::string read1Path;
    std::string read2Path;
    reads::ReadsEncoding encoding = reads::ReadsEncoding::plain;
    /// The file for pairs that nothing claimed: made anew, never written through what stands there.
    /// nullopt: no such file.
    std::optional<std::string> failedReadsPath;
    /// The files that must stand under the two paths; nullopt: whatever stands there.
    std::optional<platform::FileIdentity> read1File = std::nullopt;
    std::optional<platform::FileIdentity> read2File = std::nullopt;
    /// Where that file is noted once it is made; null: nowhere.
    platform::UnfinishedFiles* unfinished = nullptr;
};

/// Read pairs of one run.
struct ReadCounters {
    std::int64_t totalNumberOfReads = 0;
    std::int64_t readsFailedToBeMapped = 0;
    std::int64_t readsMapped = 0;
};

/// The failed-reads path that belongs to a read-1 path: the part before the first "_R1_", with
/// ".failedToBeAssignedReads".
std::string failedReadsPathFor(const std::string& read1Path);

/// Reads both files in lockstep, matches every pair against `domains` on `workers` and fills each
/// mutation's `match` and each domain's totals.
///
/// Up to 8 batches of 1000 pairs are in flight; their results are merged one by one on a serial
/// queue of the run, so the same files give the same counts for any number of workers. Returns true
/// when both files were read to their end. Returns false after an error, which was shown through
/// `display`: the counters stay as they stood, the workers are drained and the files closed. Runs
/// on the caller's thread and blocks it; the caller must not be a task of `workers`.
bool matchReadPairs(const PairedReads& reads, const catalogue::MutDomains& domains,
                    ReadCounters& counters, RunDisplay& display, ReadingProgress& progress,
                    platform::WorkerPool& workers);

} // namespace run
