// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/recent_files_menu.h"

#include "ui/widgets/file_paths.h"

namespace ui {

RecentFilesMenu::RecentFilesMenu(RecentFiles& files, QWidget* parent)
    : QMenu(tr("Open &Recent"), parent), m_files(files) {
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentFilesMenu::fill);
    connect(&m_missing, &MissingFiles::changed, this, &RecentFilesMenu::fillAsKnown);
    connect(&files, &RecentFiles::changed, this, &RecentFilesMenu::fill);
    fill();
}

void RecentFilesMenu::fill() {
    fillAsKnown();
    m_missing.lookFor(m_files.paths());
}

void RecentFilesMenu::fillAsKnown() {
    clear();
    int position = 0;
    for (const QString& path : m_files.paths()) {
        const bool missing = m_missing.contains(path);
        QAction* action = addAction(recentFileMenuText(path, ++position, missing));
        action->setToolTip(plainToolTip(path));
        action->setEnabled(!missing);
        connect(action, &QAction::triggered, this, [this, path] { Q_EMIT openRequested({path}); });
    }
    addSeparator();
    QAction* forget = addAction(tr("&Clear Menu"));
    forget->setEnabled(position > 0);
    connect(forget, &QAction::triggered, &m_files, &RecentFiles::clear);
}

} // namespace ui
