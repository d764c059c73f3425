// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A document window as the desktop handles it: where it stands, what is dropped on it, when it
// closes. Its place is stored with every splitter and column width under keys of the form
// windows/KIND/CONTROL, so that a control that a new version adds or drops leaves the others alone.
// Tested by window_controller_test.cpp.
#include "ui/window/window_frame.h"

#include <algorithm>

#include <QApplication>
#include <QDropEvent>
#include <QHeaderView>
#include <QMainWindow>
#include <QMimeData>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTableView>

#include "ui/widgets/files_to_open.h"

namespace ui {

namespace {

QString keyOf(const QString& kind, const QObject& control) {
    return QStringLiteral("windows/%1/%2").arg(kind, control.objectName());
}

QString geometryKey(const QString& kind) {
    return QStringLiteral("windows/%1/geometry").arg(kind);
}

/// Whether another window on screen has its top left corner exactly here.
bool isTaken(const QPoint& corner) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [&corner](const QWidget* window) {
        return qobject_cast<const QMainWindow*>(window) != nullptr && window->isVisible() &&
               window->geometry().topLeft() == corner;
    });
}

/// Moves a window that is not yet shown off those that it would cover exactly, as far as the screen
/// has room.
void stepAside(QMainWindow& window) {
    constexpr QPoint kStep(28, 28);
    const QRect room = window.screen()->availableGeometry();
    QRect place = window.geometry();
    while (isTaken(place.topLeft()) && room.contains(place.topLeft() + kStep)) {
        place.translate(kStep);
    }
    window.setGeometry(place);
}

} // namespace

void restoreWindow(QMainWindow& window, const QString& kind) {
    const QSettings remembered;
    // A missing or damaged value leaves what the description says.
    if (window.restoreGeometry(remembered.value(geometryKey(kind)).toByteArray()) &&
        !window.isMaximized() && !window.isFullScreen()) {
        stepAside(window);
    }
    for (QSplitter* splitter : window.findChildren<QSplitter*>()) {
        splitter->restoreState(remembered.value(keyOf(kind, *splitter)).toByteArray());
    }
    for (QTableView* table : window.findChildren<QTableView*>()) {
        table->horizontalHeader()->restoreState(
            remembered.value(keyOf(kind, *table)).toByteArray());
    }
}

void rememberWindow(const QMainWindow& window, const QString& kind) {
    QSettings remembered;
    remembered.setValue(geometryKey(kind), window.saveGeometry());
    for (const QSplitter* splitter : window.findChildren<QSplitter*>()) {
        remembered.setValue(keyOf(kind, *splitter), splitter->saveState());
    }
    for (const QTableView* table : window.findChildren<QTableView*>()) {
        remembered.setValue(keyOf(kind, *table), table->horizontalHeader()->saveState());
    }
}

// --- Drops and closing

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
            // Later, since opening may show an alert, and the program that the files come from
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
