// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>

namespace platform {

using Task = std::function<void()>;

/// The shared pool of worker threads. Tasks start in the order given and run concurrently. A task
/// must not throw, and must not wait for another task of the pool. Callable from any thread.
class WorkerPool {
public:
    /// REQUIRES: threadCount >= 1.
    explicit WorkerPool(std::size_t threadCount);
    /// Waits for every task that was given.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    void async(Task task);
    std::size_t threadCount() const noexcept;

    /// As many threads as the machine runs at once, at least 1.
    static std::size_t defaultThreadCount() noexcept;

private:
    friend class SerialQueue;
    struct State;
    std::unique_ptr<State> m_state;
};

/// Runs tasks one after the other, in the order given. Callable from any thread.
class SerialQueue {
public:
    /// A queue with a thread of its own, whose tasks may block.
    SerialQueue();
    /// A queue that borrows the pool's threads, whose tasks must be short. `pool` must outlive it.
    explicit SerialQueue(WorkerPool& pool);
    /// Waits for every task that was given.
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    void async(Task task);
    /// Runs `task` on the queue and returns when it and all before it have run. Never call it from
    /// a task of this queue nor, for a borrowing queue, from a task of its pool.
    void sync(const Task& task);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Counts work in flight: enter before handing on, leave when done, wait until all have left.
class WaitGroup {
public:
    void enter();
    void leave();
    void wait();

private:
    std::mutex m_mutex;
    std::condition_variable m_empty;
    std::size_t m_inFlight = 0;
};

/// The main thread's queue: records of documents and everything on screen change only there.
class MainQueue {
public:
    virtual ~MainQueue() = default;
    /// Runs `task` on the main thread later, after everything posted before. Callable from any
    /// thread.
    virtual void async(Task task) = 0;
};

/// The main queue of a program without a window: the thread that calls run() is the main thread.
class RunLoop : public MainQueue {
public:
    RunLoop();
    ~RunLoop() override;

    void async(Task task) override;
    /// Runs tasks until stop() was called, then returns; tasks posted before stop() have run.
    void run();
    /// Callable from any thread.
    void stop();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Makes the main thread wait for work that takes long, so that it is done when the caller goes on.
/// A program with a window repaints it meanwhile.
class CallerHold {
public:
    virtual ~CallerHold() = default;
    /// Runs `work` and returns when it is done. What it throws reaches the caller. `work` may run
    /// on another thread, and tasks of the main queue may run before this returns, but no user
    /// input is handled. REQUIRES: called on the main thread.
    virtual void hold(const Task& work) = 0;
};

/// For a program without a window: the caller does the work itself.
class DirectHold : public CallerHold {
public:
    void hold(const Task& work) override { work(); }
};

} // namespace platform
