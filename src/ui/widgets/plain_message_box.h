// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMessageBox>

namespace ui {

/// Has every label of the box show its text as it stands. Each of them would otherwise ask itself
/// whether a text, such as a file name, looks like HTML. Call it after the texts were set.
void showTextsAsTheyStand(QMessageBox& box);

} // namespace ui
