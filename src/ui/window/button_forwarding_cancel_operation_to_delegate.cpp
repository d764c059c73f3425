// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/button_forwarding_cancel_operation_to_delegate.h"

#include <QKeyEvent>

namespace ui {

void ButtonForwardingCancelOperationToDelegate::cancelOperation(QObject* sender) {
    if (delegate != nullptr) {
        delegate->cancelOperation(sender);
    }
}

void ButtonForwardingCancelOperationToDelegate::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        cancelOperation(this);
        return;
    }
    QPushButton::keyPressEvent(event);
}

} // namespace ui
