// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QObject>

#include "document/document_window.h"
#include "platform/clipboard.h"
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

/// The desktop's clipboard. Main thread only.
class QtClipboard : public platform::Clipboard {
public:
    void setPlainText(const std::string& text) override;
};

/// Alerts as modal message boxes. Their texts may name files, so they are shown as plain text.
/// Main thread only.
class MessageAlerts : public document::Alerts {
public:
    void showAlert(const std::string& message, const std::string& informativeText) override;
};

} // namespace ui
