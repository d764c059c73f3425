// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPushButton>

namespace ui {

/// Who is told that the user asked to stop.
class CancelOperationReceiver {
public:
    virtual ~CancelOperationReceiver() = default;
    virtual void cancelOperation(QObject* sender) = 0;
};

/// The Stop button. Esc and a click pass on to whoever is its delegate at that moment.
class ButtonForwardingCancelOperationToDelegate : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /// Not owned; without one nothing happens.
    CancelOperationReceiver* delegate = nullptr;

    /// The command of the Esc key.
    void cancelOperation(QObject* sender);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace ui
