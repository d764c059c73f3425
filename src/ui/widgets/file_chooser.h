// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

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

} // namespace ui
