// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QStringList>

class QMainWindow;
class QMimeData;

namespace ui {

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
