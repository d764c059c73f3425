// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>

#include "ui/application/recent_files.h"
#include "ui/window/window_menus.h"

class QLabel;

namespace ui {

class DropArea;
class RecentFilesList;

/// What is on screen while no document is open: ways to open one, and a word on what to do. It is
/// no document. Files may be dropped anywhere on it. Closing it asks to quit and leaves the
/// decision to whoever listens.
class StartWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `recentFiles` and what `actions` names must outlive the window.
    StartWindow(const ApplicationActions& actions, RecentFiles& recentFiles);

    /// A line above everything else that tells of trouble; empty for none.
    void setNotice(const QString& text);

Q_SIGNALS:
    void openReadsRequested();
    void openFolderRequested();
    void openResultRequested();
    void openRequested(const QStringList& paths);
    void closeRequested();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void makeMenus(const ApplicationActions& actions);
    QLayout* makeWaysToOpen();
    QLayout* makeRecentFiles(RecentFiles& recentFiles);

    QLabel* m_notice;
    DropArea* m_dropArea;
    RecentFilesList* m_recentFilesList;
};

} // namespace ui
