// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>
#include <QString>

namespace ui {

/// Puts back what was remembered of the window: its place and size, where its splitters stood and
/// how wide its tables' columns were. Where another window stands exactly there, it goes beside it.
/// `kind` keeps differently described windows apart. Controls are known by their object names.
void restoreWindow(QMainWindow& window, const QString& kind);
/// Remembers it.
void rememberWindow(const QMainWindow& window, const QString& kind);

} // namespace ui
