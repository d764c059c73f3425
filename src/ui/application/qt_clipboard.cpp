// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace ui {

void QtClipboard::setPlainText(const std::string& text) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

} // namespace ui
