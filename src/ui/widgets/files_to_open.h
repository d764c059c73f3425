// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QStringList>

class QFileDialog;
class QMimeData;

namespace ui {

/// Asks for files to open, in one dialog at a time that blocks nothing. It starts in the folder of
/// the last choice, also from an earlier session.
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

/// A framed place that says what the user may drop on its window. It only shows; the window takes
/// the drop. Its colours follow the palette.
class DropArea : public QLabel {
    Q_OBJECT

public:
    explicit DropArea(QWidget* parent = nullptr);
    /// True while something that can be opened hovers over the window.
    void setInviting(bool inviting);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_inviting = false;
};

/// The local files in what the user drags.
QStringList localFiles(const QMimeData& data);

} // namespace ui
