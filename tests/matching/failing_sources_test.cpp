// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Whole runs over sources that fail or throw at a place that the test chooses.
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "matching/match_read_pairs.h"
#include "matching/matching_run.h"
#include "support/text_source.h"

namespace matching {
namespace {

/// Calls before each block, with how many bytes it has given.
class WatchedSource : public support::TextSource {
public:
    using Watcher = std::function<void(std::size_t)>;

    WatchedSource(const std::string& text, Watcher beforeBlock, std::string errorAtEnd = "")
        : TextSource(text, 1000, std::move(errorAtEnd)), m_beforeBlock(std::move(beforeBlock)) {}

private:
    bool nextBlock() override {
        m_beforeBlock(fileBytesTaken());
        return TextSource::nextBlock();
    }
    Watcher m_beforeBlock;
};

class FailingSources : public MatchReadPairs {
protected:
    /// The line for the error log; empty when all went well.
    std::string errorOf(std::unique_ptr<ReadSource> source1, std::unique_ptr<ReadSource> source2,
                        std::size_t threads) {
        platform::WorkerPool workers(threads);
        const PairedReads reads{"r1", "r2", ReadsEncoding::plain, std::nullopt};
        MatchingRun matchingRun(reads, domains,
                                RunFiles{std::move(source1), std::move(source2), std::nullopt},
                                counters, display, progress, workers);
        EXPECT_EQ(matchingRun.readAndMatch(), matchingRun.error().empty());
        return matchingRun.error();
    }
};

TEST_F(FailingSources, ThatThrowOnAWorkerEndTheRunWithWhatTheyThrew) {
    const std::string text = records(12000, "TACGT");
    const auto throwing = [&] {
        return std::make_unique<WatchedSource>(text, [&](std::size_t taken) {
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

} // namespace
} // namespace matching
