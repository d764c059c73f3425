// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "run/pair_matching.h"
#include "run/run_account.h"
#include "support/catalogue_builder.h"
#include "support/temp_dir.h"

namespace run {

using Texts = std::vector<std::string>;

/// Notes all that is shown, in order.
class Display : public RunDisplay {
public:
    void showText(RunField field, const std::string& text) override {
        static const std::map<RunField, std::string> kNames = {
            {RunField::file1, "file1 "},
            {RunField::file2, "file2 "},
            {RunField::totalNumberOfReads, "total "},
            {RunField::readsMapped, "mapped "},
            {RunField::readsFailedToBeMapped, "failed "}};
        note(kNames.at(field) + text);
    }
    void displayError(const std::string& line) override { note("error " + line); }
    void displayWarning(const Warning& warning) override { note("warning " + logLine(warning)); }

    Texts shown;

private:
    void note(std::string text) {
        const std::lock_guard lock(m_mutex);
        shown.push_back(std::move(text));
    }
    std::mutex m_mutex;
};

/// Records @0, @1 and so on of one sequence.
inline std::string records(int count, const std::string& sequence) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "@" + std::to_string(i) + "\n" + sequence + "\n+\n" +
                std::string(sequence.size(), 'I') + "\n";
    }
    return text;
}

/// Shows the lines of a failed run as its driver does; whether it went well.
inline bool shownOutcome(const platform::Status& finished, RunDisplay& display) {
    std::istringstream lines(finished ? std::string() : finished.error().message);
    for (std::string line; std::getline(lines, line);) {
        display.displayError(line + "\n");
    }
    return finished.ok();
}

/// Runs of small files against a catalogue of one domain.
class MatchReadPairs : public testing::Test {
protected:
    bool run(const std::string& read1, const std::string& read2, std::size_t threads = 2) {
        platform::WorkerPool workers(threads);
        return shownOutcome(
            matchReadPairs({read1, read2, reads::ReadsEncoding::byFileName, failedReads}, domains,
                           counters, display, progress, workers),
            display);
    }
    bool runTexts(const std::string& text1, const std::string& text2, std::size_t threads = 2) {
        return run(directory.write("r1", text1), directory.write("r2", text2), threads);
    }
    std::int64_t matchOf(std::size_t domain, std::size_t mutation) const {
        return domains.value()[domain]->mutationMutAr.value()[mutation]->match;
    }

    support::TempDir directory;
    std::optional<std::string> failedReads = directory.file("failed");
    catalogue::MutDomains domains =
        support::catalogueOf({support::domainOf({{"R1", "ACGT"}, {"R1", "GGCC"}, {"R1", "GGTT"}})});
    ReadCounters counters;
    Display display;
    ReadingProgress progress;
};

} // namespace run
