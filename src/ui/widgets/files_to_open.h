// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QStringList>

class QFileDialog;

namespace ui {

/// Asks for files to open. One dialog at a time; it holds nobody. The folder is remembered from one
/// session to the next.
class FileChooser : public QObject {
    Q_OBJECT

public:
    enum class Kind { anything, reads, result, folder };

    using QObject::QObject;
    ~FileChooser() override;

    void ask(Kind kind, QWidget* above);

Q_SIGNALS:
    void chosen(const QStringList& paths);

private:
    void accept();

    QPointer<QFileDialog> m_dialog;
};

/// A framed place that says what may be dropped on its window. It only shows; the window takes the
/// drop. Colours are the palette's, also after a change.
class DropArea : public QLabel {
    Q_OBJECT

public:
    explicit DropArea(QWidget* parent = nullptr);
    /// While something that can be opened hovers over the window.
    void setInviting(bool inviting);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_inviting = false;
};

} // namespace ui
