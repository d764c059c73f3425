// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

#include "ui/application/missing_files.h"
#include "ui/application/recent_files.h"

namespace ui {

/// The menu of recent files, made anew each time that it opens: files that are known to be missing
/// are greyed, and the last entry forgets all.
class RecentFilesMenu : public QMenu {
    Q_OBJECT

public:
    /// `files` must outlive the menu.
    explicit RecentFilesMenu(RecentFiles& files, QWidget* parent = nullptr);

Q_SIGNALS:
    void openRequested(const QStringList& paths);

private:
    void fill();
    void fillAsKnown();

    MissingFiles m_missing;
    RecentFiles& m_files;
};

} // namespace ui
