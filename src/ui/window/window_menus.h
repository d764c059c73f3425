// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace ui {

/// The commands of the application, which every window adds to its menu bar. The application
/// delegate owns them. A window that is made alone, in a test, may lack them.
struct ApplicationActions {
    QAction* open = nullptr;
    /// The files opened last, newest first, and a command that forgets them.
    QMenu* openRecent = nullptr;
    QAction* preferences = nullptr;
    QAction* quit = nullptr;
    QAction* about = nullptr;
    QAction* licences = nullptr;
    QAction* help = nullptr;
};

/// Menus are validated by these titles: never translate them.
namespace titles {
inline constexpr const char* kShowErrorLog = "Show Error Log";
inline constexpr const char* kShowThresholds = "Show ND1 and ND2 Threshold";
inline constexpr const char* kCopy = "Copy";
inline constexpr const char* kAnalyze = "Analyze";
inline constexpr const char* kAnalyzeAll = "Analyze All";
inline constexpr const char* kSaveResult = "Save Result…";
inline constexpr const char* kMakeSummaryTable = "Make Summary Table";
inline constexpr const char* kStop = "Stop";
} // namespace titles

/// The menu bar of a document window, with the application's commands and the window's own. The
/// window owns the actions.
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

    /// The window's own commands that need validation.
    std::vector<QAction*> validated() const;
};

} // namespace ui
