// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/desktop_preferences.h"

#include <QSettings>

namespace ui {

namespace {

// Stands in files: never change it.
const QString kReadsInputsInPlace = QStringLiteral("readsInputsInPlace");

} // namespace

bool readsInputsInPlace() {
    return QSettings().value(kReadsInputsInPlace, false).toBool();
}

void setReadsInputsInPlace(bool inPlace) {
    QSettings().setValue(kReadsInputsInPlace, inPlace);
}

} // namespace ui
