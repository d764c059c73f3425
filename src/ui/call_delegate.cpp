// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/call_delegate.h"

#include <array>

#include "ui/call_icons.h"
#include "ui/record_table_model.h"
#include "ui/result_tones.h"

namespace ui {
namespace {

constexpr std::array kGroups = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};

ResultTone toneIn(const QModelIndex& index, int role) {
    return static_cast<ResultTone>(index.data(role).toInt());
}

void makeLegible(QStyleOptionViewItem& option, ResultTone tone) {
    const QPalette palette = option.palette;
    for (const QPalette::ColorGroup group : kGroups) {
        option.palette.setColor(group, QPalette::Text, toneColour(tone, palette, group));
        option.palette.setColor(group, QPalette::Highlight, legibleHighlight(palette, group));
    }
}

} // namespace

void CallDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const QPalette palette = option->palette;
    const ResultTone tone = toneIn(index, kToneRole);
    makeLegible(*option, tone);
    const auto shape = static_cast<CallShape>(index.data(kShapeRole).toInt());
    if (shape == CallShape::none) {
        return;
    }
    const ResultTone shapeTone =
        index.data(kShapeToneRole).isValid() ? toneIn(index, kShapeToneRole) : tone;
    const int side = option->fontMetrics.height() * 4 / 5;
    option->features |= QStyleOptionViewItem::HasDecoration;
    option->decorationSize = QSize(side, side);
    option->icon =
        callIcon(shape, toneColour(shapeTone, palette), palette.color(QPalette::HighlightedText));
}

} // namespace ui
