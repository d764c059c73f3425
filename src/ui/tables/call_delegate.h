// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QStyledItemDelegate>

#include "ui/tables/result_tones.h"

namespace ui {

/// Paints a cell in its tone with its shape beside the text, on a selected row as well. It takes
/// colours from the palette when it paints, so a change of palette needs a repaint and no more.
class CallDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

protected:
    /// The colours of a cell: in the tone, and muted. Both can be read on the cell's row and,
    /// unless it is selected, on its neighbours.
    static QColor toneIn(const QStyleOptionViewItem& option, ResultTone tone);
    static QColor mutedIn(const QStyleOptionViewItem& option);
};

} // namespace ui
