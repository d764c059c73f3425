// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QPointer>

class QMessageBox;

namespace ui {

/// The application object. It keeps the C locale for numbers, whatever the user's locale:
/// definition files and exports must not change with it.
class VextaApplication : public QApplication {
    Q_OBJECT

public:
    VextaApplication(int& argc, char** argv);

    /// Catches what an event's receiver throws and tells of it in a box that blocks nothing: the
    /// program goes on, with the results that are open in it.
    bool notify(QObject* receiver, QEvent* event) override;

    enum class UserAttention { informational, critical };
    /// The number that every request for the user's attention gets.
    static constexpr int kAttentionRequest = 1957;
    /// Deliberate: asks for nothing and returns kAttentionRequest. A bouncing or blinking program
    /// must not call a technician away from the bench; results wait.
    int requestUserAttention(UserAttention kind);

private:
    void tellOf(const QString& failure);

    QPointer<QMessageBox> m_failureBox;
};

} // namespace ui
