// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/settings_trouble.h"

#include "platform/work_queues.h"
#include "ui/widgets/shown_texts.h"

namespace ui {

SettingsTrouble::SettingsTrouble(platform::MainQueue& mainQueue) : m_mainQueue(mainQueue) {}

SettingsTrouble::~SettingsTrouble() {
    delete m_box;
}

void SettingsTrouble::report(const std::string& message) {
    m_mainQueue.async(
        [here = QPointer<SettingsTrouble>(this), text = QString::fromStdString(message)] {
            if (here) {
                here->show(text);
            }
        });
}

void SettingsTrouble::show(const QString& message) {
    if (m_box) {
        m_box->setInformativeText(m_box->informativeText() + QStringLiteral("\n\n") + message);
        return;
    }
    m_box = new QMessageBox(QMessageBox::Warning, tr("Settings"),
                            tr("There is trouble with the settings file."), QMessageBox::Ok);
    m_box->setObjectName(QStringLiteral("settingsTrouble"));
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setWindowModality(Qt::NonModal);
    m_box->setInformativeText(message);
    showTextsAsTheyStand(*m_box);
    m_box->show();
}

} // namespace ui
