// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFileDialog>

namespace ui {

/// Asks, as a sheet on its window, where to write a file whose only allowed extension is the given
/// one: a name without it gets it before anything is overwritten.
class SaveDialog : public QFileDialog {
    Q_OBJECT

public:
    SaveDialog(const QString& extension, const QString& kindOfFile, QWidget* window);

public Q_SLOTS:
    void accept() override;

private:
    QString m_extension;
};

} // namespace ui
