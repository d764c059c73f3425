// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/quit_question.h"

#include <QMessageBox>
#include <QPushButton>

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

} // namespace ui
