// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The two ways to name files that the program opens: a dialog, and a drop on a window. Tested by
// start_window_test.cpp.
#include "ui/widgets/files_to_open.h"

#include <QFileDialog>
#include <QMimeData>
#include <QPainter>
#include <QSettings>
#include <QUrl>

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

// --- Drops

QStringList localFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

namespace {

constexpr int kPadding = 16;
constexpr qreal kRadius = 8.0;
constexpr qreal kLine = 2.0;

} // namespace

DropArea::DropArea(QWidget* parent) : QLabel(parent) {
    setForegroundRole(QPalette::Text); // since paintEvent() fills with the base colour
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(kPadding);
    setText(tr("Drop a FASTQ file, a folder of FASTQ files or a saved result here"));
}

void DropArea::setInviting(bool inviting) {
    m_inviting = inviting;
    update();
}

void DropArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette::ColorRole line = m_inviting ? QPalette::Highlight : QPalette::Mid;
    painter.setPen(QPen(palette().color(line), kLine, Qt::DashLine));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(kLine, kLine, -kLine, -kLine), kRadius,
                            kRadius);
    QLabel::paintEvent(event);
}

} // namespace ui
