// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QObject>

#include "document/document_window.h"
#include "platform/clipboard.h"
#include "platform/work_queues.h"

namespace ui {

/// The main queue on Qt's event loop. Tasks run on the thread that made the queue, in the order
/// posted, also in a nested loop (a modal box). The queue's end drops those that still wait.
class QtMainQueue : public platform::MainQueue {
public:
    void async(platform::Task task) override;

private:
    /// Waiting tasks are posted to it and vanish with it.
    QObject m_receiver;
};

/// The desktop's clipboard. Main thread only.
class QtClipboard : public platform::Clipboard {
public:
    void setPlainText(const std::string& text) override;
};

/// Alerts as modal message boxes, shown as plain text since they may name files. showAlert()
/// returns when the user has answered. Main thread only.
class MessageAlerts : public document::Alerts {
public:
    void showAlert(const std::string& message, const std::string& informativeText) override;
};

} // namespace ui
