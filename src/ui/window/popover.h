// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>
#include <QWidget>

#include "ui/tables/call_delegate.h"

class QLabel;

namespace ui {

/// Paints the column "bar" of a table of counts. Its cells make up a bar chart that stays in line
/// with the names and numbers beside it, however long the list. Reference entries are grey. The
/// numbers stand in the table, and each cell has a text for screen readers.
class CountsChartDelegate : public CallDelegate {
    Q_OBJECT

public:
    using CallDelegate::CallDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The bar within its cell. `length` is the part of the room that it takes, 0 to 1; above 0 it
    /// gets one pixel at least.
    static QRectF barIn(const QRectF& cell, double length);
};

class RecordTableView;

/// What the popover holds: a title, the mutations of a domain with their counts and bars, and a
/// comment line. The window finds the table and the line by their object names.
class PopoverContents : public QWidget {
    Q_OBJECT

public:
    explicit PopoverContents(QWidget* parent = nullptr);

    /// Plain text; an empty line takes no room.
    void setTitle(const QString& title);
    /// Makes the table as high as its rows; beyond a limit it scrolls.
    void fitToRows();

private:
    QLabel* m_title;
    RecordTableView* m_table;
};

/// A panel beside the place that it explains. It is transient: it closes on Esc and when the user
/// works elsewhere.
class Popover : public QFrame {
    Q_OBJECT

public:
    /// Takes `contents`; belongs to `window`.
    Popover(QWidget* contents, QWidget* window);

    /// Opens beside `anchor`, a rectangle of `of`: at its right-hand edge if there is room.
    void showRelativeToRect(const QRect& anchor, QWidget* of);

    /// The top left corner of a panel of `size`: to the right of the anchor, else to its left,
    /// always within `screen`. All in the screen's coordinates.
    static QPoint place(const QRect& anchor, const QSize& size, const QRect& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();

    QWidget* m_contents;
};

} // namespace ui
