// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The log is plain text that only grows: messages name files, so no part of it is taken for HTML,
// and a reader may select in it while a batch adds lines. It comes forward by itself when a patient
// fails, but never takes the keyboard from a dialog, where the user may be typing a file's name.
// Tested by window_controller_test.cpp.
#include "ui/window/error_log_window.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "platform/files.h"
#include "ui/tables/result_tones.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/notices.h"

namespace ui {

ErrorLogWindow::ErrorLogWindow(QWidget* parent)
    : QWidget(parent, Qt::Window), m_notice(new NoticeLine(this)),
      m_text(new QPlainTextEdit(this)) {
    setWindowTitle(tr("Error Log"));
    setAccessibleName(tr("Error log"));
    resize(720, 320);
    m_text->setObjectName(QStringLiteral("errorLogTextView"));
    m_text->setAccessibleName(tr("Messages of failed runs"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setUndoRedoEnabled(false);
    m_text->setPlaceholderText(tr("No run has failed."));
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // The keyboard alone can read all of it.
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto* copy = buttons->addButton(tr("&Copy Log"), QDialogButtonBox::ActionRole);
    auto* save = buttons->addButton(tr("&Save Log…"), QDialogButtonBox::ActionRole);
    connect(copy, &QPushButton::clicked, this, &ErrorLogWindow::copyLog);
    connect(save, &QPushButton::clicked, this, &ErrorLogWindow::saveLog);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_notice);
    layout->addWidget(m_text, 1);
    layout->addWidget(buttons);
    makePlaceholderLegible();
}

/// Qt's own colour for it is the text's, half transparent: too faint on most desktops.
void ErrorLogWindow::makePlaceholderLegible() {
    QPalette muted; // with this colour alone, so that the others go on following the desktop
    muted.setColor(QPalette::PlaceholderText,
                   mutedColour(palette().color(QPalette::Text), {palette().color(QPalette::Base)}));
    m_text->setPalette(muted);
}

void ErrorLogWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        makePlaceholderLegible();
    }
}

void ErrorLogWindow::append(const QString& text) {
    QTextCursor end(m_text->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
}

void ErrorLogWindow::bringForward() {
    const bool dialogIsOpen = QApplication::activeModalWidget() != nullptr;
    setAttribute(Qt::WA_ShowWithoutActivating, dialogIsOpen);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    if (!dialogIsOpen) {
        activateWindow();
    }
}

void ErrorLogWindow::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        close();
        Q_EMIT escaped();
        return;
    }
    QWidget::keyPressEvent(event);
}

void ErrorLogWindow::copyLog() {
    QApplication::clipboard()->setText(m_text->toPlainText());
}

void ErrorLogWindow::saveLog() {
    auto* dialog = new QFileDialog(this, tr("Save Log"), QString(), tr("Text files (*.txt)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setWindowModality(Qt::WindowModal);
    connect(dialog, &QFileDialog::fileSelected, this, &ErrorLogWindow::writeLog);
    dialog->open();
}

void ErrorLogWindow::writeLog(const QString& path) {
    const platform::Status written =
        platform::writeFileAtomically(enginePath(path), m_text->toPlainText().toStdString());
    if (written) {
        m_notice->clear();
    } else {
        m_notice->say(
            NoticeLine::Kind::problem,
            tr("The log was not saved: %1").arg(QString::fromStdString(written.error().message)));
    }
}

} // namespace ui
