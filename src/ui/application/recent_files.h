// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QListWidget>
#include <QMenu>
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

/// Which of some files are missing. The disks are asked on a thread that nobody waits for: of a
/// server that is gone the answer may take minutes or never come. Main thread only.
class MissingFiles : public QObject {
    Q_OBJECT

public:
    explicit MissingFiles(QObject* parent = nullptr);
    ~MissingFiles() override;

    /// Asks for these files, after an earlier question was answered.
    void lookFor(const QStringList& paths);
    /// As far as it is known: false for a file that was never asked for.
    bool contains(const QString& path) const { return m_missing.contains(path); }

Q_SIGNALS:
    void changed();

private:
    struct Listener;

    void take(const QStringList& missing);

    /// Shared with the thread, which may live longer than this object.
    std::shared_ptr<Listener> m_listener;
    bool m_looking = false;
    QStringList m_next;
    QStringList m_missing;
};

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
