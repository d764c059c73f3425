// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QMainWindow>
#include <QString>

namespace ui {

/// Makes the window of that description, "VextaDocument" or "VextaDocumentMidi". Descriptions are
/// part of the program: a faulty one is a fault of the build and ends the program with a message.
std::unique_ptr<QMainWindow> loadWindowDescription(const QString& name);

/// The control of that name and kind below `root`; without one, ends the program.
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
