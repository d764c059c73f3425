// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/message_alerts.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace ui {

namespace {

/// A box asks each of its labels itself whether a text looks like HTML, unless told.
void showTextsAsTheyStand(const QMessageBox& box) {
    for (QLabel* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
}

} // namespace

void MessageAlerts::showAlert(const std::string& message, const std::string& informativeText) {
    QMessageBox box(QApplication::activeWindow());
    box.setIcon(QMessageBox::Warning);
    box.setText(QString::fromStdString(message));
    box.setInformativeText(QString::fromStdString(informativeText));
    QPushButton* ok = box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.setDefaultButton(ok);
    box.setEscapeButton(ok);
    showTextsAsTheyStand(box);
    box.exec();
}

} // namespace ui
