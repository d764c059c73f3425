// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Three of the engine's ports on Qt. Qt delivers what is posted to an object in order and drops it
// when the object is gone; a main queue has to promise no more, so it is one such object. An alert
// is modal, since the command that shows it goes on only when it is answered. Tested by
// qt_main_queue_test.cpp, message_alerts_test.cpp and, for the clipboard,
// desktop_preferences_test.cpp.
#include "ui/application/qt_ports.h"

#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMetaObject>
#include <QPointer>
#include <QPushButton>

#include "ui/widgets/shown_texts.h"

namespace ui {

void QtMainQueue::async(platform::Task task) {
    QMetaObject::invokeMethod(&m_receiver, std::move(task), Qt::QueuedConnection);
}

void QtClipboard::setPlainText(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void MessageAlerts::showAlert(const std::string& message, const std::string& informativeText) {
    // The box belongs to the window below it, which may go before the user answers.
    const QPointer<QMessageBox> box(new QMessageBox(QApplication::activeWindow()));
    box->setIcon(QMessageBox::Warning);
    box->setText(QString::fromStdString(message));
    box->setInformativeText(QString::fromStdString(informativeText));
    QPushButton* ok = box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box->setDefaultButton(ok);
    box->setEscapeButton(ok);
    showTextsAsTheyStand(*box);
    box->exec();
    delete box;
}

} // namespace ui
