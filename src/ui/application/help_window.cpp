// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/help_window.h"

#include <QDialogButtonBox>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "ui/application/help_texts.h"

namespace ui {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("helpWindow"));
    setWindowTitle(tr("Vexta Help"));
    auto* page = new QTextBrowser;
    page->setHtml(helpPage());
    page->setAccessibleName(tr("Help"));
    page->setTabChangesFocus(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(page);
    rows->addWidget(buttons);
    resize(640, 640);
}

} // namespace ui
