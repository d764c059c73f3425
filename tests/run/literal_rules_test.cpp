// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Random files and catalogues, good and bad, against a literal writing of the rules.
#include <algorithm>
#include <array>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "run/pair_matching.h"
#include "run/run_account.h"
#include "support/catalogue_builder.h"
#include "support/literal_matching.h"
#include "support/temp_dir.h"

namespace run {
namespace {

class ErrorDisplay : public RunDisplay {
public:
    void showText(RunField, const std::string&) override {}
    void displayError(const std::string& line) override { errors += line; }
    void displayWarning(const run::Warning& warning) override { errors += run::logLine(warning); }
    std::string errors;
};

/// Small made-up inputs in which rare things are common.
class Maker {
public:
    explicit Maker(unsigned seed) : m_random(seed) {}

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(m_random);
    }
    bool oneIn(std::size_t count) { return below(count) == 0; }

    catalogue::MutDomains makeCatalogue() {
        static const std::vector<std::string> strands = {"R1", "R2", "R1R2", "R1R2", "r1"};
        std::vector<std::shared_ptr<catalogue::MutDomain>> domains;
        for (std::size_t d = below(5); d > 0; --d) {
            std::vector<support::Target> targets;
            for (std::size_t m = below(4); m > 0; --m) {
                const bool wild = oneIn(3);
                targets.push_back({strands[below(strands.size())],
                                   text(below(6), wild ? "ACGTACGTRBDHVNKMSWY" : "ACGT"), wild});
            }
            domains.push_back(support::domainOf(targets, oneIn(2)));
            // Of an earlier run.
            domains.back()->totalNumberOfNormalReads = 7;
            domains.back()->totalNumberOfMutantReads = 11;
        }
        return support::catalogueOf(std::move(domains));
    }

    /// Two small files, now and then of more than a batch.
    std::pair<std::string, std::string> makeFiles() {
        return makeFiles(oneIn(5) ? below(2600) : below(60));
    }

    /// Two files, mostly of the same pairs, rarely with something wrong.
    std::pair<std::string, std::string> makeFiles(std::size_t pairs) {
        const std::string end = oneIn(4) ? "\r\n" : oneIn(6) ? "\r" : "\n";
        const std::size_t rarity = oneIn(3) ? 40 : 100000;
        std::pair<std::string, std::string> files;
        for (std::size_t i = 0; i < pairs; ++i) {
            const std::string name = "@r" + std::to_string(i);
            files.first += record(name + (oneIn(2) ? " 1:N" : " 1"), end, rarity);
            files.second += record(name + " 2:N", end, rarity);
        }
        spoil(files.first);
        spoil(files.second);
        return files;
    }

private:
    std::string text(std::size_t length, const std::string& letters) {
        std::string made;
        for (; length > 0; --length) {
            made += letters[below(letters.size())];
        }
        return made;
    }

    std::size_t lineLength(std::size_t rarity) {
        return oneIn(rarity) ? 505 + below(11) : oneIn(50) ? 0 : below(25);
    }

    std::string record(std::string header, const std::string& end, std::size_t rarity) {
        if (oneIn(rarity)) {
            header = oneIn(2) ? "" : header + text(lineLength(rarity), "x");
        }
        std::string sequence = text(lineLength(rarity), oneIn(3) ? "ACGTNacgtRYB" : "ACGT");
        if (oneIn(rarity) && !sequence.empty()) {
            sequence[below(sequence.size())] = '\0';
        }
        const std::size_t length = oneIn(8) ? below(25) : sequence.size();
        const std::string quality = text(length, oneIn(2) ? "IIII@?" : "IJK\xc8");
        return header + end + sequence + end + "+" + end + quality + end;
    }

    void spoil(std::string& file) {
        if (oneIn(6) && !file.empty()) {
            file.resize(below(file.size()));
        }
        if (oneIn(12) && !file.empty()) {
            file[below(file.size())] = "\n\r\0A "[below(5)];
        }
    }

    std::mt19937 m_random;
};

/// The unassigned pairs of a run's file, order apart.
std::vector<std::string> pairsOf(const std::string& file) {
    std::vector<std::string> pairs;
    std::istringstream lines(file);
    std::string first;
    std::string second;
    while (std::getline(lines, first) && std::getline(lines, second)) {
        pairs.push_back(first + "\n" + second + "\n");
    }
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

void expectAgreement(const catalogue::MutDomains& domains, const std::string& text1,
                     const std::string& text2, platform::WorkerPool& workers) {
    const support::TempDir directory;
    const std::string path1 = directory.write("r1", text1);
    const PairedReads reads = {path1, directory.write("r2", text2), reads::ReadsEncoding::plain,
                               directory.file("failed")};
    support::LiteralOutcome expected = support::LiteralMatching(text1, text2, path1, domains).run();
    ReadCounters counters;
    ErrorDisplay display;
    ReadingProgress progress;
    const platform::Status finished =
        matchReadPairs(reads, domains, counters, display, progress, workers);

    EXPECT_EQ(finished.ok(), expected.succeeded);
    EXPECT_EQ(display.errors + (finished ? std::string() : finished.error().message),
              expected.error);
    std::vector<std::int64_t> counts;
    std::vector<std::int64_t> normalReads;
    std::vector<std::int64_t> mutantReads;
    for (const auto& domain : domains.value()) {
        normalReads.push_back(domain->totalNumberOfNormalReads);
        mutantReads.push_back(domain->totalNumberOfMutantReads);
        for (const auto& mutation : domain->mutationMutAr.value()) {
            counts.push_back(mutation->match);
        }
    }
    EXPECT_EQ(counts, expected.counts);
    EXPECT_EQ(normalReads, expected.normalReads);
    EXPECT_EQ(mutantReads, expected.mutantReads);
    EXPECT_EQ(counters.totalNumberOfReads, expected.total);
    EXPECT_EQ(counters.readsFailedToBeMapped, expected.failed);
    EXPECT_EQ(counters.readsMapped, finished ? expected.total - expected.failed : 0);
    std::sort(expected.unassigned.begin(), expected.unassigned.end());
    EXPECT_TRUE(pairsOf(support::readFile(directory.file("failed"))) == expected.unassigned);
}

TEST(WholeRun, AgreesWithTheLiteralRulesForAnyNumberOfWorkers) {
    unsigned seed = 0;
    for (const std::size_t threads : {1u, 2u, 8u}) {
        platform::WorkerPool workers(threads);
        for (int i = 0; i < 70; ++i) {
            SCOPED_TRACE("seed " + std::to_string(++seed));
            Maker maker(seed);
            const auto domains = maker.makeCatalogue();
            const auto [text1, text2] = maker.makeFiles();
            expectAgreement(domains, text1, text2, workers);
        }
    }
}

TEST(WholeRun, AgreesWithTheLiteralRulesOverManyBatches) {
    for (unsigned seed = 1001; seed <= 1018; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Maker maker(seed);
        const auto domains = maker.makeCatalogue();
        const auto [text1, text2] = maker.makeFiles(3000 + maker.below(9000));
        platform::WorkerPool workers(std::array{1U, 2U, 8U}[seed % 3]);
        expectAgreement(domains, text1, text2, workers);
    }
}

} // namespace
} // namespace run
