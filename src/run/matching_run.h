// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/fast_matcher.h"
#include "matching/matcher.h"
#include "platform/result.h"
#include "platform/work_queues.h"
#include "reads/batch_reader.h"
#include "reads/pair_reader.h"
#include "reads/resumed_reads.h"
#include "run/pair_matching.h"
#include "run/run_files.h"

namespace run {

/// One run over open files, from the first read to the last merge. Made for one call of
/// readAndMatch(), by a thread that is none of the workers'.
class MatchingRun {
public:
    MatchingRun(const PairedReads& reads, const catalogue::MutDomains& domains, RunFiles files,
                ReadCounters& counters, RunDisplay& display, ReadingProgress& progress,
                platform::WorkerPool& workers);
    /// Waits for the batches that are still in flight, when something threw on the caller's thread
    /// between handing them on and draining: workers use this object, its merge queue included. The
    /// queue then waits for the merges.
    ~MatchingRun();
    MatchingRun(const MatchingRun&) = delete;
    MatchingRun& operator=(const MatchingRun&) = delete;

    /// Whether all went well; else the line for the error log is in error(). Either way the
    /// counters and the catalogue's counts hold what was merged. What a worker threw is thrown
    /// again here, when nothing is in flight any more.
    bool readAndMatch();
    const std::string& error() const noexcept { return m_error; }
    void showWarnings();

private:
    static constexpr std::size_t kBatchesInFlight = 8;

    /// Where a batch's result waits for its turn to be merged.
    struct Slot {
        matching::BatchResult result;
        bool isReady = false;
    };
    using Batch = std::unique_ptr<reads::ReadPairBatch>;

    void readFullBatches();
    template <typename Queue>
    void async(Queue& queue, platform::Task task);
    void keepThrown() noexcept;
    void readAndMatchOne();

    bool readRest();
    void handOn(Batch batch);
    void handOnEmpty();
    bool endOfReads(reads::ResumedReads& read1, reads::ResumedReads& read2);

    Batch takeBatch();
    void giveBack(Batch batch);
    void match(const reads::ReadPairBatch& batch, std::uint64_t number);
    void mergeWhatIsReady();
    void merge(const matching::BatchResult& result);
    void drain();
    bool writingFailed();
    void giveCounts();

    void showRunningTotal();
    bool closeAll();
    bool fail(std::string line);

    const PairedReads& m_reads;
    const catalogue::MutDomains& m_domains;
    RunFiles m_files;
    ReadCounters& m_counters;
    RunDisplay& m_display;
    ReadingProgress& m_progress;
    platform::WorkerPool& m_workers;
    matching::FastMatcher m_matcher;
    reads::BatchReader m_batchReader;
    std::vector<Slot> m_slots;
    std::string m_error;
    /// Of the next batch that readRest() hands on.
    std::uint64_t m_nextNumber = 0;
    std::int64_t m_totalShownForEmptyBatch = -1;

    std::mutex m_freeBatchesMutex;
    std::vector<Batch> m_freeBatches;

    // Touched on the merge queue; the counters, too.
    std::vector<std::int64_t> m_counts;
    platform::Status m_written;
    std::uint64_t m_mergedBatches = 0;
    bool m_mergingHasStopped = false;
    /// The counter's twin, which workers read for the display.
    std::atomic<std::int64_t> m_total{0};

    /// The first that a task threw.
    std::exception_ptr m_thrown;
    std::mutex m_thrownMutex;
    std::atomic<bool> m_hasThrown{false};

    platform::WaitGroup m_batchesInFlight;
    platform::SerialQueue m_mergeQueue;
};

} // namespace run
