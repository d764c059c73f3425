// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QMainWindow>
#include <QString>

namespace ui {

/// Makes the window that the description of that name ("VextaDocument" or "VextaDocumentMidi")
/// tells of. The descriptions ship inside the program; what is wrong with one ends the program with
/// a message (it is a fault of the build, not of the user's).
std::unique_ptr<QMainWindow> loadWindowDescription(const QString& name);

/// The control of that name and kind below `root`; ends the program where there is none.
template <class Control>
Control* outlet(QObject& root, const char* name);

[[noreturn]] void failForMissingOutlet(const char* name, const char* kind);

template <class Control>
Control* outlet(QObject& root, const char* name) {
    auto* control = root.findChild<Control*>(QLatin1String(name));
    if (control == nullptr) {
        failForMissingOutlet(name, Control::staticMetaObject.className());
    }
    return control;
}

} // namespace ui
