// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <vector>

#include <QMainWindow>

#include "ui/window/application_actions.h"

namespace ui {

/// The menu bar of a document window: the application's commands and the window's own. The actions
/// belong to the window.
struct WindowMenus {
    WindowMenus(QMainWindow& window, const ApplicationActions& application);

    QAction* saveResult;
    QAction* close;
    QAction* copy;
    QAction* makeSummaryTable;
    QAction* analyze;
    QAction* analyzeAll;
    QAction* stop;
    QAction* showThresholds;
    QAction* jumpToPatients;
    std::array<QAction*, 4> jumpToTable;
    QAction* showErrorLog;

    /// The window's own commands that are validated by their titles.
    std::vector<QAction*> validated() const;
};

} // namespace ui
