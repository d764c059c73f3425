// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/recent_files_list.h"

#include <QFileInfo>

#include "ui/widgets/file_paths.h"

namespace ui {

namespace {

constexpr int kSpaceAroundItems = 3;

} // namespace

RecentFilesList::RecentFilesList(const RecentFiles& files, QWidget* parent)
    : QListWidget(parent), m_files(files) {
    setAccessibleName(tr("Recent files"));
    setAccessibleDescription(tr("Press Enter to open the selected file."));
    setTextElideMode(Qt::ElideMiddle);
    setSpacing(kSpaceAroundItems);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        Q_EMIT openRequested({item->data(Qt::UserRole).toString()});
    });
    connect(&files, &RecentFiles::changed, this, &RecentFilesList::refresh);
    connect(&m_missing, &MissingFiles::changed, this, &RecentFilesList::fillAsKnown);
    refresh();
}

void RecentFilesList::refresh() {
    fillAsKnown();
    m_missing.lookFor(m_files.paths());
}

void RecentFilesList::fillAsKnown() {
    const int row = currentRow();
    clear();
    for (const QString& path : m_files.paths()) {
        addFile(path);
    }
    setCurrentRow(count() > 0 ? qBound(0, row, count() - 1) : -1);
}

void RecentFilesList::addFile(const QString& path) {
    const QFileInfo file(path);
    QString text = file.fileName() + QLatin1Char('\n') + file.path();
    const bool missing = m_missing.contains(path);
    if (missing) {
        text += tr(" (missing)");
    }
    auto* item = new QListWidgetItem(text, this);
    item->setData(Qt::UserRole, path);
    item->setToolTip(plainToolTip(path));
    if (missing) {
        item->setFlags(Qt::NoItemFlags);
    }
}

} // namespace ui
