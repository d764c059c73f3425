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

/// A document's way to the main queue, which runs what it is given in the order given.
///
/// Workers show running counters thousands of times a second, and each task that wakes the main
/// thread costs them more than the text is worth. So counters that follow each other share a task,
/// which gives each field its latest text. And after a field's text was posted, later ones wait
/// until one comes that is a pause away from it. Any other task first posts the waiting texts: the
/// last counters of a run come before whatever ends it.
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
    /// main thread itself has to say: a posted task would come after what the next run says.
    void dispatch(platform::Task task);
    /// Gives the field that text on the main thread later, unless the route is gone by then or a
    /// later text with nothing between them takes its place.
    void showCounter(run::RunField field, const std::string& text);

private:
    /// Texts with no other task between them: the latest of each field, in the order of their
    /// coming.
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

    /// Also held while posting: tasks are posted in the order in which it was taken.
    std::mutex m_mutex;
    /// What the next text joins; null when it begins a new task.
    std::shared_ptr<Texts> m_open;
    /// When a field's text may be posted again. A field that is not in it may go at once.
    std::map<run::RunField, Clock::time_point> m_nextPost;
    /// Tasks in the main queue hold it weakly: without it they do nothing.
    std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};

} // namespace document
