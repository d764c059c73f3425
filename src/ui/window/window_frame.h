// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

class QMainWindow;

namespace ui {

/// Restores the window's place and size, its splitters and the widths of its tables' columns. A
/// window that would cover another one exactly steps aside. `kind` keeps windows of different
/// descriptions apart; object names identify the controls.
void restoreWindow(QMainWindow& window, const QString& kind);
/// Stores all that restoreWindow() puts back.
void rememberWindow(const QMainWindow& window, const QString& kind);

/// Reports what happens to a window as a whole: files dropped on it, and its closing. Belongs to
/// the window.
class WindowEvents : public QObject {
    Q_OBJECT

public:
    explicit WindowEvents(QMainWindow& window);

Q_SIGNALS:
    void filesDropped(const QStringList& paths);
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
} // namespace ui
