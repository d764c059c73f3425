// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/qt_main_queue.h"

#include <utility>

#include <QMetaObject>

namespace ui {

void QtMainQueue::async(platform::Task task) {
    QMetaObject::invokeMethod(&m_receiver, std::move(task), Qt::QueuedConnection);
}

} // namespace ui
