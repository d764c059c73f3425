// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QPointer>

class QMessageBox;

namespace ui {

/// The application object. Numbers are read and written under the C locale, whatever the user's:
/// definition files and exports must not change with it.
class VextaApplication : public QApplication {
    Q_OBJECT

public:
    VextaApplication(int& argc, char** argv);

    /// What an event's receiver throws is told in a box that holds nothing up, and ends neither the
    /// program nor the results that are open in it.
    bool notify(QObject* receiver, QEvent* event) override;

    enum class UserAttention { informational, critical };
    /// The number that every request for the user's attention is given.
    static constexpr int kAttentionRequest = 1957;
    /// Deliberate: asks for nothing. A technician at the bench is not to be called away by a
    /// bouncing or blinking program; results wait. Returns kAttentionRequest.
    int requestUserAttention(UserAttention kind);

private:
    void tellOf(const QString& failure);

    QPointer<QMessageBox> m_failureBox;
};

} // namespace ui
