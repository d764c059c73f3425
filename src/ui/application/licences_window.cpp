// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/licences_window.h"

#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "ui/application/licence_texts.h"

namespace ui {

LicencesWindow::LicencesWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("licencesWindow"));
    setWindowTitle(tr("Licences"));
    auto* text = new QPlainTextEdit(licenceTexts());
    text->setReadOnly(true);
    // A read-only text still takes Tab unless told; the keyboard must be able to leave it.
    text->setTabChangesFocus(true);
    text->setAccessibleName(tr("Licences"));
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(text);
    rows->addWidget(buttons);
    resize(640, 560);
}

} // namespace ui
