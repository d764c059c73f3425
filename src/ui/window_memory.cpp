// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window_memory.h"

#include <QHeaderView>
#include <QSettings>
#include <QSplitter>
#include <QTableView>

namespace ui {
namespace {

QString keyOf(const QString& kind, const QObject& control) {
    return QStringLiteral("windows/%1/%2").arg(kind, control.objectName());
}

QString geometryKey(const QString& kind) {
    return QStringLiteral("windows/%1/geometry").arg(kind);
}

} // namespace

void restoreWindow(QMainWindow& window, const QString& kind) {
    const QSettings remembered;
    // What is missing or damaged leaves the description's own place and sizes.
    window.restoreGeometry(remembered.value(geometryKey(kind)).toByteArray());
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

} // namespace ui
