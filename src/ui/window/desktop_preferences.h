// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QSettings>

/// The desktop's own preferences. They live with the windows' state, apart from the settings that
/// the command line shares.
namespace ui {

// They stand in files: never change them.
inline constexpr QLatin1String kReadsInputsInPlace("readsInputsInPlace");
inline constexpr QLatin1String kWritesRecords("writesRecords");

/// Whether runs started from now on read the inputs where they lie, plain or .gz, and write nothing
/// beside them. False until the user asks for it.
inline bool readsInputsInPlace() {
    return QSettings().value(kReadsInputsInPlace, false).toBool();
}
inline void setReadsInputsInPlace(bool inPlace) {
    QSettings().setValue(kReadsInputsInPlace, inPlace);
}

/// Whether a result that is saved gets the record of its run beside it. True until the user says
/// otherwise.
inline bool writesRecords() {
    return QSettings().value(kWritesRecords, true).toBool();
}
inline void setWritesRecords(bool writes) {
    QSettings().setValue(kWritesRecords, writes);
}

} // namespace ui
