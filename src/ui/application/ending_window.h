// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;

namespace ui {

/// Says that the program ends as soon as the running patient is done. There is nothing to do in it,
/// and closing it changes nothing.
class EndingWindow : public QWidget {
    Q_OBJECT

public:
    EndingWindow();

    /// Says that the files were asked for too late to be opened.
    void sayNotOpened(const QStringList& paths);

private:
    QLabel* m_notOpened;
};

} // namespace ui
