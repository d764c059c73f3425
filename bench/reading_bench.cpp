// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What reading costs before anything is matched: lines, pairs, .gz, on made-up reads that are the
// same every time. Speeds are bytes of FASTQ text, or pairs ("items"), per second. `read` alone is
// what a file costs of which nothing is looked at.
#include <thread>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench_texts.h"
#include "platform/avx2.h"
#include "platform/byte_stream.h"
#include "reads/batch_reader.h"
#include "reads/line_ends.h"
#include "reads/pair_reader.h"

namespace {

using bench::data;
using bench::kPairs;
using bench::textOf;
using bench::TextStream;
using reads::GzipBackend;
using reads::ReadPairBatch;
using reads::ReadsEncoding;

std::unique_ptr<reads::ReadSource> plainSource(int read) {
    return std::move(reads::openReads(data().plainPath(read), ReadsEncoding::plain)).value();
}

void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void countBothFiles(benchmark::State& state) {
    countBytes(state, textOf(1).size() + textOf(2).size());
    state.SetItemsProcessed(static_cast<std::int64_t>(kPairs) * state.iterations());
}

// --- Lines of a text in memory

/// Byte by byte, as a line reader is written first.
bool readLineByBytes(char* line, platform::ByteStream& stream) {
    std::size_t stored = 0;
    for (int byte = stream.get(); byte != platform::ByteStream::kEnd; byte = stream.get()) {
        if (byte == '\n' || stored == reads::kLineLimit) {
            return true;
        }
        line[stored++] = static_cast<char>(byte);
    }
    return stored > 0;
}

bool readLineByRules(char* line, platform::ByteStream& stream) {
    return platform::readLineFromStream(line, reads::kLineLimit, stream) != nullptr;
}

void lines(benchmark::State& state, bool (*readLine)(char*, platform::ByteStream&)) {
    const std::string& text = textOf(1);
    char line[reads::kLineLimit + 1];
    for (auto _ : state) {
        TextStream stream(text);
        while (readLine(line, stream)) {
            benchmark::DoNotOptimize(line[0]);
        }
    }
    countBytes(state, text.size());
}
BENCHMARK_CAPTURE(lines, byBytes, readLineByBytes)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lines, byRules, readLineByRules)->Unit(benchmark::kMillisecond);

using FindLineFeeds = decltype(&reads::findLineFeeds);

/// A stretch at a time, which lies in the cache as it does in a run.
void lineFeeds(benchmark::State& state, FindLineFeeds find) {
    if (find == reads::findLineFeedsByAvx2 && !platform::avx2IsThere()) {
        state.SkipWithError("this processor has no AVX2");
        return;
    }
    constexpr std::size_t kMost = reads::RecordText::kMostLines;
    const std::string stretch = textOf(1).substr(0, std::size_t{256} * 1024);
    std::vector<std::uint32_t> places(kMost + reads::kLineFeedsBeyond);
    for (auto _ : state) {
        const auto found = find(stretch.data(), stretch.size(), 0, places.data(), kMost);
        benchmark::DoNotOptimize(found.count);
    }
    countBytes(state, stretch.size());
}
BENCHMARK_CAPTURE(lineFeeds, portable, reads::findLineFeedsPortably)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(lineFeeds, avx2, reads::findLineFeedsByAvx2)->Unit(benchmark::kMicrosecond);

// --- Pairs of two files in the page cache

void readOnly(benchmark::State& state) {
    std::vector<char> place(std::size_t{512} * 1024);
    for (auto _ : state) {
        for (const int read : {1, 2}) {
            const auto source = plainSource(read);
            while (source->read(place.data(), place.size()) > 0) {
                benchmark::ClobberMemory();
            }
        }
    }
    countBothFiles(state);
}
BENCHMARK(readOnly)->Unit(benchmark::kMillisecond);

void pairsLineByLine(benchmark::State& state) {
    ReadPairBatch batch;
    for (auto _ : state) {
        const auto source1 = plainSource(1);
        const auto source2 = plainSource(2);
        reads::PairReader reader(*source1, *source2, "read 1");
        while (reader.readLookAhead() && reader.fill(batch)) {
            benchmark::DoNotOptimize(batch.size());
        }
    }
    countBothFiles(state);
}
BENCHMARK(pairsLineByLine)->Unit(benchmark::kMillisecond);

void readBatches(reads::BatchReader& reader, ReadPairBatch& batch) {
    while (reader.read(batch)) {
        benchmark::DoNotOptimize(batch.size());
    }
}

/// The argument is the number of threads.
void pairsByBatches(benchmark::State& state) {
    std::vector<ReadPairBatch> batches(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const auto source1 = plainSource(1);
        const auto source2 = plainSource(2);
        reads::BatchReader reader(*source1, *source2);
        std::vector<std::thread> others;
        for (std::size_t i = 1; i < batches.size(); ++i) {
            others.emplace_back([&, i] { readBatches(reader, batches[i]); });
        }
        readBatches(reader, batches[0]);
        for (std::thread& other : others) {
            other.join();
        }
    }
    countBothFiles(state);
}
BENCHMARK(pairsByBatches)
    ->Arg(1)
    ->Arg(2)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// --- .gz

void decode(int read, GzipBackend backend) {
    auto source = reads::openGzipReads(data().gzipPath(read), backend);
    if (source) {
        source.value()->verifyRest();
    }
}

bool isThere(benchmark::State& state, GzipBackend backend) {
    if (!reads::gzipBackendAvailable(backend)) {
        state.SkipWithError("not built in");
        return false;
    }
    return true;
}

void gzipOneAfterTheOther(benchmark::State& state, GzipBackend backend) {
    if (!isThere(state, backend)) {
        return;
    }
    for (auto _ : state) {
        decode(1, backend);
        decode(2, backend);
    }
    countBothFiles(state);
}
BENCHMARK_CAPTURE(gzipOneAfterTheOther, isal, GzipBackend::isal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gzipOneAfterTheOther, zlib, GzipBackend::zlib)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void gzipBothAtOnce(benchmark::State& state, GzipBackend backend) {
    if (!isThere(state, backend)) {
        return;
    }
    for (auto _ : state) {
        std::thread other([&] { decode(2, backend); });
        decode(1, backend);
        other.join();
    }
    countBothFiles(state);
}
BENCHMARK_CAPTURE(gzipBothAtOnce, isal, GzipBackend::isal)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(gzipBothAtOnce, zlib, GzipBackend::zlib)
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
