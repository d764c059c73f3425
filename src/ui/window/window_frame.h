// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QString>
#include <QStringList>

class QMainWindow;
class QMimeData;

namespace ui {

/// Puts back what was remembered of the window: its place and size, where its splitters stood and
/// how wide its tables' columns were. Where another window stands exactly there, it goes beside it.
/// `kind` keeps differently described windows apart. Controls are known by their object names.
void restoreWindow(QMainWindow& window, const QString& kind);
/// Remembers it.
void rememberWindow(const QMainWindow& window, const QString& kind);

/// Hears what happens to a window as a whole: files dropped on it, and its closing.
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

/// The local files among what is dragged.
QStringList localFiles(const QMimeData& data);

} // namespace ui
