// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/ending_window.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace ui {

EndingWindow::EndingWindow() : m_notOpened(new QLabel) {
    setObjectName(QStringLiteral("endingWindow"));
    setWindowTitle(tr("Vexta"));
    auto* busy = new QProgressBar;
    busy->setRange(0, 0);
    busy->setAccessibleName(tr("Finishing the running patient"));
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(
        new QLabel(tr("The running patient is being finished. Vexta then quits by itself.")));
    rows->addWidget(busy);
    m_notOpened->setObjectName(QStringLiteral("notOpenedLabel"));
    m_notOpened->setTextFormat(Qt::PlainText);
    m_notOpened->setWordWrap(true);
    m_notOpened->hide();
    rows->addWidget(m_notOpened);
}

void EndingWindow::sayNotOpened(const QStringList& paths) {
    m_notOpened->setText(
        tr("Not opened, since Vexta is quitting: %1").arg(paths.join(QStringLiteral(", "))));
    m_notOpened->show();
}

} // namespace ui
