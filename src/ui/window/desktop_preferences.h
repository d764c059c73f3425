// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSettings>

/// The desktop's own preference. It lives with the windows' state, apart from the settings that the
/// command line shares.
namespace ui {

// Stands in files: never change it.
inline constexpr QLatin1String kReadsInputsInPlace("readsInputsInPlace");

/// Whether runs started from now on read the inputs where they lie, plain or .gz, and write nothing
/// beside them. False until the user asks for it.
inline bool readsInputsInPlace() {
    return QSettings().value(kReadsInputsInPlace, false).toBool();
}
inline void setReadsInputsInPlace(bool inPlace) {
    QSettings().setValue(kReadsInputsInPlace, inPlace);
}

} // namespace ui
