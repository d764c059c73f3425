// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QAction;
class QMenu;

namespace ui {

/// The commands of the application, which every window adds to its menu bar. They belong to the
/// application delegate and live as long as it does.
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

} // namespace ui
