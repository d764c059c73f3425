// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Asio behind plain classes: the pool is its thread pool, a serial queue one of its strands, the
// run loop its I/O context without any I/O. It is included here and nowhere else. Asio's own
// waiting does not cover what the queues promise at their ends, so a queue counts its tasks in a
// wait group. Tested by work_queues_test.cpp, under ThreadSanitizer as well.
#include "platform/work_queues.h"

#include <optional>
#include <thread>
#include <utility>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/strand.hpp>
#include <asio/thread_pool.hpp>

namespace platform {

// --- Wait group

void WaitGroup::enter() {
    const std::lock_guard lock(m_mutex);
    ++m_inFlight;
}

void WaitGroup::leave() {
    const std::lock_guard lock(m_mutex);
    if (--m_inFlight == 0) {
        // Under the lock: who waits may destroy the group as soon as it is let go.
        m_empty.notify_all();
    }
}

void WaitGroup::wait() {
    std::unique_lock lock(m_mutex);
    m_empty.wait(lock, [this] { return m_inFlight == 0; });
}

// --- Worker pool

struct WorkerPool::State {
    explicit State(std::size_t count) : threads(count), threadCount(count) {}

    asio::thread_pool threads;
    std::size_t threadCount;
};

WorkerPool::WorkerPool(std::size_t threadCount) : m_state(std::make_unique<State>(threadCount)) {}

WorkerPool::~WorkerPool() {
    m_state->threads.join();
}

void WorkerPool::async(Task task) {
    asio::post(m_state->threads, std::move(task));
}

std::size_t WorkerPool::threadCount() const noexcept {
    return m_state->threadCount;
}

std::size_t WorkerPool::defaultThreadCount() noexcept {
    const unsigned threads = std::thread::hardware_concurrency();
    return threads > 0 ? threads : 1;
}

// --- Serial queue

struct SerialQueue::State {
    State() : ownThread(std::in_place, 1), strand(ownThread->get_executor()) {}
    explicit State(asio::thread_pool& pool) : strand(pool.get_executor()) {}

    std::optional<asio::thread_pool> ownThread;
    asio::strand<asio::thread_pool::executor_type> strand;
    WaitGroup tasks;
};

SerialQueue::SerialQueue() : m_state(std::make_unique<State>()) {}

SerialQueue::SerialQueue(WorkerPool& pool)
    : m_state(std::make_unique<State>(pool.m_state->threads)) {}

SerialQueue::~SerialQueue() {
    m_state->tasks.wait();
    if (m_state->ownThread) {
        m_state->ownThread->join();
    }
}

void SerialQueue::async(Task task) {
    m_state->tasks.enter();
    try {
        asio::post(m_state->strand, [state = m_state.get(), task = std::move(task)]() mutable {
            task();
            // What the task holds goes before the queue may.
            task = nullptr;
            state->tasks.leave();
        });
    } catch (...) {
        m_state->tasks.leave(); // A task that was not taken must not be waited for.
        throw;
    }
}

void SerialQueue::sync(const Task& task) {
    WaitGroup done;
    done.enter();
    async([&] {
        task();
        done.leave();
    });
    done.wait();
}

// --- Run loop

struct RunLoop::State {
    // Without the hint of a single thread: with it, what a task posts could be overtaken by what
    // another thread posts later.
    asio::io_context tasks;
    /// Keeps run() waiting when there are no tasks.
    std::optional<asio::executor_work_guard<asio::io_context::executor_type>> untilStopped;
};

RunLoop::RunLoop() : m_state(std::make_unique<State>()) {}

RunLoop::~RunLoop() = default;

void RunLoop::async(Task task) {
    asio::post(m_state->tasks, std::move(task));
}

void RunLoop::run() {
    m_state->untilStopped.reset(); // of a run that a task left by throwing
    m_state->tasks.restart();
    m_state->untilStopped.emplace(m_state->tasks.get_executor());
    m_state->tasks.run();
}

void RunLoop::stop() {
    async([this] { m_state->untilStopped.reset(); });
}

} // namespace platform
