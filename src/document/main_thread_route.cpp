// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A mutex covers two things: which texts are collected, and the posting of tasks. So the order of
// the tasks in the main queue is the order in which the mutex was taken, from any number of
// threads.
//
// Texts collect in a Texts record that is open, then posted, then shown. While it is posted and not
// yet shown, later texts of the same fields still replace the ones in it: a busy main thread gets
// one text per field, not thousands. Any other task closes the record, so nothing overtakes it.
//
// Tested by main_thread_route_test.cpp.
#include "document/main_thread_route.h"

#include <utility>

namespace document {

MainThreadRoute::MainThreadRoute(platform::MainQueue& mainQueue, SetText setText,
                                 std::function<Clock::time_point()> now)
    : m_mainQueue(mainQueue), m_setText(std::move(setText)), m_now(std::move(now)) {}

void MainThreadRoute::async(platform::Task task) {
    const std::lock_guard lock(m_mutex);
    if (m_open && !m_open->posted) {
        postTexts();
    }
    // No text may overtake the task, nor wait for what was shown before it.
    m_open = nullptr;
    m_nextPost.clear();
    post(std::move(task));
}

void MainThreadRoute::dispatch(platform::Task task) {
    if (std::this_thread::get_id() == m_mainThread) {
        task();
    } else {
        async(std::move(task));
    }
}

void MainThreadRoute::showCounter(run::RunField field, const std::string& text) {
    const std::lock_guard lock(m_mutex);
    if (!m_open) {
        m_open = std::make_shared<Texts>();
    }
    std::erase_if(m_open->latest, [&](const auto& earlier) { return earlier.first == field; });
    m_open->latest.emplace_back(field, text);
    if (m_open->posted) {
        return;
    }
    Clock::time_point& nextPost = m_nextPost[field];
    if (const Clock::time_point now = m_now(); now >= nextPost) {
        postTexts();
        nextPost = now + kPause;
    }
}

void MainThreadRoute::postTexts() {
    post([this, texts = m_open] { show(texts); });
    m_open->posted = true;
}

void MainThreadRoute::post(platform::Task task) {
    m_mainQueue.async([alive = std::weak_ptr<const bool>(m_alive), task = std::move(task)] {
        if (alive.lock()) {
            task();
        }
    });
}

void MainThreadRoute::show(const std::shared_ptr<Texts>& texts) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_open == texts) {
            m_open = nullptr;
        }
    }
    // Nobody adds to them any more.
    for (const auto& [field, text] : texts->latest) {
        m_setText(field, text);
    }
}

} // namespace document
