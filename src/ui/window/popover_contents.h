// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;

namespace ui {

class RecordTableView;

/// What the popover holds: whose domain it is, its mutations with their counts and bars, and a
/// comment line. The table and the line are found by their object names.
class PopoverContents : public QWidget {
    Q_OBJECT

public:
    explicit PopoverContents(QWidget* parent = nullptr);

    /// Plain text; an empty line takes no room.
    void setTitle(const QString& title);
    /// Makes the table as high as its rows, up to a limit from which on it scrolls.
    void fitToRows();

private:
    QLabel* m_title;
    RecordTableView* m_table;
};

} // namespace ui
