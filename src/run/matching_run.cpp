// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A run in two parts. First the workers themselves read full batches of regular records, each the
// one that it matches next: nothing but this reading takes turns, and this thread waits. At the
// first batch that takes judgement, at the latest the last one, this thread goes on line by line
// and hands on what it reads.
//
// Either way at most eight batches are in flight, a batch being so until its result is merged; and
// results are merged in the order of the files, on a serial queue. So a failed run ends with the
// same counters, and a finished one with the same files, for any number of workers. Tested by
// pair_matching_test.cpp.
#include "run/matching_run.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

namespace run {
namespace {

/// The running total is shown when it is a multiple of this.
constexpr std::int64_t kPairsPerDisplay = 1000;

std::string readFailure(const reads::ResumedReads& reads, const std::string& path) {
    return "Cannot read " + path + ": " + reads.error() + ".\n";
}

} // namespace

MatchingRun::MatchingRun(const PairedReads& reads, const catalogue::MutDomains& domains,
                         RunFiles files, ReadCounters& counters, RunDisplay& display,
                         ReadingProgress& progress, platform::WorkerPool& workers)
    : m_reads(reads), m_domains(domains), m_files(std::move(files)), m_counters(counters),
      m_display(display), m_progress(progress), m_workers(workers), m_matcher(domains),
      m_batchReader(*m_files.read1, *m_files.read2), m_slots(kBatchesInFlight),
      m_counts(matching::mutationCount(domains)), m_mergeQueue(workers) {
    for (Slot& slot : m_slots) {
        slot.result.counts.resize(m_counts.size());
        slot.result.keepUnassigned = m_files.failedReads.has_value();
    }
    m_progress.bytesTotal = m_files.read1->fileSize() + m_files.read2->fileSize();
}

MatchingRun::~MatchingRun() {
    m_batchesInFlight.wait();
}

bool MatchingRun::readAndMatch() {
    readFullBatches();
    const bool succeeded = !writingFailed() && readRest();
    drain();
    giveCounts();
    const bool closed = closeAll();
    return succeeded && closed;
}

// --- Full batches, read by the workers

void MatchingRun::readFullBatches() {
    // On a worker, so that a single one has begun all eight before it gets to the first: what it
    // shows meanwhile does not depend on this thread's speed.
    async(m_workers, [this] {
        for (std::size_t i = 0; i < kBatchesInFlight; ++i) {
            async(m_workers, [this] { readAndMatchOne(); });
        }
    });
    drain();
}

/// Hands a task to the workers or the merge queue. drain() waits for it and throws what it threw.
template <typename Queue>
void MatchingRun::async(Queue& queue, platform::Task task) {
    m_batchesInFlight.enter();
    try {
        queue.async([this, task = std::move(task)] {
            try {
                task();
            } catch (...) {
                keepThrown(); // Above here there is only the thread's end, and with it the
                              // program's.
            }
            m_batchesInFlight.leave();
        });
    } catch (...) {
        m_batchesInFlight.leave(); // Nobody else would, and all wait for it.
        throw;
    }
}

void MatchingRun::keepThrown() noexcept {
    const std::lock_guard lock(m_thrownMutex);
    if (!m_thrown) {
        m_thrown = std::current_exception();
    }
    m_hasThrown = true;
}

void MatchingRun::readAndMatchOne() {
    if (m_hasThrown) {
        return;
    }
    Batch batch = takeBatch();
    const auto filled = m_batchReader.read(*batch);
    if (filled) {
        m_progress.bytesTaken += filled->fileBytes;
        m_progress.pairs += static_cast<std::int64_t>(batch->size());
        match(*batch, filled->number);
    }
    giveBack(std::move(batch));
}

// --- The rest, read line by line

bool MatchingRun::readRest() {
    reads::ResumedReads read1(m_batchReader.takeRest1(), *m_files.read1);
    reads::ResumedReads read2(m_batchReader.takeRest2(), *m_files.read2);
    reads::PairReader reader(read1, read2, m_reads.read1Path);
    m_nextNumber = m_mergedBatches;
    while (reader.readLookAhead()) {
        if (m_hasThrown) {
            return false; // drain() tells why
        }
        Batch batch = takeBatch();
        if (!reader.fill(*batch)) {
            return endOfReads(read1, read2) && fail(reader.error());
        }
        m_progress.bytesTaken = m_files.read1->fileBytesTaken() + m_files.read2->fileBytesTaken();
        m_progress.pairs += static_cast<std::int64_t>(batch->size());
        if (read1.failed() || read2.failed()) {
            return endOfReads(read1, read2);
        }
        if (batch->size() == 0) {
            // Takes no slot, so there is nothing more to wait for.
            giveBack(std::move(batch));
            handOnEmpty();
            continue;
        }
        handOn(std::move(batch));
        if (m_nextNumber % kBatchesInFlight == 0) {
            drain();
            if (writingFailed()) {
                return false;
            }
        }
    }
    return endOfReads(read1, read2);
}

void MatchingRun::handOn(Batch batch) {
    // A task can be copied, a batch cannot.
    async(m_workers,
          [this, shared = std::make_shared<Batch>(std::move(batch)), number = m_nextNumber] {
              match(**shared, number);
              giveBack(std::move(*shared));
          });
    ++m_nextNumber;
}

/// A batch without pairs changes no count: it needs no worker, only what a worker would show.
/// Read-1 lines without a read-2 header give one such batch each, so it is shown once per total.
void MatchingRun::handOnEmpty() {
    if (const std::int64_t total = m_total.load(); total != m_totalShownForEmptyBatch) {
        m_totalShownForEmptyBatch = total;
        showRunningTotal();
    }
}

/// Whether no file failed: if one did, that is the cause of whatever its reader met. A .gz member's
/// checksum comes at its end, so damage shows in the reads before that; both are verified before
/// either is asked.
bool MatchingRun::endOfReads(reads::ResumedReads& read1, reads::ResumedReads& read2) {
    const bool sound1 = read1.verifyRest();
    const bool sound2 = read2.verifyRest();
    return (sound1 || fail(readFailure(read1, m_reads.read1Path))) &&
           (sound2 || fail(readFailure(read2, m_reads.read2Path)));
}

// --- Matching and merging

/// The batch that was used last, since it is the one that a cache may still hold.
MatchingRun::Batch MatchingRun::takeBatch() {
    {
        const std::lock_guard lock(m_freeBatchesMutex);
        if (!m_freeBatches.empty()) {
            Batch batch = std::move(m_freeBatches.back());
            m_freeBatches.pop_back();
            return batch;
        }
    }
    return std::make_unique<reads::ReadPairBatch>();
}

void MatchingRun::giveBack(Batch batch) {
    const std::lock_guard lock(m_freeBatchesMutex);
    m_freeBatches.push_back(std::move(batch));
}

void MatchingRun::match(const reads::ReadPairBatch& batch, std::uint64_t number) {
    Slot& slot = m_slots[number % kBatchesInFlight];
    matching::BatchResult& result = slot.result;
    std::fill(result.counts.begin(), result.counts.end(), 0);
    result.processed = 0;
    result.failed = 0;
    result.unassignedPairs.clear();
    m_matcher.match(batch, result);
    async(m_mergeQueue, [this, &slot] { // beside the worker, which goes on
        slot.isReady = true;
        mergeWhatIsReady();
    });
    showRunningTotal();
}

/// Merges up to the first batch that is still being matched. After every eighth batch a run looks
/// whether the file for unassigned pairs could be written, and ends there if not.
void MatchingRun::mergeWhatIsReady() {
    while (!m_mergingHasStopped) {
        Slot& slot = m_slots[m_mergedBatches % kBatchesInFlight];
        if (!slot.isReady) {
            return;
        }
        slot.isReady = false;
        merge(slot.result);
        ++m_mergedBatches;
        m_mergingHasStopped = m_mergedBatches % kBatchesInFlight == 0 && !m_written;
        if (!m_mergingHasStopped && !m_batchReader.hasStopped()) {
            async(m_workers, [this] { readAndMatchOne(); });
        }
    }
}

void MatchingRun::merge(const matching::BatchResult& result) {
    m_counters.readsFailedToBeMapped += result.failed;
    m_counters.totalNumberOfReads += result.processed;
    m_total = m_counters.totalNumberOfReads;
    std::transform(m_counts.begin(), m_counts.end(), result.counts.begin(), m_counts.begin(),
                   std::plus<>());
    if (!result.unassignedPairs.empty() && m_written) {
        m_written = m_files.failedReads->write(result.unassignedPairs);
    }
}

/// Afterwards every slot is free and what was merged can be read. Throws what a task threw.
void MatchingRun::drain() {
    m_batchesInFlight.wait();
    m_mergeQueue.sync([] {});
    if (m_thrown) {
        std::rethrow_exception(m_thrown);
    }
}

/// Whether merging has stopped for it. REQUIRES: nothing is in flight.
bool MatchingRun::writingFailed() {
    return m_mergingHasStopped && !fail(m_written.error().message + ".\n");
}

void MatchingRun::giveCounts() {
    auto count = m_counts.begin();
    for (const auto& domain : archive::orEmpty(m_domains)) {
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            mutation->match = *count++;
        }
    }
}

// --- What is shown, and what failed

void MatchingRun::showRunningTotal() {
    const std::int64_t total = m_total.load();
    if (total % kPairsPerDisplay != 0) {
        return;
    }
    m_display.showText(RunField::totalNumberOfReads, std::to_string(total));
    // Deliberate: these two show real values only at the end of the run.
    m_display.showText(RunField::readsMapped, "0");
    m_display.showText(RunField::readsFailedToBeMapped, "0");
}

bool MatchingRun::closeAll() {
    if (!m_files.failedReads) {
        return true;
    }
    const platform::Status closed = m_files.failedReads->close();
    return closed.ok() || fail(closed.error().message + ".\n");
}

/// The first failure counts.
bool MatchingRun::fail(std::string line) {
    if (m_error.empty()) {
        m_error = std::move(line);
    }
    return false;
}

void MatchingRun::showWarnings() {
    const auto show = [&](const reads::ReadSource& source, const std::string& path) {
        if (const std::string warning = source.warning(); !warning.empty()) {
            m_display.displayWarning(path + ": " + warning + ".\n");
        }
    };
    show(*m_files.read1, m_reads.read1Path);
    show(*m_files.read2, m_reads.read2Path);
}

} // namespace run
