// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace ui {

/// The licences of the program and of what it is built with, as plain text.
QString licenceTexts();

} // namespace ui
