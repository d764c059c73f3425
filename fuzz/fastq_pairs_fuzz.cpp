// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Lets arbitrary bytes make two FASTQ files and holds the ways of reading them to each other: full
// batches by several threads and line by line behind them, and a whole run by two workers, against
// reading line by line from the start. The same pairs in the same order, the same counts, the same
// line for the error log. Only full batches are read the fast way; so there are records in plenty,
// and bytes of the fuzzer's own among them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "choices.h"
#include "require.h"

#include "matching/matcher.h"
#include "reads/batch_reader.h"
#include "reads/pair_reader.h"
#include "run/pair_matching.h"
#include "run/run_account.h"
#include "support/catalogue_builder.h"
#include "support/memory_stream.h"
#include "support/temp_dir.h"
#include "support/text_source.h"

namespace {

using fuzzing::Choices;
using fuzzing::require;
using reads::ReadPairBatch;

constexpr std::size_t kLargestFile = std::size_t{256} * 1024;

struct PairFiles {
    std::string text1;
    std::string text2;
};

class PairFilesMaker {
public:
    explicit PairFilesMaker(Choices& choices) : m_choices(choices) {}

    PairFiles make() {
        while (!m_choices.atEnd() && m_files.text1.size() < kLargestFile &&
               m_files.text2.size() < kLargestFile) {
            switch (m_choices.below(6)) {
            case 0:
            case 1:
                addRecords();
                break;
            case 2:
                addToBoth(m_choices.bytes(m_choices.below(256)), 1);
                break;
            case 3: {
                std::string& file = anyFile();
                file += m_choices.bytes(m_choices.below(256));
                break;
            }
            case 4:
                spoil(anyFile());
                break;
            default: {
                const std::string unit = m_choices.bytes(m_choices.below(64));
                addToBoth(unit, m_choices.choose<std::size_t>({2, 250, 1001, 4004}));
                break;
            }
            }
        }
        return std::move(m_files);
    }

private:
    std::string& anyFile() { return m_choices.below(2) == 0 ? m_files.text1 : m_files.text2; }

    /// Sound ones, all of one shape.
    void addRecords() {
        const auto count = m_choices.choose<std::size_t>({1, 2, 500, 999, 1000, 1001, 2000});
        const std::size_t length1 = m_choices.below(65);
        const std::size_t length2 = m_choices.below(2) == 0 ? length1 : m_choices.below(65);
        const std::string unit = m_choices.bytes(m_choices.below(16));
        const auto tail = m_choices.choose<const char*>({" 1", "", " ", "  ", "\t1", " 1 2"});
        for (std::size_t i = 0; i < count; ++i) {
            const std::string header = "@" + std::to_string(m_nextRecord++) + tail;
            addRecord(m_files.text1, header, unit, length1);
            addRecord(m_files.text2, header, unit, length2);
        }
    }

    void addRecord(std::string& text, const std::string& header, std::string_view unit,
                   std::size_t length) const {
        text.append(header).append("\n");
        const std::size_t begin = text.size();
        while (text.size() < begin + length) {
            text.append("ACGTNGGCC").append(unit);
        }
        text.resize(begin + length);
        text.append("\n+\n").append(length, 'I').append("\n");
    }

    void addToBoth(const std::string& bytes, std::size_t count) {
        for (; count > 0; --count) {
            m_files.text1 += bytes;
            m_files.text2 += bytes;
        }
    }

    /// A little change anywhere, by what lines and records depend on.
    void spoil(std::string& text) {
        const std::size_t place = text.size() - std::min(text.size(), m_choices.below(65536));
        switch (m_choices.below(4)) {
        case 0:
            text.insert(place, m_choices.choose<const char*>({"\n", "\r", "\r\n", " ", "@", "A"}));
            break;
        case 1: {
            const auto count = m_choices.choose<std::size_t>({1, 2, 500, 509, 510, 511, 1020});
            text.insert(place, count, m_choices.choose<char>({'L', '\0', '\n', '\r', ' '}));
            break;
        }
        case 2:
            text.erase(place, m_choices.choose<std::size_t>({1, 2, 4, 100}));
            break;
        default:
            text.resize(place);
            break;
        }
    }

    Choices& m_choices;
    PairFiles m_files;
    std::size_t m_nextRecord = 0;
};

/// Little that takes time: what is matched, and how, is another fuzzer's business.
catalogue::MutDomains makeCatalogue() {
    return support::catalogueOf({support::domainOf({{"R1", "TACGTNG"}, {"R2", "GGCCA"}}, true),
                                 support::domainOf({{"R1R2", "C"}})});
}

/// What reading gives. A line of a pair holds no line feed.
struct Reading {
    std::string pairs;
    std::string error;
};

void keepPairs(const ReadPairBatch& batch, std::string& pairs) {
    for (std::size_t i = 0; i < batch.size(); ++i) {
        const reads::ReadPair pair = batch.pair(i);
        for (const std::string_view line : {reads::nameInHeader1(batch.header1(i)), pair.read1,
                                            pair.read2, pair.quality1, pair.quality2}) {
            pairs.append(line).append("\n");
        }
    }
}

void readLineByLine(platform::ByteStream& read1, platform::ByteStream& read2,
                    const std::string& read1Path, Reading& reading,
                    const std::function<void(const ReadPairBatch&)>& use) {
    reads::PairReader reader(read1, read2, read1Path);
    ReadPairBatch batch;
    while (reader.readLookAhead()) {
        if (const platform::Status filled = reader.fill(batch); !filled) {
            reading.error = filled.error().message;
            return;
        }
        keepPairs(batch, reading.pairs);
        use(batch);
    }
}

/// Full batches by several threads, then line by line, as a run does.
Reading readFast(const PairFiles& files, const std::string& read1Path, Choices& choices) {
    const auto blockSize = choices.choose<std::size_t>({65536, 4096, 1000, 61});
    support::TextSource source1(files.text1, blockSize);
    support::TextSource source2(files.text2, blockSize);
    reads::BatchReader reader(source1, source2,
                              choices.choose<std::size_t>({65536, 1000, 100, 31}));
    std::mutex mutex;
    std::map<std::uint64_t, std::string> byNumber;
    const auto readAll = [&] {
        ReadPairBatch batch;
        while (const auto filled = reader.read(batch)) {
            std::string pairs;
            keepPairs(batch, pairs);
            const std::lock_guard lock(mutex);
            byNumber[filled->number] = std::move(pairs);
        }
    };
    std::vector<std::thread> threads;
    for (std::size_t i = choices.below(3); i > 0; --i) {
        threads.emplace_back(readAll);
    }
    readAll();
    for (std::thread& thread : threads) {
        thread.join();
    }
    Reading reading;
    for (const auto& [number, pairs] : byNumber) {
        reading.pairs += pairs;
    }
    reads::ResumedReads read1(reader.takeRest1(), source1);
    reads::ResumedReads read2(reader.takeRest2(), source2);
    readLineByLine(read1, read2, read1Path, reading, [](const ReadPairBatch&) {});
    return reading;
}

/// Keeps what a run reports; the counters that it shows are judged as numbers.
class ReportedLines : public run::RunDisplay {
public:
    void showText(run::RunField, const std::string&) override {}
    void displayError(const std::string& line) override { add(line); }
    void displayWarning(const run::Warning& warning) override {
        add("warning: " + run::logLine(warning));
    }

    std::string lines;

private:
    void add(const std::string& line) {
        const std::lock_guard lock(m_mutex);
        lines += line;
    }
    std::mutex m_mutex;
};

/// The files of all runs, one after the other.
struct RunDirectory {
    support::TempDir directory;
    std::string read1 = directory.file("a_R1_");
    std::string read2 = directory.file("a_R2_");
    std::string failedReads = directory.file("a.failedToBeAssignedReads");
};

void requireSameRun(const PairFiles& files, const RunDirectory& place, const Reading& expected,
                    const matching::BatchResult& expectedResult) {
    static platform::WorkerPool workers(2);
    place.directory.write("a_R1_", files.text1);
    place.directory.write("a_R2_", files.text2);
    const catalogue::MutDomains domains = makeCatalogue();
    run::ReadCounters counters;
    run::ReadingProgress progress;
    ReportedLines reported;
    const platform::Status finished = run::matchReadPairs(
        {place.read1, place.read2, reads::ReadsEncoding::plain, place.failedReads}, domains,
        counters, reported, progress, workers);
    const std::string error =
        reported.lines + (finished ? std::string() : finished.error().message);
    require(error == expected.error, "a run reports something else",
            error + " / " + expected.error);
    require(finished.ok() == expected.error.empty(), "a run ends otherwise");
    require(counters.totalNumberOfReads == expectedResult.processed &&
                counters.readsFailedToBeMapped == expectedResult.failed,
            "a run counts other pairs");
    std::size_t index = 0;
    for (const auto& domain : *domains) {
        for (const auto& mutation : *domain->mutationMutAr) {
            require(mutation->match == expectedResult.counts[index++],
                    "a run counts another mutation");
        }
    }
    require(support::readFile(place.failedReads) == expectedResult.unassignedPairs,
            "a run leaves other unassigned pairs");
}

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const RunDirectory place;
    Choices choices(data, size);
    Choices ways = choices;
    choices.bytes(4);
    const PairFiles files = PairFilesMaker(choices).make();

    const catalogue::MutDomains domains = makeCatalogue();
    const matching::PlainMatcher matcher(domains);
    matching::BatchResult result;
    result.counts.resize(matching::mutationCount(domains));
    Reading plain;
    support::MemoryStream read1(files.text1, 4096);
    support::MemoryStream read2(files.text2, 4096);
    readLineByLine(read1, read2, place.read1, plain,
                   [&](const ReadPairBatch& batch) { matcher.match(batch, result); });

    const Reading fast = readFast(files, place.read1, ways);
    require(fast.pairs == plain.pairs, "other pairs");
    require(fast.error == plain.error, "another error", fast.error + " / " + plain.error);
    if (ways.below(2) == 1) {
        requireSameRun(files, place, plain, result);
    }
    return 0;
}
