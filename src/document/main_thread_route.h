// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/work_queues.h"
#include "run/run_display.h"

namespace document {

/// A document's way to the main queue: what it gives is run there in the order given.
///
/// Workers show their running counters thousands of times a second, and each task that wakes the
/// main thread costs them more than the text is worth. So counters that are shown one after the
/// other share a task, which gives each field its latest text; and after a field's text went its
/// way, the next one is held back until one comes that is a pause away from it. Any other task
/// takes with it what is held back: the last counters of a run come before whatever ends it.
///
/// Callable from any thread; made and destroyed on the main thread, when no other uses it.
class MainThreadRoute {
public:
    using Clock = std::chrono::steady_clock;
    using SetText = std::function<void(run::RunField, const std::string&)>;

    /// A counter that runs 25 times a second looks smooth.
    static constexpr Clock::duration kPause = std::chrono::milliseconds(40);

    /// `setText` is called on the main thread. `now` tells the time.
    MainThreadRoute(platform::MainQueue& mainQueue, SetText setText,
                    std::function<Clock::time_point()> now = &Clock::now);
    MainThreadRoute(const MainThreadRoute&) = delete;
    MainThreadRoute& operator=(const MainThreadRoute&) = delete;

    /// Runs `task` on the main thread later, unless the route is gone by then.
    void async(platform::Task task);
    /// Runs `task` at once where the caller is the main thread, else as async() does. For what the
    /// main thread itself has to say: posted, it would come after what a next run said meanwhile.
    void dispatch(platform::Task task);
    /// Gives the field that text on the main thread later, unless the route is gone by then or a
    /// later text with nothing between them takes its place.
    void showCounter(run::RunField field, const std::string& text);

private:
    /// Texts that nothing came between: of each field the latest, in the order in which they came.
    struct Texts {
        std::vector<std::pair<run::RunField, std::string>> latest;
        bool posted = false;
    };

    void post(platform::Task task);
    void postTexts();
    void show(const std::shared_ptr<Texts>& texts);

    const std::thread::id m_mainThread = std::this_thread::get_id();
    platform::MainQueue& m_mainQueue;
    SetText m_setText;
    std::function<Clock::time_point()> m_now;

    /// Held while posting, too: the order of the tasks is that in which it was taken.
    std::mutex m_mutex;
    /// What the next text joins; null when it begins a new task.
    std::shared_ptr<Texts> m_open;
    /// From when on a field's text is not held back. A field that is not there may go at once.
    std::map<run::RunField, Clock::time_point> m_nextPost;
    /// Tasks in the main queue hold it weakly: without it they do nothing.
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};

} // namespace document
