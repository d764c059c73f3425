// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/main_thread_route.h"

#include <deque>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using document::MainThreadRoute;
using run::RunField;
using testing::ElementsAre;
using testing::IsEmpty;

/// A main queue whose tasks run when the test says so.
class HeldQueue : public platform::MainQueue {
public:
    void async(platform::Task task) override { tasks.push_back(std::move(task)); }
    void runAll() {
        while (!tasks.empty()) {
            const platform::Task task = std::move(tasks.front());
            tasks.pop_front();
            task();
        }
    }
    std::deque<platform::Task> tasks;
};

class MainThreadRouteTest : public testing::Test {
protected:
    void showTotal(const std::string& text) {
        route->showCounter(RunField::totalNumberOfReads, text);
    }
    void showMapped(const std::string& text) { route->showCounter(RunField::readsMapped, text); }
    /// Any other task.
    void post(const std::string& text) {
        route->async([this, text] { shown.push_back(text); });
    }
    void note(RunField field, const std::string& text) {
        shown.push_back((field == RunField::totalNumberOfReads ? "total " : "mapped ") + text);
    }

    HeldQueue queue;
    std::vector<std::string> shown;
    MainThreadRoute::Clock::time_point now;
    std::unique_ptr<MainThreadRoute> route = std::make_unique<MainThreadRoute>(
        queue, [this](RunField field, const std::string& text) { note(field, text); },
        [this] { return now; });
};

TEST_F(MainThreadRouteTest, GivesEachFieldItsLatestTextInOneTask) {
    showTotal("0");
    showMapped("0");
    showTotal("1000");
    showTotal("2000");
    EXPECT_EQ(queue.tasks.size(), 1U);
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("mapped 0", "total 2000"));
}

TEST_F(MainThreadRouteTest, ShowsTheLatestTextsInTheOrderInWhichTheyCame) {
    showTotal("0");
    showMapped("0");
    showTotal("3"); // The run's end: what follows it is shown after it.
    queue.runAll();
    showMapped("3");
    post("end");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("mapped 0", "total 3", "mapped 3", "end"));
}

TEST_F(MainThreadRouteTest, HoldsOneTaskInAQueueThatRunsNothingForLong) {
    for (int i = 0; i <= 1000; ++i) {
        showTotal(std::to_string(i));
        showMapped("0");
        now += MainThreadRoute::kPause;
    }
    EXPECT_EQ(queue.tasks.size(), 1U);
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "mapped 0"));
}

TEST_F(MainThreadRouteTest, HoldsAFieldsNextTextBackForAPause) {
    showTotal("1000");
    queue.runAll();
    now += MainThreadRoute::kPause / 2;
    showTotal("2000");
    EXPECT_THAT(queue.tasks, IsEmpty());
    now += MainThreadRoute::kPause / 2;
    showTotal("3000");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "total 3000"));
}

TEST_F(MainThreadRouteTest, HoldsNoFieldBackForAnother) {
    // Else counters of the patient before would stand beside the new total.
    showTotal("0");
    queue.runAll();
    showMapped("0");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 0", "mapped 0"));
}

TEST_F(MainThreadRouteTest, ShowsWhatWasHeldBackBeforeTheNextTask) {
    showTotal("1000");
    queue.runAll();
    showTotal("2000");
    showMapped("7");
    post("end");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "total 2000", "mapped 7", "end"));
}

TEST_F(MainThreadRouteTest, LetsNoTextOvertakeATask) {
    showTotal("1000");
    post("error");
    showTotal("2000");
    post("end");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "error", "total 2000", "end"));
}

TEST_F(MainThreadRouteTest, HoldsNothingBackForWhatWasShownBeforeATask) {
    showTotal("1000");
    post("next patient");
    showTotal("0");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "next patient", "total 0"));
}

TEST_F(MainThreadRouteTest, TakesTextsAndTasksFromItsOwnTasks) {
    route->async([this] {
        showTotal("1000");
        post("end");
    });
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("total 1000", "end"));
}

TEST_F(MainThreadRouteTest, DispatchesAtOnceOnTheMainThread) {
    showTotal("1000");
    route->dispatch([this] { shown.push_back("said"); });
    EXPECT_THAT(shown, ElementsAre("said"));
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("said", "total 1000"));
}

TEST_F(MainThreadRouteTest, DispatchesInOrderFromAnyOtherThread) {
    post("earlier");
    std::thread([this] { route->dispatch([this] { shown.push_back("said"); }); }).join();
    EXPECT_THAT(shown, IsEmpty());
    post("later");
    queue.runAll();
    EXPECT_THAT(shown, ElementsAre("earlier", "said", "later"));
}

TEST_F(MainThreadRouteTest, IsSilentOnceItIsGone) {
    showTotal("1000");
    post("end");
    route.reset();
    queue.runAll();
    EXPECT_THAT(shown, IsEmpty());
}

TEST(MainThreadRoute, KeepsEveryThreadsOrderAndItsLastText) {
    platform::RunLoop loop;
    std::vector<int> counters(2);
    std::vector<int> countersAtTask(2);
    MainThreadRoute route(loop, [&](RunField field, const std::string& text) {
        int& counter = counters[field == RunField::readsMapped ? 1 : 0];
        EXPECT_GT(std::stoi(text), counter);
        counter = std::stoi(text);
    });
    const auto give = [&](RunField field, std::size_t place) {
        for (int i = 1; i <= 3000; ++i) {
            route.showCounter(field, std::to_string(i));
            if (i % 1000 == 0) {
                route.async([&, place, i] {
                    EXPECT_EQ(counters[place], i);
                    countersAtTask[place] = i;
                });
            }
        }
    };
    std::thread giver0(give, RunField::totalNumberOfReads, 0);
    std::thread giver1(give, RunField::readsMapped, 1);
    std::thread ender([&] {
        giver0.join();
        giver1.join();
        loop.stop();
    });
    loop.run();
    ender.join();
    EXPECT_THAT(countersAtTask, ElementsAre(3000, 3000));
}

} // namespace
