// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Saving and opening a large result document: 1,000 patients with 100 mutations each. The counters
// give its size and the most memory that the process has held, the records themselves included. To
// know what opening alone takes, set VEXTA_BENCH_DOCUMENT to a file that a run before made, and
// choose it with --benchmark_filter=opens.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include "document/result_document.h"
#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

constexpr int kPatients = 1'000;
constexpr int kDomains = 10;
constexpr int kMutationsPerDomain = 10;

std::shared_ptr<catalogue::Mutation> mutation(int patient, int number) {
    auto made = std::make_shared<catalogue::Mutation>();
    made->name = "GENE" + std::to_string(number) + "_c.35G>A";
    made->referenceFrequencyOfTheMutantReads = 0.001;
    made->allowableFalsePositiveRate = 0.0001;
    made->allowableFalseNegativeRate = 0.05;
    made->minimumRequiredNumberOfInformativeReads = 1'000;
    // Each as long as an amplicon, and another for each mutation.
    made->seq = std::string(120, 'A') + std::to_string(number);
    made->coreSeq = std::string(30, 'C') + std::to_string(number);
    made->before10bp = "GATTACAGAT";
    made->after10bp = "CCGTTGACCG";
    made->strandRequiredToRead = "R1";
    made->match = 7 * patient + 13 * number;
    made->posNegDetectedOrAlleleType = "Negative";
    made->mutantCellRatio = std::to_string(patient % 100) + ".0%";
    return made;
}

std::shared_ptr<catalogue::MutDomain> domain(int patient, int number) {
    auto made = std::make_shared<catalogue::MutDomain>();
    made->name = "GENE" + std::to_string(number);
    made->type = "SomaticDNA";
    made->mutationMutAr.emplace();
    for (int i = 0; i < kMutationsPerDomain; ++i) {
        made->mutationMutAr->append(mutation(patient, number * kMutationsPerDomain + i));
    }
    made->totalNumberOfNormalReads = 1'000 + patient;
    return made;
}

std::shared_ptr<run::SummaryForEachPatient> patient(int number) {
    auto made = run::SummaryForEachPatient::initWithMutDomains(catalogue::MutDomains::value_type());
    made->file1 = "run_S" + std::to_string(number) + "_L001_R1_001.fastq.gz";
    made->file2 = "run_S" + std::to_string(number) + "_L001_R2_001.fastq.gz";
    made->fastqFileDir = "/data/run";
    made->patientNo = std::to_string(number);
    for (int i = 0; i < kDomains; ++i) {
        made->mutDomains->append(domain(number, i));
        auto row = std::make_shared<calling::ReportSomaticDNA>();
        row->mutDomain = made->mutDomains->back();
        row->patientNo = made->patientNo;
        row->areaSearched = row->mutDomain->name;
        row->diagnosis = "Negative";
        made->somaticDNAResultMutAr->append(std::move(row));
    }
    return made;
}

run::MainMutDictionary largeDocument() {
    run::MainMutDictionary made;
    made.summaryForEachPatientMutAr.emplace();
    for (int number = 1; number <= kPatients; ++number) {
        made.summaryForEachPatientMutAr->append(patient(number));
    }
    made.selectedPatientRowNo = 0;
    return made;
}

double peakMegabytes() {
    struct rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }
}

std::size_t save(const run::MainMutDictionary& document, const std::string& path) {
    const auto bytes = document::encodeResultDocument(document);
    require(bytes.ok() && platform::writeFileAtomically(path, bytes.value()).ok(), "cannot save");
    return bytes.value().size();
}

void count(benchmark::State& state, std::size_t bytes) {
    state.counters["file_MB"] = static_cast<double>(bytes) / 1e6;
    state.counters["peak_MiB"] = peakMegabytes();
}

void savesALargeDocument(benchmark::State& state) {
    const support::TempDir dir;
    const run::MainMutDictionary document = largeDocument();
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = save(document, dir.file("run.vexta"));
    }
    count(state, bytes);
}
BENCHMARK(savesALargeDocument)->Unit(benchmark::kMillisecond);

/// The file of a large document, made where there is none.
std::string documentFile(const support::TempDir& dir) {
    const char* kept = std::getenv("VEXTA_BENCH_DOCUMENT");
    const std::string path = kept != nullptr ? kept : dir.file("run.vexta");
    if (!platform::regularFileSize(path).ok()) {
        save(largeDocument(), path);
    }
    return path;
}

void opensALargeDocument(benchmark::State& state) {
    const support::TempDir dir;
    const std::string path = documentFile(dir);
    std::size_t size = 0;
    for (auto _ : state) {
        const auto bytes = platform::readWholeFile(path, document::kLargestResultDocument);
        require(bytes.ok(), "cannot read");
        const auto document = document::decodeResultDocument(bytes.value());
        require(document.ok(), "cannot open");
        require(document.value().summaryForEachPatientMutAr->size() == kPatients, "lost patients");
        size = bytes.value().size();
    }
    count(state, size);
}
BENCHMARK(opensALargeDocument)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
