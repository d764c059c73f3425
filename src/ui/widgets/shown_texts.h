// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QMessageBox>
#include <QString>

// Texts that come from outside the program, such as paths and file names, on their way to the
// screen and back.

namespace ui {

/// A path as the engine's bytes, and as text to show.
std::string enginePath(const QString& path);
QString shownPath(const std::string& path);

/// The absolute path of a command line argument or a dropped text: a path, or a file URL.
QString pathOfArgument(const QString& argument);

/// A tool tip that shows the text as it stands. By itself a tip takes a file name that looks like
/// HTML for HTML.
QString plainToolTip(const QString& text);

/// Makes every label of the box show its text as it stands, whether or not it looks like HTML.
/// REQUIRES: the texts are set, since setting one may make its label.
void showTextsAsTheyStand(QMessageBox& box);

} // namespace ui
