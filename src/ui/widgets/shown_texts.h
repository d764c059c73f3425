// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QMessageBox>
#include <QString>

namespace ui {

/// A path between the toolkit's text and the engine's bytes.
std::string enginePath(const QString& path);
QString shownPath(const std::string& path);

/// The absolute path of a command line argument or a dropped text: a path, or a file URL.
QString pathOfArgument(const QString& argument);

/// A tool tip that shows the text as it stands: left alone, a tip takes a file name that looks like
/// HTML for HTML.
QString plainToolTip(const QString& text);

/// Has every label of the box show its text as it stands. Each of them would otherwise ask itself
/// whether a text, such as a file name, looks like HTML. Call it after the texts were set.
void showTextsAsTheyStand(QMessageBox& box);

} // namespace ui
