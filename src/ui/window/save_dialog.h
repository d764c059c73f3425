// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileDialog>

class QMessageBox;

namespace ui {

/// The path of the file that is written for a chosen one: its name has the extension, in capitals
/// or not, or else gets it ("y.txt" becomes "y.txt.vexta"). Blanks at the name's end do not count,
/// and a dot there is the extension's. Empty where no name is left.
QString pathWithExtension(const QString& path, const QString& extension);

/// Asks, as a sheet on its window, where to write a file whose only allowed extension is the given
/// one. fileSelected() gives pathWithExtension() of what was typed or chosen, after the user agreed
/// to replace a file of that name. A directory is entered. A name that cannot be written is told,
/// and the sheet stays.
class SaveDialog : public QFileDialog {
    Q_OBJECT

public:
    SaveDialog(const QString& extension, const QString& kindOfFile, QWidget* window);

public Q_SLOTS:
    void accept() override;

private:
    void letTheFieldDecide();
    void finish(const QString& path);
    void askToReplace(const QString& path);
    void refuse(const QString& reason);
    QMessageBox& makeBox(const QString& name, const QString& text);

    QString m_extension;
};

} // namespace ui
