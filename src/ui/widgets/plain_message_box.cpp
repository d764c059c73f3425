// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/widgets/plain_message_box.h"

#include <QLabel>

namespace ui {

void showTextsAsTheyStand(QMessageBox& box) {
    for (QLabel* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
}

} // namespace ui
