// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStyledItemDelegate>

namespace ui {

/// Paints a cell in its tone with its shape beside the text. Colours come from the palette at the
/// moment of painting, so a change of palette needs no more than a repaint.
class CallDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

} // namespace ui
