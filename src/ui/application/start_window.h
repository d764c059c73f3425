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

/// The window on screen while no document is open: ways to open one, and a word on what to do. It
/// is no document. It takes files that are dropped anywhere on it. Closing it only asks to quit;
/// whoever listens decides.
class StartWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `recentFiles` and what `actions` names must outlive the window.
    StartWindow(const ApplicationActions& actions, RecentFiles& recentFiles);

    /// Shows a line of trouble above everything else; an empty text hides it.
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
