// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Qt does not carry exceptions through its event loop: one that leaves a slot ends the program, and
// with it every result that is not saved. notify() is the one place that all events pass, so it
// stops them there and leaves the decision to the user. Tested by vexta_application_test.cpp.
#include "ui/application/vexta_application.h"

#include <clocale>
#include <exception>

#include <QMessageBox>

#include "ui/widgets/shown_texts.h"

namespace ui {

VextaApplication::VextaApplication(int& argc, char** argv) : QApplication(argc, argv) {
    // Qt has just adopted the user's locale.
    std::setlocale(LC_NUMERIC, "C");
    setOrganizationName(QStringLiteral("vexta"));
    setApplicationName(QStringLiteral("vexta-desktop"));
    setApplicationDisplayName(QStringLiteral("Vexta"));
    setApplicationVersion(QStringLiteral(VEXTA_VERSION));
    setDesktopFileName(QStringLiteral("vexta-desktop"));
}

bool VextaApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        // Queued, so that the event is over: its receiver may be in any state now.
        QMetaObject::invokeMethod(
            this, [this, what = QString::fromLocal8Bit(failure.what())] { tellOf(what); },
            Qt::QueuedConnection);
        return false;
    }
}

void VextaApplication::tellOf(const QString& failure) {
    if (!m_failureBox) {
        m_failureBox = new QMessageBox(QMessageBox::Warning, tr("Vexta"),
                                       tr("Something went wrong in the program."), QMessageBox::Ok);
        m_failureBox->setObjectName(QStringLiteral("failureBox"));
        m_failureBox->setAttribute(Qt::WA_DeleteOnClose);
        m_failureBox->setModal(false);
    }
    m_failureBox->setInformativeText(
        tr("What you did last may be incomplete. Save the results that are open, then quit and "
           "start Vexta again.\n\n%1")
            .arg(failure));
    showTextsAsTheyStand(*m_failureBox);
    m_failureBox->show();
    m_failureBox->raise();
}

int VextaApplication::requestUserAttention(UserAttention) {
    return kAttentionRequest;
}

} // namespace ui
