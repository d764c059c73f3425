// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What a user sees of the end of the program: a question when it would cut a run short, and a
// window while the running patient is finished. app_delegate.cpp decides when. Tested by
// app_delegate_test.cpp.
#include "ui/application/quitting.h"

#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace ui {

QuitQuestion::~QuitQuestion() {
    delete m_box;
}

void QuitQuestion::ask(QWidget* above) {
    if (m_box) {
        m_box->raise();
        m_box->activateWindow();
        return;
    }
    m_box = new QMessageBox(QMessageBox::Question, tr("Quit Vexta"),
                            tr("An analysis is running. Quit all the same?"), QMessageBox::NoButton,
                            above);
    m_box->setObjectName(QStringLiteral("quitQuestion"));
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setInformativeText(
        tr("The patient that is running is finished first, and no further patient is started. "
           "Results that were not saved are lost."));
    const QPushButton* quit = m_box->addButton(tr("&Quit"), QMessageBox::AcceptRole);
    QPushButton* stay = m_box->addButton(tr("&Keep Running"), QMessageBox::RejectRole);
    m_box->setDefaultButton(stay);
    m_box->setEscapeButton(stay);
    connect(quit, &QPushButton::clicked, this, &QuitQuestion::confirmed);
    m_box->open();
}

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
