// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A run has two parts. First each worker reads the full batch of regular records that it matches
// next: the workers take turns at reading and at nothing else, and the run's thread waits. The
// first batch that is not regular, at the latest the last one, ends this part. From there the run's
// thread reads line by line and hands full batches to the workers.
//
// At most eight batches are in flight. A batch is in flight until its result is merged, and results
// are merged in the order of the files, on a serial queue of the run. So the counters of a failed
// run and the files of a finished one are the same for any number of workers. Memory holds eight
// batches and their results, however long the files are.
//
// Tested by pair_matching_test.cpp; running_display_test.cpp tests what a run shows and
// failing_sources_test.cpp how it fails. literal_rules_test.cpp compares whole runs with a plain
// writing of the rules.
#include "run/pair_matching.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "matching/fast_matcher.h"
#include "matching/matcher.h"
#include "platform/files.h"
#include "reads/batch_reader.h"
#include "reads/pair_reader.h"
#include "run/run_account.h"

namespace run {
namespace {

/// The running total is shown when it is a multiple of this.
constexpr std::int64_t kPairsPerDisplay = 1000;

/// Names the file that failed. `paths` are those of the source's parts.
std::string readFailure(const platform::Status& reading, const reads::ReadSource& source,
                        const std::vector<std::string>& paths) {
    std::size_t failed = 0;
    while (failed + 1 < source.partCount() && source.part(failed).status()) {
        ++failed;
    }
    return "Cannot read " + paths.at(failed) + ": " + reading.error().message + ".\n";
}

/// One run over open files, from the first read to the last merge. For one call of readAndMatch(),
/// by a thread that is not one of the workers.
class MatchingRun {
public:
    MatchingRun(const PairedReads& reads, const catalogue::MutDomains& domains, RunFiles files,
                ReadCounters& counters, RunDisplay& display, ReadingProgress& progress,
                platform::WorkerPool& workers);
    /// Waits for batches in flight, which are left when something threw on the caller's thread:
    /// workers use this object and its merge queue. The queue then waits for the merges.
    ~MatchingRun();
    MatchingRun(const MatchingRun&) = delete;
    MatchingRun& operator=(const MatchingRun&) = delete;

    /// An error is the line for the error log. Either way the counters and the catalogue's counts
    /// hold what was merged. What a worker threw is thrown again here, once nothing is in flight.
    platform::Status readAndMatch();
    void showWarnings();

private:
    static constexpr std::size_t kBatchesInFlight = 8;

    /// Where a batch's result waits for its turn to be merged.
    struct Slot {
        matching::BatchResult result;
        std::int64_t pairs = 0;
        // Of all batches that were in the slot.
        reads::HeaderFacts headers1;
        reads::HeaderFacts headers2;
        bool isReady = false;
    };
    using Batch = std::unique_ptr<reads::ReadPairBatch>;

    void readFullBatches();
    template <typename Queue>
    void async(Queue& queue, platform::Task task);
    void keepThrown() noexcept;
    void readAndMatchOne();

    void readRest();
    void handOn(Batch batch);
    void handOnEmpty();
    bool endOfReads(reads::ResumedReads& read1, reads::ResumedReads& read2);

    Batch takeBatch();
    void giveBack(Batch batch);
    void match(const reads::ReadPairBatch& batch, std::uint64_t number);
    void mergeWhatIsReady();
    void merge(const Slot& slot);
    void drain();
    bool writingFailed();
    void giveCounts();

    void noteFirstPair(const reads::ReadPairBatch& batch);
    void lookAtHeaders(const reads::ReadPairBatch& batch, std::uint64_t number, Slot& slot);
    void noteLastRecord(const reads::ReadPairBatch& batch);
    void accountForEnd(const reads::PairReader& reader, reads::ResumedReads& read1,
                       reads::ResumedReads& read2);
    void accountForFiles();

    void showRunningTotal();
    void closeAll();
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
    /// The first failure.
    platform::Status m_failure;
    /// Of the next batch that readRest() hands on.
    std::uint64_t m_nextNumber = 0;
    std::int64_t m_totalShownForEmptyBatch = -1;

    // Of the first batch, written by the worker that has it.
    std::string m_firstName;
    bool m_matesAreEqual = false;

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

platform::Status MatchingRun::readAndMatch() {
    readFullBatches();
    if (!writingFailed()) {
        readRest();
    }
    drain();
    giveCounts();
    accountForFiles();
    closeAll();
    return m_failure;
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

void MatchingRun::readRest() {
    reads::ResumedReads read1(m_batchReader.takeRest1(), *m_files.read1);
    reads::ResumedReads read2(m_batchReader.takeRest2(), *m_files.read2);
    reads::PairReader reader(read1, read2, m_reads.read1Path);
    m_nextNumber = m_mergedBatches;
    while (reader.readLookAhead()) {
        if (m_hasThrown) {
            return; // drain() tells why
        }
        Batch batch = takeBatch();
        if (const platform::Status filled = reader.fill(*batch); !filled) {
            if (endOfReads(read1, read2)) {
                m_counters.inputs.hint = reader.hint();
                fail(filled.error().message);
            }
            return;
        }
        m_progress.bytesTaken = m_files.read1->fileBytesTaken() + m_files.read2->fileBytesTaken();
        m_progress.pairs += static_cast<std::int64_t>(batch->size());
        if (!read1.status() || !read2.status()) {
            break;
        }
        if (batch->size() == 0) {
            // Takes no slot, so there is nothing more to wait for.
            giveBack(std::move(batch));
            handOnEmpty();
            continue;
        }
        noteLastRecord(*batch);
        handOn(std::move(batch));
        if (m_nextNumber % kBatchesInFlight == 0) {
            drain();
            if (writingFailed()) {
                return;
            }
        }
    }
    accountForEnd(reader, read1, read2);
    endOfReads(read1, read2);
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
    const platform::Status sound1 = read1.verifyRest();
    const platform::Status sound2 = read2.verifyRest();
    return (sound1 || fail(readFailure(sound1, *m_files.read1, read1PathsOf(m_reads)))) &&
           (sound2 || fail(readFailure(sound2, *m_files.read2, read2PathsOf(m_reads))));
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
    lookAtHeaders(batch, number, slot);
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
        merge(slot);
        ++m_mergedBatches;
        m_mergingHasStopped = m_mergedBatches % kBatchesInFlight == 0 && !m_written;
        if (!m_mergingHasStopped && !m_batchReader.hasStopped()) {
            async(m_workers, [this] { readAndMatchOne(); });
        }
    }
}

void MatchingRun::merge(const Slot& slot) {
    const matching::BatchResult& result = slot.result;
    m_counters.inputs.read1.records += slot.pairs;
    m_counters.inputs.read2.records += slot.pairs;
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

// --- The account of what was read

/// The names of each pair in the first batches, then of every sixteenth: what was put together in
/// one file follows each other in stretches of thousands.
void MatchingRun::lookAtHeaders(const reads::ReadPairBatch& batch, std::uint64_t number,
                                Slot& slot) {
    constexpr std::uint64_t kBatchesLookedAtWhole = 8;
    const std::size_t step = number < kBatchesLookedAtWhole ? 1 : 16;
    slot.pairs = static_cast<std::int64_t>(batch.size());
    for (std::size_t i = 0; i < batch.size(); i += step) {
        slot.headers1.add(batch.header1(i));
        slot.headers2.add(batch.header2(i));
    }
    if (number == 0 && batch.size() > 0) {
        noteFirstPair(batch);
    }
}

/// REQUIRES: it is the first batch, which one worker has.
void MatchingRun::noteFirstPair(const reads::ReadPairBatch& batch) {
    // Shorter reads may be alike by chance.
    constexpr std::size_t kShortestThatTells = 30;
    const reads::ReadPair pair = batch.pair(0);
    m_firstName = reads::nameInHeader1(batch.header1(0));
    m_matesAreEqual = pair.read1.size() >= kShortestThatTells && pair.read1 == pair.read2 &&
                      pair.quality1 == pair.quality2;
}

/// A file that was cut within its last line looks whole. Only batches that are read line by line
/// can hold such a line.
void MatchingRun::noteLastRecord(const reads::ReadPairBatch& batch) {
    const reads::ReadPair pair = batch.pair(batch.size() - 1);
    m_counters.inputs.read1.lastRecordIsCut = pair.quality1.size() < pair.read1.size();
    m_counters.inputs.read2.lastRecordIsCut = pair.quality2.size() < pair.read2.size();
}

/// Counts what is left of the files. REQUIRES: the reads have ended.
void MatchingRun::accountForEnd(const reads::PairReader& reader, reads::ResumedReads& read1,
                                reads::ResumedReads& read2) {
    reads::EndOfReading end{reader.end(), reader.unpairedLines1(), reader.unpairedLines2(),
                            read1.countRest(), read2.countRest()};
    closeAccount(m_counters.inputs, end);
    m_counters.inputs.read1.longHeaders = reader.longHeaders1();
    m_counters.inputs.read2.longHeaders = reader.longHeaders2();
    m_counters.inputs.read1.zeroBytes = read1.zeroBytes();
    m_counters.inputs.read2.zeroBytes = read2.zeroBytes();
}

/// REQUIRES: nothing is in flight.
void MatchingRun::accountForFiles() {
    reads::InputAccount& inputs = m_counters.inputs;
    for (const Slot& slot : m_slots) {
        inputs.read1.headers.add(slot.headers1);
        inputs.read2.headers.add(slot.headers2);
    }
    const auto tell = [](reads::FileAccount& file, const reads::ReadSource& source,
                         const std::string& path) {
        file.path = path;
        file.fileBytes = source.fileSize();
        file.gzipMembers = source.gzipMembers();
    };
    tell(inputs.read1, *m_files.read1, m_reads.read1Path);
    tell(inputs.read2, *m_files.read2, m_reads.read2Path);
    inputs.firstName = m_firstName;
    inputs.matesAreEqual = m_matesAreEqual;
    inputs.complete = inputs.complete && m_failure;
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

void MatchingRun::closeAll() {
    const platform::Status closed =
        m_files.failedReads ? m_files.failedReads->close() : platform::Status();
    if (!closed) {
        fail(closed.error().message + ".\n");
    }
}

/// Notes the failure unless there is an earlier one, and returns false.
bool MatchingRun::fail(std::string line) {
    if (m_failure) {
        m_failure = platform::Error{std::move(line)};
    }
    return false;
}

void MatchingRun::showWarnings() {
    const auto show = [&](const reads::ReadSource& source, const std::vector<std::string>& paths) {
        for (std::size_t i = 0; i < source.partCount(); ++i) {
            if (const std::string warning = source.part(i).warning(); !warning.empty()) {
                m_display.displayWarning({Warning::Kind::padding, paths.at(i) + ": " + warning});
            }
        }
    };
    show(*m_files.read1, read1PathsOf(m_reads));
    show(*m_files.read2, read2PathsOf(m_reads));
}

// --- Before and after

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

platform::Status matchOpenFiles(const PairedReads& reads, RunFiles files,
                                const catalogue::MutDomains& domains, ReadCounters& counters,
                                RunDisplay& display, ReadingProgress& progress,
                                platform::WorkerPool& workers) {
    MatchingRun run(reads, domains, std::move(files), counters, display, progress, workers);
    platform::Status finished = run.readAndMatch();
    run.showWarnings();
    return finished;
}

platform::Status matchReadPairs(const PairedReads& reads, const catalogue::MutDomains& domains,
                                ReadCounters& counters, RunDisplay& display,
                                ReadingProgress& progress, platform::WorkerPool& workers) {
    startCounters(counters, display, progress);
    clearCounts(domains);
    auto files = openFiles(reads);
    if (!files) {
        return files.error();
    }
    if (auto finished = matchOpenFiles(reads, std::move(files).value(), domains, counters, display,
                                       progress, workers);
        !finished) {
        return finished;
    }
    sumDomainTotals(domains);
    counters.readsMapped = counters.totalNumberOfReads - counters.readsFailedToBeMapped;
    display.showText(RunField::totalNumberOfReads, std::to_string(counters.totalNumberOfReads));
    display.showText(RunField::readsFailedToBeMapped,
                     std::to_string(counters.readsFailedToBeMapped));
    display.showText(RunField::readsMapped, std::to_string(counters.readsMapped));
    return {};
}

} // namespace run
