// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QDialog>
#include <QList>
#include <QString>

namespace ui {

/// The licences of the program and of what it is built with, as plain text.
QString licenceTexts();

/// A key of the program and what it does.
struct HelpKey {
    QString keys;
    QString what;
};

QList<HelpKey> helpKeys();

/// The help as HTML: how to work with the program, then its keys.
QString helpPage();

/// The program's version and the catalogue that its runs use.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    explicit AboutWindow(const std::string& definitionFilePath, QWidget* parent = nullptr);

Q_SIGNALS:
    void licencesRequested();
};

/// How to work with the program, and its keys.
class HelpWindow : public QDialog {
    Q_OBJECT

public:
    explicit HelpWindow(QWidget* parent = nullptr);
};

/// The licences of the program and of what it is built with.
class LicencesWindow : public QDialog {
    Q_OBJECT

public:
    explicit LicencesWindow(QWidget* parent = nullptr);
};

} // namespace ui
