// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QStringList>

namespace ui {

/// The files opened last, newest first, kept from one session to the next. Other processes' entries
/// are seen at every call.
class RecentFiles : public QObject {
    Q_OBJECT

public:
    static constexpr int kMost = 10;

    using QObject::QObject;

    /// Full paths, whether or not the files are still there.
    QStringList paths() const;
    /// Puts the file first; what then lies beyond kMost is forgotten.
    void add(const QString& path);
    void clear();

Q_SIGNALS:
    void changed();

private:
    void store(const QStringList& paths);
};

/// The text of a recent file in a menu: its name and folder, elided in the middle to a length that
/// a menu can hold, and "missing" where it is. Mnemonic signs of the name are doubled.
QString recentFileMenuText(const QString& path, int position, bool missing);

} // namespace ui
