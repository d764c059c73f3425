// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

namespace ui {

/// The licences of the program and of what it is built with.
class LicencesWindow : public QDialog {
    Q_OBJECT

public:
    explicit LicencesWindow(QWidget* parent = nullptr);
};

} // namespace ui
