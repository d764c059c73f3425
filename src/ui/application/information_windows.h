// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <QDialog>
#include <QList>
#include <QString>

class QDialogButtonBox;

namespace ui {

/// A window that tells something about the program, to read and to close. The functions below make
/// the three that there are.
class InformationWindow : public QDialog {
    Q_OBJECT

public:
    /// Takes the contents, shown from top to bottom above the Close button.
    InformationWindow(const QString& name, const QString& title, const QList<QWidget*>& contents);
    /// Adds a button that emits licencesRequested().
    void offerLicences();

Q_SIGNALS:
    void licencesRequested();

private:
    QDialogButtonBox* m_buttons;
};

/// The program's version and the catalogue that its runs use. Reads the catalogue; an unreadable
/// one is told in the window.
std::unique_ptr<InformationWindow> makeAboutWindow(const std::string& definitionFilePath);

/// How to work with the program, then its keys.
std::unique_ptr<InformationWindow> makeHelpWindow();

/// The licences of the program and of what it is built with.
std::unique_ptr<InformationWindow> makeLicencesWindow();

/// A key of the program and what it does, as the help lists it.
struct HelpKey {
    QString keys;
    QString what;
};
QList<HelpKey> helpKeys();

} // namespace ui
