// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The commands that all windows share. Each is one QAction in every menu bar, so it has one key and
// one state everywhere. The roles (preferences, about, quit) let a desktop put a command where its
// users look for it. Tested by app_delegate_test.cpp and start_window_test.cpp.
#include "ui/application/application_commands.h"

#include <QAction>

#include "ui/application/recent_files.h"

namespace ui {

ApplicationCommands::ApplicationCommands(RecentFiles& recentFiles, QObject* parent)
    : QObject(parent), m_recentMenu(std::make_unique<RecentFilesMenu>(recentFiles)) {
    m_actions.open =
        make(QStringLiteral("open"), tr("&Open..."), QKeySequence(Qt::CTRL | Qt::Key_O));
    m_actions.openRecent = m_recentMenu.get();
    m_actions.preferences = make(QStringLiteral("preferences"), tr("&Preferences..."),
                                 QKeySequence(Qt::CTRL | Qt::Key_Comma));
    m_actions.preferences->setMenuRole(QAction::PreferencesRole);
    m_actions.quit = make(QStringLiteral("quit"), tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q));
    m_actions.quit->setMenuRole(QAction::QuitRole);
    m_actions.about = make(QStringLiteral("about"), tr("&About Vexta"), {});
    m_actions.about->setMenuRole(QAction::AboutRole);
    m_actions.licences = make(QStringLiteral("licences"), tr("&Licences"), {});
    m_actions.help = make(QStringLiteral("help"), tr("Vexta &Help"), QKeySequence(Qt::Key_F1));
    connect(m_recentMenu.get(), &RecentFilesMenu::openRequested, this,
            &ApplicationCommands::openRequested);
}

ApplicationCommands::~ApplicationCommands() = default;

QAction* ApplicationCommands::make(const QString& name, const QString& text,
                                   const QKeySequence& key) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    // Also from windows without a menu bar, such as the error log.
    action->setShortcutContext(Qt::ApplicationShortcut);
    return action;
}

QAction* ApplicationCommands::titled(const QString& title) const {
    for (QAction* action : findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (action->text().remove(QLatin1Char('&')) == title) {
            return action;
        }
    }
    return nullptr;
}

} // namespace ui
