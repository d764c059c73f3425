// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What a run shows between its start and its end. With one worker the moments are known: it is
// through with eight batches, and shows the total each time, before the first of them is merged;
// then they are merged, and it is through with the next eight.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "run/match_read_pairs.h"

namespace run {
namespace {

class RunningDisplay : public MatchReadPairs {
protected:
    /// What was shown between the three lines of the start and the three of the end.
    Texts runningLines() const {
        constexpr std::ptrdiff_t kLines = 3;
        if (display.shown.size() < 2 * kLines) {
            ADD_FAILURE() << "a run shows its start and its end";
            return {};
        }
        return {display.shown.begin() + kLines, display.shown.end() - kLines};
    }

    /// The totals among them, each of which comes with zeros in the other fields.
    Texts runningTotals() const {
        const Texts lines = runningLines();
        Texts totals;
        for (std::size_t i = 0; i < lines.size(); i += 3) {
            totals.push_back(lines[i]);
            EXPECT_EQ(lines[i].rfind("total ", 0), 0u) << lines[i];
            EXPECT_EQ(i + 1 < lines.size() ? lines[i + 1] : "", "mapped 0");
            EXPECT_EQ(i + 2 < lines.size() ? lines[i + 2] : "", "failed 0");
        }
        return totals;
    }

    Texts lastLines() const { return {display.shown.end() - 3, display.shown.end()}; }
};

bool holds(const Texts& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

TEST_F(RunningDisplay, ShowsMultiplesOfAThousandWithZerosForTheRest) {
    ASSERT_TRUE(runTexts(records(20500, "TACGT"), records(20500, "A"), 1));
    const Texts totals = runningTotals();
    for (const std::string& total : totals) {
        EXPECT_TRUE(total == "total 0" || total.substr(total.size() - 3) == "000") << total;
    }
    EXPECT_EQ(totals.at(0), "total 0");
    EXPECT_TRUE(holds(totals, "total 8000"));
    EXPECT_TRUE(holds(totals, "total 16000"));
    EXPECT_FALSE(holds(totals, "total 20500"));
    EXPECT_EQ(lastLines(), (Texts{"total 20500", "failed 0", "mapped 20500"}));
}

TEST_F(RunningDisplay, ShowsNoTotalBetweenTwoThousands) {
    // Pairs with an empty sequence are not counted: 500 of the first batch are.
    const std::string empty = records(500, "");
    ASSERT_TRUE(runTexts(empty + records(9500, "TACGT"), empty + records(9500, "A"), 1));
    // What stands before the first merge; then 500 are missing from every thousand.
    EXPECT_EQ(runningTotals(), Texts(8, "total 0"));
    EXPECT_EQ(lastLines(), (Texts{"total 9500", "failed 0", "mapped 9500"}));
}

TEST_F(RunningDisplay, ShowsTheTotalOfZeroWhenRead2IsEmpty) {
    ASSERT_TRUE(runTexts(records(1, "TACGT"), ""));
    EXPECT_EQ(runningLines(), (Texts{"total 0", "mapped 0", "failed 0"}));
}

TEST_F(RunningDisplay, ShowsTheTotalOnceHoweverManyReadsHaveNoMate) {
    ASSERT_TRUE(runTexts(records(8100, "TACGT"), records(8000, "A"), 1));
    const Texts totals = runningTotals();
    EXPECT_EQ(std::count(totals.begin(), totals.end(), "total 8000"), 1);
}

TEST_F(RunningDisplay, ShowsNoTotalOfOneForReadsWithoutAMate) {
    ASSERT_TRUE(runTexts(records(100, "TACGT"), records(1, "A"), 1));
    EXPECT_FALSE(holds(runningLines(), "total 1"));
    // Here all is merged before the first read without a mate is met.
    ASSERT_TRUE(runTexts(records(8000, "TACGT"), records(7999, "A"), 1));
    EXPECT_FALSE(holds(runningLines(), "total 7999"));
    EXPECT_EQ(lastLines(), (Texts{"total 7999", "failed 0", "mapped 7999"}));
}

/// Throws on the reading thread once a worker is within it, which it keeps there for a while.
class ThrowingDisplay : public Display {
public:
    void showText(RunField field, const std::string& text) override {
        Display::showText(field, text);
        if (field != RunField::readsMapped) {
            return;
        }
        if (std::this_thread::get_id() != m_readingThread) {
            m_workerIsIn.set_value();
            expectSoon(m_thrown);
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            workerHasLeft = true;
        } else if (m_started) {
            expectSoon(m_workerIsIn);
            m_thrown.set_value();
            throw std::runtime_error("the display is gone");
        }
        m_started = true;
    }

    std::atomic<bool> workerHasLeft{false};

private:
    /// The limit only keeps a broken run from hanging.
    static void expectSoon(std::promise<void>& promise) {
        EXPECT_EQ(promise.get_future().wait_for(std::chrono::seconds(10)),
                  std::future_status::ready);
    }

    const std::thread::id m_readingThread = std::this_thread::get_id();
    std::atomic<bool> m_started{false};
    std::promise<void> m_workerIsIn;
    std::promise<void> m_thrown;
};

TEST_F(RunningDisplay, ThatThrowsEndsTheRunOnlyWhenNoWorkerIsLeftInIt) {
    // An odd line end makes this thread the one that reads: the one batch goes to a worker, then it
    // meets a read without a mate. Merged or not, the batch leaves a total that both show.
    std::string text1 = records(1001, "TACGT");
    text1.insert(text1.find('\n'), 1, '\r');
    const std::string read1 = directory.write("r1", text1);
    const std::string read2 = directory.write("r2", records(1000, "A"));
    ThrowingDisplay throwing;
    platform::WorkerPool workers(2);
    EXPECT_THROW(matchReadPairs({read1, read2, reads::ReadsEncoding::plain, failedReads}, domains,
                                counters, throwing, progress, workers),
                 std::runtime_error);
    EXPECT_TRUE(throwing.workerHasLeft);
}

/// Throws on whatever thread is none of the caller's, as soon as so many pairs were read: till then
/// the workers stay in their batches, and what is read meanwhile is all that may be in flight.
class DisplayThatThrowsOnWorkers : public Display {
public:
    DisplayThatThrowsOnWorkers(const ReadingProgress& progress, std::int64_t pairs)
        : m_progress(progress), m_pairs(pairs) {}

    void showText(RunField field, const std::string& text) override {
        if (field == RunField::readsMapped && std::this_thread::get_id() != m_callersThread) {
            waitForThePairs();
            throw std::runtime_error("the display is gone");
        }
        Display::showText(field, text);
    }

private:
    /// The limit only keeps a broken run from hanging.
    void waitForThePairs() const {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (m_progress.pairs < m_pairs && std::chrono::steady_clock::now() < limit) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    const std::thread::id m_callersThread = std::this_thread::get_id();
    const ReadingProgress& m_progress;
    const std::int64_t m_pairs;
};

TEST_F(RunningDisplay, ThatThrowsOnWorkersEndsTheRunWithWhatItThrew) {
    const std::string regular = records(30000, "TACGT");
    std::string odd = regular; // is read line by line
    odd.insert(odd.find('\n'), 1, '\r');
    const std::string read1 = directory.write("r1", regular);
    const std::string oddRead1 = directory.write("odd", odd);
    const std::string read2 = directory.write("r2", regular);
    struct Case {
        std::string read1;
        std::size_t threads;
        std::int64_t pairsRead;
    };
    // Eight batches are in flight at most; a worker that reads for itself is in one.
    for (const Case& each : {Case{read1, 1, 1000}, Case{read1, 3, 3000}, Case{read1, 8, 8000},
                             Case{oddRead1, 1, 8000}, Case{oddRead1, 8, 8000}}) {
        DisplayThatThrowsOnWorkers throwing(progress, each.pairsRead);
        platform::WorkerPool workers(each.threads);
        EXPECT_THROW(matchReadPairs({each.read1, read2, reads::ReadsEncoding::plain, failedReads},
                                    domains, counters, throwing, progress, workers),
                     std::runtime_error);
        EXPECT_EQ(progress.pairs, each.pairsRead) << each.threads << " threads";
    }
}

} // namespace
} // namespace run
