// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>

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

} // namespace ui
