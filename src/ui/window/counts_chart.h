// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/tables/call_delegate.h"

namespace ui {

/// Paints the column "bar" of a table of counts: together its cells are a bar chart that keeps in
/// line with the names and numbers beside it, however long the list. Reference entries are grey.
/// The numbers stand in the table, and each cell has a text for screen readers.
class CountsChartDelegate : public CallDelegate {
    Q_OBJECT

public:
    using CallDelegate::CallDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// The bar within its cell: `length` from 0 to 1 of the room there is, at least one pixel for
    /// a count that is not 0.
    static QRectF barIn(const QRectF& cell, double length);
};

} // namespace ui
