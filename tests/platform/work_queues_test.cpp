// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/work_queues.h"

#include <atomic>
#include <cstddef>
#include <latch>
#include <memory>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using platform::RunLoop;
using platform::SerialQueue;
using platform::WaitGroup;
using platform::WorkerPool;
using testing::ElementsAre;

namespace {

std::vector<int> countedTo(int end) {
    std::vector<int> numbers(static_cast<std::size_t>(end));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

/// Does something when the last task that holds it is gone.
class AtTheEnd {
public:
    explicit AtTheEnd(platform::Task action) : m_action(std::move(action)) {}
    ~AtTheEnd() { m_action(); }
    AtTheEnd(const AtTheEnd&) = delete;
    AtTheEnd& operator=(const AtTheEnd&) = delete;

private:
    platform::Task m_action;
};

} // namespace

// --- Worker pool

TEST(WorkerPool, HasTheThreadsThatWereAskedFor) {
    EXPECT_EQ(WorkerPool(3).threadCount(), 3U);
    EXPECT_GE(WorkerPool::defaultThreadCount(), 1U);
}

TEST(WorkerPool, RunsTasksAtTheSameTime) {
    // Each of the three goes on only once all three have started.
    std::latch allStarted(3);
    std::atomic<int> finished = 0;
    {
        WorkerPool pool(3);
        for (int i = 0; i < 3; ++i) {
            pool.async([&] {
                allStarted.arrive_and_wait();
                ++finished;
            });
        }
    }
    EXPECT_EQ(finished, 3);
}

TEST(WorkerPool, StartsTasksInTheOrderGiven) {
    std::vector<int> seen;
    {
        WorkerPool pool(1);
        for (int i = 0; i < 1000; ++i) {
            pool.async([&seen, i] { seen.push_back(i); });
        }
    }
    EXPECT_EQ(seen, countedTo(1000));
}

TEST(WorkerPool, WaitsAtItsEndForTasksThatTasksGave) {
    std::atomic<int> finished = 0;
    {
        WorkerPool pool(2);
        for (int i = 0; i < 50; ++i) {
            pool.async([&] {
                pool.async([&] {
                    pool.async([&] { ++finished; });
                    ++finished;
                });
                ++finished;
            });
        }
    }
    EXPECT_EQ(finished, 150);
}

TEST(WorkerPool, TakesTasksFromAnyThread) {
    std::atomic<int> finished = 0;
    {
        WorkerPool pool(2);
        std::vector<std::thread> givers;
        for (int giver = 0; giver < 4; ++giver) {
            givers.emplace_back([&] {
                for (int i = 0; i < 200; ++i) {
                    pool.async([&] { ++finished; });
                }
            });
        }
        for (std::thread& giver : givers) {
            giver.join();
        }
    }
    EXPECT_EQ(finished, 800);
}

// --- Serial queue

TEST(SerialQueue, RunsOneTaskAfterTheOtherOnABorrowedPool) {
    // The vector has no lock: ThreadSanitizer would see two tasks at once.
    std::vector<int> seen;
    WorkerPool pool(4);
    {
        SerialQueue queue(pool);
        for (int i = 0; i < 2000; ++i) {
            queue.async([&seen, i] { seen.push_back(i); });
        }
    }
    EXPECT_EQ(seen, countedTo(2000));
}

TEST(SerialQueue, RunsOneTaskAfterTheOtherOnAThreadOfItsOwn) {
    std::vector<int> seen;
    std::thread::id worker;
    {
        SerialQueue queue;
        queue.async([&] { worker = std::this_thread::get_id(); });
        for (int i = 0; i < 2000; ++i) {
            queue.async([&seen, i] { seen.push_back(i); });
        }
    }
    EXPECT_EQ(seen, countedTo(2000));
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST(SerialQueue, KeepsEachGiversOrder) {
    std::vector<std::pair<int, int>> seen;
    WorkerPool pool(2);
    {
        SerialQueue queue(pool);
        std::vector<std::thread> givers;
        for (int giver = 0; giver < 3; ++giver) {
            givers.emplace_back([&queue, &seen, giver] {
                for (int i = 0; i < 300; ++i) {
                    queue.async([&seen, giver, i] { seen.emplace_back(giver, i); });
                }
            });
        }
        for (std::thread& giver : givers) {
            giver.join();
        }
    }
    std::vector<std::vector<int>> byGiver(3);
    for (const auto& [giver, i] : seen) {
        byGiver[static_cast<std::size_t>(giver)].push_back(i);
    }
    EXPECT_THAT(byGiver, testing::Each(countedTo(300)));
}

TEST(SerialQueue, MergesWhatWorkersHandOn) {
    // As a run does: workers on the pool give their results to a queue that borrows it.
    int total = 0;
    WorkerPool pool(3);
    SerialQueue merging(pool);
    WaitGroup workers;
    for (int i = 1; i <= 500; ++i) {
        workers.enter();
        pool.async([&, i] {
            merging.async([&total, i] { total += i; });
            workers.leave();
        });
    }
    workers.wait();
    merging.sync([] {});
    EXPECT_EQ(total, 500 * 501 / 2);
}

TEST(SerialQueue, SyncReturnsWhenAllBeforeItHasRun) {
    std::vector<int> seen;
    WorkerPool pool(2);
    SerialQueue borrowing(pool);
    SerialQueue owning;
    for (SerialQueue* queue : {&borrowing, &owning}) {
        seen.clear();
        for (int i = 0; i < 9; ++i) {
            queue->async([&seen, i] { seen.push_back(i); });
        }
        queue->sync([&seen] { seen.push_back(9); });
        EXPECT_EQ(seen, countedTo(10));
    }
}

TEST(SerialQueue, WaitsAtItsEndForTasksThatTasksGave) {
    std::vector<int> seen;
    WorkerPool pool(2);
    {
        SerialQueue queue(pool);
        queue.async([&] {
            queue.async([&] {
                queue.async([&] { seen.push_back(2); });
                seen.push_back(1);
            });
            seen.push_back(0);
        });
    }
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
}

TEST(SerialQueue, LetsGoWhatItsTasksHoldBeforeItEnds) {
    const auto held = std::make_shared<int>(0);
    WorkerPool pool(2);
    {
        SerialQueue queue(pool);
        for (int i = 0; i < 100; ++i) {
            queue.async([held] { ++*held; });
        }
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 100);
}

TEST(SerialQueue, OfItsOwnThreadMayBlockWithoutHoldingUpAPool) {
    std::latch poolHasWorked(1);
    bool blockedOneWentOn = false;
    WorkerPool pool(1);
    {
        SerialQueue queue;
        queue.async([&] {
            poolHasWorked.wait();
            blockedOneWentOn = true;
        });
        pool.async([&] { poolHasWorked.count_down(); });
    }
    EXPECT_TRUE(blockedOneWentOn);
}

// --- Wait group

TEST(WaitGroup, DoesNotWaitWhenNothingIsInFlight) {
    WaitGroup group;
    group.wait();
    group.enter();
    group.leave();
    group.wait();
}

TEST(WaitGroup, WaitsUntilAllHaveLeftAndCanBeUsedAgain) {
    WorkerPool pool(3);
    WaitGroup group;
    for (int round = 0; round < 20; ++round) {
        std::vector<int> results(8);
        for (int& result : results) {
            group.enter();
            pool.async([&group, &result] {
                result = 1;
                group.leave();
            });
        }
        group.wait();
        EXPECT_THAT(results, testing::Each(1));
    }
}

// --- Run loop

TEST(RunLoop, RunsWhatWasPostedBeforeItWasStopped) {
    RunLoop loop;
    std::vector<int> seen;
    for (int i = 0; i < 5; ++i) {
        loop.async([&seen, i] { seen.push_back(i); });
    }
    loop.stop();
    loop.run();
    EXPECT_EQ(seen, countedTo(5));
}

TEST(RunLoop, RunsTasksOnTheThreadThatCallsRun) {
    RunLoop loop;
    std::thread::id runner;
    std::thread poster([&] {
        loop.async([&] { runner = std::this_thread::get_id(); });
        loop.stop();
    });
    loop.run();
    poster.join();
    EXPECT_EQ(runner, std::this_thread::get_id());
}

TEST(RunLoop, WaitsForTasksOfOtherThreads) {
    RunLoop loop;
    std::vector<int> seen;
    SerialQueue background;
    for (int i = 0; i < 200; ++i) {
        background.async([&loop, &seen, i] { loop.async([&seen, i] { seen.push_back(i); }); });
    }
    background.async([&loop] { loop.stop(); });
    loop.run();
    EXPECT_EQ(seen, countedTo(200));
}

TEST(RunLoop, RunsTasksThatTasksPost) {
    RunLoop loop;
    std::vector<int> seen;
    loop.async([&] {
        seen.push_back(0);
        loop.async([&] {
            seen.push_back(1);
            loop.stop();
        });
    });
    loop.run();
    EXPECT_THAT(seen, ElementsAre(0, 1));
}

TEST(RunLoop, CanRunAgainAfterItWasStopped) {
    RunLoop loop;
    int runs = 0;
    for (int round = 0; round < 3; ++round) {
        loop.async([&] {
            ++runs;
            loop.stop();
        });
        loop.run();
    }
    EXPECT_EQ(runs, 3);
}

TEST(RunLoop, LetsTheEndOfATaskPostAnother) {
    RunLoop loop;
    bool ran = false;
    auto last = std::make_shared<AtTheEnd>([&] {
        loop.async([&] {
            ran = true;
            loop.stop();
        });
    });
    loop.async([held = std::move(last)] { EXPECT_TRUE(held); });
    loop.run();
    EXPECT_TRUE(ran);
}
