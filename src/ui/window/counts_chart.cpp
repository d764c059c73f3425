// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/counts_chart.h"

#include <algorithm>

#include <QPainter>

#include "ui/tables/table_models.h"

namespace ui {

QRectF CountsChartDelegate::barIn(const QRectF& cell, double length) {
    constexpr qreal kMargin = 6.0;
    if (length <= 0.0) {
        return {};
    }
    const qreal room = std::max(0.0, cell.width() - 2 * kMargin);
    const qreal height = std::min(10.0, cell.height() * 0.5);
    return {cell.left() + kMargin, cell.center().y() - height / 2,
            std::max(1.0, room * std::min(1.0, length)), height};
}

void CountsChartDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    CallDelegate::paint(painter, option, index);
    const QRectF bar = barIn(option.rect, index.data(kBarRole).toDouble());
    if (bar.isEmpty()) {
        return;
    }
    const QColor colour =
        index.data(kReferenceRole).toBool() ? mutedIn(option) : toneIn(option, ResultTone::clear);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRoundedRect(bar, std::min(2.0, bar.width() / 2), 2.0);
    painter->restore();
}

} // namespace ui
