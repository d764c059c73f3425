// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QListWidget>
#include <QMenu>
#include <QObject>
#include <QStringList>

namespace ui {

/// The files opened last, newest first, kept from one session to the next. Every call reads the
/// store, so entries of other processes count at once. Main thread only, like all of this header.
class RecentFiles : public QObject {
    Q_OBJECT

public:
    static constexpr int kMost = 10;

    using QObject::QObject;

    /// Full paths, whether or not the files are still there.
    QStringList paths() const;
    /// Puts the file first and forgets those beyond kMost.
    void add(const QString& path);
    void clear();

Q_SIGNALS:
    void changed();

private:
    void store(const QStringList& paths);
};

/// The text of a recent file in a menu: its name and folder, each elided in the middle to fit a
/// menu, and "missing" when it is. Doubles "&", which would mark a mnemonic.
QString recentFileMenuText(const QString& path, int position, bool missing);

/// Knows which of some files are missing. A thread that nobody waits for asks the disks.
class MissingFiles : public QObject {
    Q_OBJECT

public:
    explicit MissingFiles(QObject* parent = nullptr);
    ~MissingFiles() override;

    /// Asks for these files; while an earlier look goes on, after it, and then
    /// for those that were asked for last.
    void lookFor(const QStringList& paths);
    /// Whether the last answer called it missing; false for a file that nobody asked for.
    bool contains(const QString& path) const { return m_missing.contains(path); }

Q_SIGNALS:
    /// The answer is not the same as before.
    void changed();

private:
    struct Listener;

    void take(const QStringList& missing);

    /// Shared with the thread, which may outlive this object.
    std::shared_ptr<Listener> m_listener;
    bool m_looking = false;
    /// Asked for while a look went on.
    QStringList m_next;
    QStringList m_missing;
};

/// The recent files as a list: a double click or Enter opens one. A missing file stays in the list
/// but cannot be chosen.
class RecentFilesList : public QListWidget {
    Q_OBJECT

public:
    /// `files` must outlive the list.
    explicit RecentFilesList(const RecentFiles& files, QWidget* parent = nullptr);
    /// Reads the recent files again and looks whether they are still there.
    void refresh();

Q_SIGNALS:
    void openRequested(const QStringList& paths);

private:
    void fillAsKnown();
    void addFile(const QString& path);

    const RecentFiles& m_files;
    MissingFiles m_missing;
};

/// The recent files as a menu, filled each time that it opens. Missing files are grey, and the last
/// entry forgets all.
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
