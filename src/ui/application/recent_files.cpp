// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The recent files and the two ways to show them: a list in the start window, a menu in every
// window. Both show what the store holds at once and grey the missing files when the answer comes.
//
// To ask whether a file exists can take minutes when its server is gone, or never end, and nothing
// can break such a call off. So MissingFiles asks on a detached thread. It cannot join that thread,
// so the two share a Listener: the object takes itself out of it at its end, under the lock that
// the thread holds while it posts the answer. One look runs at a time, so a dead server costs one
// thread for each list or menu. Tested by recent_files_test.cpp.
#include "ui/application/recent_files.h"

#include <mutex>
#include <thread>
#include <utility>

#include <QFileInfo>
#include <QSettings>

#include "ui/widgets/shown_texts.h"

namespace ui {

namespace {

constexpr int kLongestName = 48;
constexpr int kLongestFolder = 40;
constexpr int kSpaceAroundItems = 3;

// Stands in users' files: never change it.
QString settingsKey() {
    return QStringLiteral("recentFiles");
}

QString elided(const QString& text, int longest) {
    if (text.size() <= longest) {
        return text;
    }
    const int kept = (longest - 1) / 2;
    return text.left(kept) + QChar(0x2026) + text.right(kept);
}

QString withoutMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

} // namespace

QStringList RecentFiles::paths() const {
    return QSettings().value(settingsKey()).toStringList().mid(0, kMost);
}

void RecentFiles::add(const QString& path) {
    QStringList newest = paths();
    newest.removeAll(path);
    newest.prepend(path);
    store(newest.mid(0, kMost));
}

void RecentFiles::clear() {
    store({});
}

void RecentFiles::store(const QStringList& paths) {
    QSettings().setValue(settingsKey(), paths);
    Q_EMIT changed();
}

QString recentFileMenuText(const QString& path, int position, bool missing) {
    const QFileInfo file(path);
    const QString text =
        withoutMnemonics(elided(file.fileName(), kLongestName)) + QStringLiteral("  (") +
        withoutMnemonics(elided(file.path(), kLongestFolder)) + QStringLiteral(")");
    const QString numbered = QStringLiteral("&%1  %2").arg(position % 10).arg(text);
    return missing ? RecentFiles::tr("%1 - missing").arg(numbered) : numbered;
}

// --- Which of them are missing

/// Where the answer goes; `files` is null once nobody listens.
struct MissingFiles::Listener {
    std::mutex mutex;
    MissingFiles* files = nullptr;
};

namespace {

QStringList missingOf(const QStringList& paths) {
    QStringList missing;
    for (const QString& path : paths) {
        if (!QFileInfo::exists(path)) {
            missing.append(path);
        }
    }
    return missing;
}

} // namespace

MissingFiles::MissingFiles(QObject* parent)
    : QObject(parent), m_listener(std::make_shared<Listener>()) {
    m_listener->files = this;
}

MissingFiles::~MissingFiles() {
    const std::lock_guard lock(m_listener->mutex);
    m_listener->files = nullptr;
}

void MissingFiles::lookFor(const QStringList& paths) {
    if (m_looking) {
        m_next = paths;
        return;
    }
    if (paths.isEmpty()) {
        return;
    }
    m_looking = true;
    std::thread([listener = m_listener, paths] {
        const QStringList missing = missingOf(paths);
        const std::lock_guard lock(listener->mutex);
        if (MissingFiles* files = listener->files) {
            QMetaObject::invokeMethod(
                files, [files, missing] { files->take(missing); }, Qt::QueuedConnection);
        }
    }).detach();
}

void MissingFiles::take(const QStringList& missing) {
    m_looking = false;
    if (missing != m_missing) {
        m_missing = missing;
        Q_EMIT changed();
    }
    lookFor(std::exchange(m_next, {}));
}

// --- The list

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

// --- The menu

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
