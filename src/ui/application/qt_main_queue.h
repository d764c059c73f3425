// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include "platform/work_queues.h"

namespace ui {

/// The main queue on Qt's event loop: tasks run on the thread that made the queue, in the order
/// posted, also in a nested loop (a modal box). What waits when the queue ends is dropped.
class QtMainQueue : public platform::MainQueue {
public:
    void async(platform::Task task) override;

private:
    /// The object that waiting tasks are posted to: with it they go.
    QObject m_receiver;
};

} // namespace ui
