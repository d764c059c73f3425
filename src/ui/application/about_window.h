// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QDialog>

namespace ui {

/// The program's version and the catalogue that its runs use.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(const std::string& definitionFilePath, QWidget* parent = nullptr);

Q_SIGNALS:
    void licencesRequested();
};

} // namespace ui
