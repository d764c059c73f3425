// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QLabel;
class QString;

namespace ui {

/// A wrapped line under a preference that says what it does.
QLabel* makeEffectLabel(const QString& text);

} // namespace ui
