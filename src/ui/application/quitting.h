// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>

class QLabel;
class QMessageBox;

namespace ui {

/// Asks whether to quit although a run goes on. Holds nobody: the run's progress goes on behind it.
class QuitQuestion : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~QuitQuestion() override;

    /// Asks, once: while it is on screen it is only brought forward.
    void ask(QWidget* above);

Q_SIGNALS:
    void confirmed();

private:
    QPointer<QMessageBox> m_box;
};

/// Says that the program ends as soon as the running patient is done. There is nothing to do in it,
/// and closing it changes nothing.
class EndingWindow : public QWidget {
    Q_OBJECT

public:
    EndingWindow();

    /// Says that the files were asked for too late to be opened.
    void sayNotOpened(const QStringList& paths);

private:
    QLabel* m_notOpened;
};

} // namespace ui
