// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/recent_files.h"

#include <QFileInfo>
#include <QSettings>

namespace ui {

namespace {

constexpr int kLongestName = 48;
constexpr int kLongestFolder = 40;

// Stands in files: never change it.
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

} // namespace ui
