// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace ui {

class NoticeLine;

/// The error log of a document: the messages of its failed runs, in order. Nothing clears it.
class ErrorLogWindow : public QWidget {
    Q_OBJECT

public:
    explicit ErrorLogWindow(QWidget* parent = nullptr);

    /// Adds the text, as it stands, at the end. Keeps the reader's selection.
    void append(const QString& text);
    /// Shows the window in front and gives it the keyboard, unless a dialog has that.
    void bringForward();

Q_SIGNALS:
    /// The user pressed Esc in the window, which closes.
    void escaped();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makePlaceholderLegible();
    void copyLog();
    void saveLog();
    void writeLog(const QString& path);

    NoticeLine* m_notice;
    QPlainTextEdit* m_text;
};

} // namespace ui
