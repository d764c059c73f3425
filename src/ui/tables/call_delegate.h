// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QStyledItemDelegate>

#include "ui/tables/result_tones.h"

namespace ui {

/// Paints a cell in its tone with its shape beside the text, on a selected row as well. Colours
/// come from the palette at the moment of painting, so a change of palette needs no more than a
/// repaint.
class CallDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

protected:
    /// What a cell of that option is painted with in the tone, and in a colour that stands back:
    /// legible on the cell's row and, unless it is selected, on its neighbours.
    static QColor toneIn(const QStyleOptionViewItem& option, ResultTone tone);
    static QColor mutedIn(const QStyleOptionViewItem& option);
};

} // namespace ui
