// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Whole runs over sources that fail or throw at a place that the test chooses.
#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "reads/watched_source.h"
#include "run/match_read_pairs.h"
#include "support/text_source.h"

namespace run {
namespace {

class FailingSources : public MatchReadPairs {
protected:
    /// The line for the error log; empty when all went well.
    std::string errorOf(std::unique_ptr<reads::ReadSource> source1,
                        std::unique_ptr<reads::ReadSource> source2, std::size_t threads) {
        counters = {};
        platform::WorkerPool workers(threads);
        const PairedReads reads{"r1", "r2", reads::ReadsEncoding::plain, std::nullopt};
        const platform::Status finished =
            matchOpenFiles(reads, {std::move(source1), std::move(source2), std::nullopt}, domains,
                           counters, display, progress, workers);
        EXPECT_TRUE(finished || !finished.error().message.empty());
        return finished ? std::string() : finished.error().message;
    }
};

TEST_F(FailingSources, ThatThrowOnAWorkerEndTheRunWithWhatTheyThrew) {
    const std::string text = records(12000, "TACGT");
    const auto throwing = [&] {
        return std::make_unique<reads::WatchedSource>(text, [&](std::size_t taken) {
            if (taken >= text.size() / 2) {
                throw std::bad_alloc();
            }
        });
    };
    const auto sound = [&] { return std::make_unique<support::TextSource>(text, 1000); };
    for (const std::size_t threads : {1u, 8u}) {
        EXPECT_EQ(errorOf(sound(), sound(), threads), "");
        EXPECT_THROW(errorOf(throwing(), sound(), threads), std::bad_alloc);
        EXPECT_THROW(errorOf(sound(), throwing(), threads), std::bad_alloc);
    }
}

TEST_F(FailingSources, BehindTheReadsThatEndTheRunAreNotItsFailure) {
    // File 1 fails in the batch after the one whose headers differ. There must be a worker that
    // finds out before the headers are compared, if there are workers enough.
    const std::string text1 = records(2500, "TACGT");
    std::string text2 = records(3500, "A");
    const std::size_t differing = text2.find("@1500\n");
    text2[differing + 1] = 'x';
    for (const std::size_t threads : {1u, 8u}) {
        std::promise<void> file1Ends;
        bool hasEnded = false;
        const auto tell = [&](std::size_t taken) {
            if (taken == text1.size() && !std::exchange(hasEnded, true)) {
                file1Ends.set_value();
            }
        };
        const auto wait = [&, ended = file1Ends.get_future().share()](std::size_t taken) {
            if (threads > 1 && taken >= differing) {
                // The limit only keeps a broken run from hanging.
                EXPECT_EQ(ended.wait_for(std::chrono::seconds(10)), std::future_status::ready);
            }
        };
        EXPECT_EQ(errorOf(std::make_unique<reads::WatchedSource>(text1, tell, "Input/output error"),
                          std::make_unique<reads::WatchedSource>(text2, wait), threads),
                  "Two fastq files do not match at @1500.\n");
        EXPECT_EQ(counters.totalNumberOfReads, 1000);
    }
}

TEST_F(FailingSources, AreTheFailureWhereTheReadsAreCutByIt) {
    const std::string text = records(2500, "TACGT");
    for (const std::size_t threads : {1u, 8u}) {
        for (const std::size_t cut : {text.find("@1500\n"), text.find("@1500\n") + 3}) {
            const auto whole = [&] { return std::make_unique<support::TextSource>(text, 1000); };
            const auto failing = [&] {
                return std::make_unique<support::TextSource>(text.substr(0, cut), 1000,
                                                             "Input/output error");
            };
            EXPECT_EQ(errorOf(failing(), whole(), threads),
                      "Cannot read r1: Input/output error.\n");
            EXPECT_EQ(errorOf(whole(), failing(), threads),
                      "Cannot read r2: Input/output error.\n");
        }
    }
}

} // namespace
} // namespace run
