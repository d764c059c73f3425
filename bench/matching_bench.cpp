// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Matching as the rules are written, and whole runs, on made-up reads that are the same every time.
// Speeds are pairs ("items") per second.
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench_texts.h"
#include "matching/matcher.h"
#include "reads/pair_reader.h"
#include "run/pair_matching.h"
#include "run/run_account.h"

namespace {

using bench::data;
using bench::kPairs;
using bench::textOf;
using bench::TextStream;
using reads::ReadPairBatch;

void countPairs(benchmark::State& state) {
    state.SetItemsProcessed(static_cast<std::int64_t>(kPairs) * state.iterations());
}

std::vector<ReadPairBatch> allBatches() {
    TextStream read1(textOf(1));
    TextStream read2(textOf(2));
    reads::PairReader reader(read1, read2, "read 1");
    std::vector<ReadPairBatch> batches;
    while (reader.readLookAhead() && reader.fill(batches.emplace_back())) {
    }
    return batches;
}

void matchPlainly(benchmark::State& state) {
    const std::vector<ReadPairBatch> batches = allBatches();
    const matching::PlainMatcher matcher(data().domains());
    for (auto _ : state) {
        matching::BatchResult result;
        result.keepUnassigned = false;
        result.counts.resize(matching::mutationCount(data().domains()));
        for (const ReadPairBatch& batch : batches) {
            matcher.match(batch, result);
        }
        benchmark::DoNotOptimize(result.failed);
    }
    countPairs(state);
}
BENCHMARK(matchPlainly)->Unit(benchmark::kMillisecond);

class Silent final : public run::RunDisplay {
public:
    void showText(run::RunField, const std::string&) override {}
    void displayError(const std::string&) override {}
    void displayWarning(const run::Warning&) override {}
};

/// The argument is the number of workers.
void runWhole(benchmark::State& state, bool gzip) {
    const auto& run = data();
    const run::PairedReads reads = {gzip ? run.gzipPath(1) : run.plainPath(1),
                                    gzip ? run.gzipPath(2) : run.plainPath(2),
                                    reads::ReadsEncoding::byFileName, std::nullopt};
    platform::WorkerPool workers(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        run::ReadCounters counters;
        run::ReadingProgress progress;
        Silent display;
        const platform::Status finished =
            run::matchReadPairs(reads, run.domains(), counters, display, progress, workers);
        if (!finished) {
            state.SkipWithError(finished.error().message.c_str());
            return;
        }
    }
    countPairs(state);
}
BENCHMARK_CAPTURE(runWhole, plain, false)
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(runWhole, gzip, true)
    ->Arg(1)
    ->Arg(2)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
