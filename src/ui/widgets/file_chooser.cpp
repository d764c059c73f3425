// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/widgets/file_chooser.h"

#include <QFileDialog>
#include <QSettings>

namespace ui {

namespace {

QString folderKey() {
    return QStringLiteral("openFolder");
}

QStringList filtersOf(FileChooser::Kind kind) {
    const QString anything = FileChooser::tr("Reads and saved results (*.fastq *.gz *.vexta)");
    const QString reads = FileChooser::tr("FASTQ reads (*.fastq *.gz)");
    const QString result = FileChooser::tr("Saved results (*.vexta)");
    const QString all = FileChooser::tr("All files (*)");
    switch (kind) {
    case FileChooser::Kind::reads:
        return {reads, all};
    case FileChooser::Kind::result:
        return {result, all};
    case FileChooser::Kind::anything:
    case FileChooser::Kind::folder:
        break;
    }
    return {anything, reads, result, all};
}

} // namespace

FileChooser::~FileChooser() {
    delete m_dialog;
}

void FileChooser::ask(Kind kind, QWidget* above) {
    delete m_dialog;
    m_dialog = new QFileDialog(above);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setDirectory(QSettings().value(folderKey()).toString());
    if (kind == Kind::folder) {
        m_dialog->setWindowTitle(tr("Open Folder"));
        m_dialog->setFileMode(QFileDialog::Directory);
        m_dialog->setOption(QFileDialog::ShowDirsOnly);
    } else {
        m_dialog->setWindowTitle(tr("Open"));
        m_dialog->setFileMode(QFileDialog::ExistingFiles);
        m_dialog->setNameFilters(filtersOf(kind));
    }
    connect(m_dialog, &QFileDialog::accepted, this, &FileChooser::accept);
    m_dialog->open();
}

void FileChooser::accept() {
    QSettings().setValue(folderKey(), m_dialog->directory().absolutePath());
    Q_EMIT chosen(m_dialog->selectedFiles());
}

} // namespace ui
