// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/work_queues.h"

#include <deque>
#include <optional>
#include <thread>
#include <utility>

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
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Task> tasks;
    bool stopped = false;
};

RunLoop::RunLoop() : m_state(std::make_unique<State>()) {}

RunLoop::~RunLoop() = default;

void RunLoop::async(Task task) {
    const std::lock_guard lock(m_state->mutex);
    m_state->tasks.push_back(std::move(task));
    if (m_state->tasks.size() == 1) {
        m_state->changed.notify_all(); // With more, the loop is awake or was woken already.
    }
}

void RunLoop::run() {
    std::unique_lock lock(m_state->mutex);
    while (true) {
        m_state->changed.wait(lock, [this] { return !m_state->tasks.empty() || m_state->stopped; });
        if (m_state->tasks.empty()) {
            m_state->stopped = false;
            return;
        }
        Task task = std::move(m_state->tasks.front());
        m_state->tasks.pop_front();
        lock.unlock();
        task();
        // What the task holds goes without the lock: its end may post a task.
        task = nullptr;
        lock.lock();
    }
}

void RunLoop::stop() {
    const std::lock_guard lock(m_state->mutex);
    m_state->stopped = true;
    m_state->changed.notify_all();
}

} // namespace platform
