// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QListWidget>

#include "ui/application/missing_files.h"
#include "ui/application/recent_files.h"

namespace ui {

/// The recent files to choose from: a double click or Enter opens one. Files that are known to be
/// missing are shown but cannot be chosen.
class RecentFilesList : public QListWidget {
    Q_OBJECT

public:
    /// `files` must outlive the list.
    explicit RecentFilesList(const RecentFiles& files, QWidget* parent = nullptr);
    /// Looks again which files there are and whether they are still there.
    void refresh();

Q_SIGNALS:
    void openRequested(const QStringList& paths);

private:
    void fillAsKnown();
    void addFile(const QString& path);

    const RecentFiles& m_files;
    MissingFiles m_missing;
};

} // namespace ui
