// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// One run: this thread reads and hands on batches, workers match them, and what they found meets on
// a serial queue. Eight slots (a batch and its result) are made once and used in turn; every eighth
// batch the reading waits until all of them are matched and merged, so that is all a run holds.
// Tested by pair_matching_test.cpp.
#include "matching/pair_matching.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include <sys/stat.h>

#include "matching/fast_matcher.h"
#include "matching/pair_reader.h"
#include "platform/files.h"

namespace matching {
namespace {

constexpr std::size_t kBatchesInFlight = 8;
/// The running total is shown when it is a multiple of this.
constexpr std::int64_t kPairsPerDisplay = 1000;

/// A batch on its way and what it gave.
struct Slot {
    ReadPairBatch batch;
    BatchResult result;
};

struct OpenedFiles {
    std::unique_ptr<ReadSource> read1;
    std::unique_ptr<ReadSource> read2;
    std::optional<platform::FreshFile> failedReads;
};

bool sameFile(const struct stat& a, const struct stat& b) noexcept {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether making a file anew under `path` would remove `input`, or the link that leads to it.
bool wouldReplace(const std::string& path, const std::string& input) {
    struct stat there = {};
    struct stat entry = {};
    struct stat target = {};
    if (::lstat(path.c_str(), &there) != 0 || ::lstat(input.c_str(), &entry) != 0) {
        return false;
    }
    return sameFile(there, entry) ||
           (::stat(input.c_str(), &target) == 0 && sameFile(there, target));
}

std::unique_ptr<ReadSource> openOrTellWhyNot(const std::string& path, ReadsEncoding encoding,
                                             MatchingDisplay& display) {
    auto source = openReads(path, encoding);
    if (!source) {
        // The line for the error log has no place for the reason.
        display.displayWarning(source.error().message + ".\n");
        return nullptr;
    }
    return std::move(source).value();
}

std::optional<platform::FreshFile> createFailedReads(const PairedReads& reads) {
    const std::string& path = *reads.failedReadsPath;
    if (wouldReplace(path, reads.read1Path) || wouldReplace(path, reads.read2Path)) {
        return std::nullopt;
    }
    auto file = platform::FreshFile::create(path);
    return file ? std::optional(std::move(file).value()) : std::nullopt;
}

/// Opens all three before looking at any: the failed-reads file is made even if a read file is
/// missing. Returns the line for the error log, empty when all are open. Deliberate: there is no
/// message numbered 2.
std::string openFiles(const PairedReads& reads, OpenedFiles& files, MatchingDisplay& display) {
    files.read1 = openOrTellWhyNot(reads.read1Path, reads.encoding, display);
    files.read2 = openOrTellWhyNot(reads.read2Path, reads.encoding, display);
    if (reads.failedReadsPath) {
        files.failedReads = createFailedReads(reads);
        if (!files.failedReads) {
            return "Cannot open1 " + *reads.failedReadsPath + ".\n";
        }
    }
    if (!files.read1) {
        return "Cannot open3 " + reads.read1Path + ".\n";
    }
    if (!files.read2) {
        return "Cannot open4 " + reads.read2Path + ".\n";
    }
    return {};
}

std::string readFailure(const ReadSource& source, const std::string& path) {
    return source.failed() ? "Cannot read " + path + ": " + source.error() + ".\n" : std::string();
}

void clearCounts(const catalogue::MutDomains& domains) {
    for (const auto& domain : platform::orEmpty(domains)) {
        for (const auto& mutation : platform::orEmpty(domain->mutationMutAr)) {
            mutation->match = 0;
        }
    }
}

/// The first mutation of a domain is its normal one; the others make up the mutant reads. Without
/// mutations the normal reads stay as they are.
void sumDomainTotals(const catalogue::MutDomains& domains) {
    for (const auto& domain : platform::orEmpty(domains)) {
        domain->totalNumberOfMutantReads = 0;
        bool first = true;
        for (const auto& mutation : platform::orEmpty(domain->mutationMutAr)) {
            if (first) {
                domain->totalNumberOfNormalReads = mutation->match;
            } else {
                domain->totalNumberOfMutantReads += mutation->match;
            }
            first = false;
        }
    }
}

class Run {
public:
    Run(const PairedReads& reads, const catalogue::MutDomains& domains, OpenedFiles files,
        ReadCounters& counters, MatchingDisplay& display, ReadingProgress& progress,
        platform::WorkerPool& workers);
    /// Waits for the batches that are still in flight, when something threw between handing them on
    /// and draining: workers use this object, its merge queue included. The queue then waits for
    /// the merges.
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Whether all went well; else the line for the error log is in error().
    bool readAndMatch();
    const std::string& error() const noexcept { return m_error; }
    void showWarnings();

private:
    bool handOnBatches();
    void handOn(Slot& slot);
    void handOnEmpty();
    void work(Slot& slot);
    void merge(const Slot& slot);
    void verifyRest();
    void drain();
    void showRunningTotal();
    void updateProgress(std::size_t pairs);
    bool closeAll();
    std::string sourceFailure() const;
    bool fail(std::string line);

    const PairedReads& m_reads;
    const catalogue::MutDomains& m_domains;
    OpenedFiles m_files;
    ReadCounters& m_counters;
    MatchingDisplay& m_display;
    ReadingProgress& m_progress;
    platform::WorkerPool& m_workers;
    PairReader m_reader;
    FastMatcher m_matcher;
    std::vector<Slot> m_slots;
    std::string m_error;
    std::int64_t m_totalShownForEmptyBatch = -1;

    // Touched on the merge queue; the counters, too.
    platform::Status m_written;
    /// The counter's twin, which workers read for the display.
    std::atomic<std::int64_t> m_total{0};

    platform::WaitGroup m_batchesInFlight;
    platform::SerialQueue m_mergeQueue;
};

Run::Run(const PairedReads& reads, const catalogue::MutDomains& domains, OpenedFiles files,
         ReadCounters& counters, MatchingDisplay& display, ReadingProgress& progress,
         platform::WorkerPool& workers)
    : m_reads(reads), m_domains(domains), m_files(std::move(files)), m_counters(counters),
      m_display(display), m_progress(progress), m_workers(workers),
      m_reader(*m_files.read1, *m_files.read2, reads.read1Path), m_matcher(domains),
      m_slots(kBatchesInFlight), m_mergeQueue(workers) {
    for (Slot& slot : m_slots) {
        slot.result.counts.resize(mutationCount(domains));
        slot.result.keepUnassigned = m_files.failedReads.has_value();
    }
    m_progress.bytesTotal = m_files.read1->fileSize() + m_files.read2->fileSize();
}

Run::~Run() {
    m_batchesInFlight.wait();
}

bool Run::readAndMatch() {
    const bool handedOn = handOnBatches();
    drain();
    const bool closed = closeAll();
    return handedOn && closed;
}

bool Run::handOnBatches() {
    std::size_t batchCounter = 0;
    while (m_reader.readLookAhead()) {
        Slot& slot = m_slots[batchCounter % kBatchesInFlight];
        if (!m_reader.fill(slot.batch)) {
            // A .gz member's checksum comes at its end: damage shows in the reads before that.
            verifyRest();
            return fail(m_reader.error());
        }
        updateProgress(slot.batch.size());
        if (m_files.read1->failed() || m_files.read2->failed()) {
            return fail({});
        }
        if (slot.batch.size() == 0) {
            // Takes no slot, so there is nothing more to wait for.
            handOnEmpty();
            continue;
        }
        handOn(slot);
        ++batchCounter;
        if (batchCounter % kBatchesInFlight == 0) {
            drain();
            if (!m_written) {
                return fail(m_written.error().message + ".\n");
            }
        }
    }
    verifyRest();
    return !m_files.read1->failed() && !m_files.read2->failed() ? true : fail({});
}

void Run::verifyRest() {
    m_files.read1->verifyRest();
    m_files.read2->verifyRest();
}

void Run::handOn(Slot& slot) {
    m_batchesInFlight.enter();
    try {
        m_workers.async([this, &slot] {
            work(slot);
            m_batchesInFlight.leave();
        });
    } catch (...) {
        m_batchesInFlight.leave(); // Nobody else would, and all wait for it.
        throw;
    }
}

/// A batch without pairs changes no count: it needs no worker, only what a worker would show.
/// Read-1 lines without a read-2 header give one such batch each, so it is shown once per total.
void Run::handOnEmpty() {
    if (const std::int64_t total = m_total.load(); total != m_totalShownForEmptyBatch) {
        m_totalShownForEmptyBatch = total;
        showRunningTotal();
    }
}

void Run::work(Slot& slot) {
    BatchResult& result = slot.result;
    std::fill(result.counts.begin(), result.counts.end(), 0);
    result.processed = 0;
    result.failed = 0;
    result.unassignedPairs.clear();
    m_matcher.match(slot.batch, result);
    m_mergeQueue.async([this, &slot] { merge(slot); });
    showRunningTotal();
}

void Run::merge(const Slot& slot) {
    const BatchResult& result = slot.result;
    m_counters.readsFailedToBeMapped += result.failed;
    m_counters.totalNumberOfReads += result.processed;
    m_total = m_counters.totalNumberOfReads;
    auto count = result.counts.begin();
    for (const auto& domain : platform::orEmpty(m_domains)) {
        for (const auto& mutation : platform::orEmpty(domain->mutationMutAr)) {
            mutation->match += *count++;
        }
    }
    if (!result.unassignedPairs.empty() && m_written) {
        m_written = m_files.failedReads->write(result.unassignedPairs);
    }
}

/// Afterwards every slot is free and what was merged can be read.
void Run::drain() {
    m_batchesInFlight.wait();
    m_mergeQueue.sync([] {});
}

void Run::showRunningTotal() {
    const std::int64_t total = m_total.load();
    if (total % kPairsPerDisplay != 0) {
        return;
    }
    m_display.showTotalNumberOfReads(std::to_string(total));
    // Deliberate: these two show real values only at the end of the run.
    m_display.showReadsMapped("0");
    m_display.showReadsFailedToBeMapped("0");
}

void Run::updateProgress(std::size_t pairs) {
    m_progress.bytesTaken = m_files.read1->fileBytesTaken() + m_files.read2->fileBytesTaken();
    m_progress.pairs += static_cast<std::int64_t>(pairs);
}

bool Run::closeAll() {
    if (!m_files.failedReads) {
        return true;
    }
    const platform::Status closed = m_files.failedReads->close();
    return closed.ok() || fail(closed.error().message + ".\n");
}

std::string Run::sourceFailure() const {
    std::string failure = readFailure(*m_files.read1, m_reads.read1Path);
    return failure.empty() ? readFailure(*m_files.read2, m_reads.read2Path) : failure;
}

/// The first failure counts. A source that failed is the cause of whatever its reader met.
bool Run::fail(std::string line) {
    if (m_error.empty()) {
        m_error = sourceFailure();
        if (m_error.empty()) {
            m_error = std::move(line);
        }
    }
    return false;
}

void Run::showWarnings() {
    const auto show = [&](const ReadSource& source, const std::string& path) {
        if (const std::string warning = source.warning(); !warning.empty()) {
            m_display.displayWarning(path + ": " + warning + ".\n");
        }
    };
    show(*m_files.read1, m_reads.read1Path);
    show(*m_files.read2, m_reads.read2Path);
}

void startCounters(ReadCounters& counters, MatchingDisplay& display, ReadingProgress& progress) {
    counters = {};
    progress.bytesTotal = 0;
    progress.bytesTaken = 0;
    progress.pairs = 0;
    display.showReadsFailedToBeMapped("0");
    display.showReadsMapped("0");
    display.showTotalNumberOfReads("0");
}

} // namespace

std::string failedReadsPathFor(const std::string& read1Path) {
    return platform::splitAt(read1Path, "_R1_").front() + ".failedToBeAssignedReads";
}

bool matchReadPairs(const PairedReads& reads, const catalogue::MutDomains& domains,
                    ReadCounters& counters, MatchingDisplay& display, ReadingProgress& progress,
                    platform::WorkerPool& workers) {
    startCounters(counters, display, progress);
    clearCounts(domains);
    OpenedFiles files;
    if (const std::string error = openFiles(reads, files, display); !error.empty()) {
        display.displayError(error);
        return false;
    }
    Run run(reads, domains, std::move(files), counters, display, progress, workers);
    const bool succeeded = run.readAndMatch();
    run.showWarnings();
    if (!succeeded) {
        display.displayError(run.error());
        return false;
    }
    sumDomainTotals(domains);
    counters.readsMapped = counters.totalNumberOfReads - counters.readsFailedToBeMapped;
    display.showTotalNumberOfReads(std::to_string(counters.totalNumberOfReads));
    display.showReadsFailedToBeMapped(std::to_string(counters.readsFailedToBeMapped));
    display.showReadsMapped(std::to_string(counters.readsMapped));
    return true;
}

} // namespace matching
