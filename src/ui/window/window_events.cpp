// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/window_events.h"

#include <QDropEvent>
#include <QMainWindow>
#include <QMimeData>
#include <QUrl>

namespace ui {

QStringList localFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

WindowEvents::WindowEvents(QMainWindow& window) : QObject(&window) {
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

bool WindowEvents::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const QStringList paths = localFiles(*drop->mimeData());
        if (paths.isEmpty()) {
            return false;
        }
        drop->setDropAction(Qt::CopyAction);
        drop->accept();
        if (event->type() == QEvent::Drop) {
            // Later: whoever opens them may show an alert, and the program that the files come from
            // waits for the end of the drop.
            QMetaObject::invokeMethod(
                this, [this, paths] { Q_EMIT filesDropped(paths); }, Qt::QueuedConnection);
        }
        return true;
    }
    case QEvent::Close:
        Q_EMIT closed();
        return false;
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace ui
