// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/save_dialog.h"

namespace ui {

SaveDialog::SaveDialog(const QString& extension, const QString& kindOfFile, QWidget* window)
    : QFileDialog(window), m_extension(QLatin1Char('.') + extension) {
    // The desktop's own dialog would let a name with another extension pass.
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilter(QStringLiteral("%1 (*%2)").arg(kindOfFile, m_extension));
    setDefaultSuffix(extension);
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
}

void SaveDialog::accept() {
    const QString path = selectedFiles().value(0);
    const bool isDirectory = QFileInfo(path).isDir();
    if (!path.isEmpty() && !isDirectory && !path.endsWith(m_extension)) {
        selectFile(path + m_extension);
    }
    QFileDialog::accept();
}

} // namespace ui
