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

/// Asks whether to quit during a run. It blocks nothing: the windows behind it go on showing the
/// run.
class QuitQuestion : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    ~QuitQuestion() override;

    /// Asks, or brings forward the question that is already on screen.
    void ask(QWidget* above);

Q_SIGNALS:
    void confirmed();

private:
    QPointer<QMessageBox> m_box;
};

/// Says that the program ends when the running patient is done. The user can do nothing in it, and
/// closing it changes nothing.
class EndingWindow : public QWidget {
    Q_OBJECT

public:
    EndingWindow();

    /// Says that these files came too late to be opened.
    void sayNotOpened(const QStringList& paths);

private:
    QLabel* m_notOpened;
};

} // namespace ui
