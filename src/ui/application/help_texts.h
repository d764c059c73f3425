// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QString>

namespace ui {

/// A key of the program and what it does.
struct HelpKey {
    QString keys;
    QString what;
};

QList<HelpKey> helpKeys();

/// The help as HTML: how to work with the program, then its keys.
QString helpPage();

} // namespace ui
