// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QKeySequence>
#include <QObject>

#include "ui/application/recent_files.h"
#include "ui/window/window_menus.h"

namespace ui {

class RecentFilesMenu;

/// Makes the application's commands with their texts and keys. The application delegate connects
/// them to what they do.
class ApplicationCommands : public QObject {
    Q_OBJECT

public:
    /// `recentFiles` must outlive the commands.
    explicit ApplicationCommands(RecentFiles& recentFiles, QObject* parent = nullptr);
    ~ApplicationCommands() override;

    const ApplicationActions& actions() const { return m_actions; }
    /// The command of that title, mnemonic signs left out; null when there is none.
    QAction* titled(const QString& title) const;

Q_SIGNALS:
    /// A recent file was chosen.
    void openRequested(const QStringList& paths);

private:
    QAction* make(const QString& name, const QString& text, const QKeySequence& key);

    std::unique_ptr<RecentFilesMenu> m_recentMenu;
    ApplicationActions m_actions;
};

} // namespace ui
