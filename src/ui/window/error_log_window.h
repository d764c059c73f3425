// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace ui {

class NoticeLine;

/// The window of the error log: what failed runs said, in order, never cleared by itself.
class ErrorLogWindow : public QWidget {
    Q_OBJECT

public:
    explicit ErrorLogWindow(QWidget* parent = nullptr);

    /// Adds the text at the end, as it stands, and leaves the reader's selection alone.
    void append(const QString& text);
    /// Shows the window in front, and gives it the keyboard unless a dialog has it.
    void bringForward();

Q_SIGNALS:
    /// Esc was pressed in the window, which closes.
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
