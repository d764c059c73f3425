// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How a cell is painted. The tone is chosen when the cell is painted, by the background that it
// then has: selected or not, alternate row, list or window. A colour that can be read on both kinds
// of rows is preferred, so that a word looks the same in all of them. Tested by
// result_tones_test.cpp.
#include "ui/tables/call_delegate.h"

#include <array>

#include <QAbstractItemView>

#include "ui/tables/call_icons.h"
#include "ui/tables/table_models.h"

namespace ui {
namespace {

constexpr std::array kGroups = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};

ResultTone toneAt(const QModelIndex& index, int role) {
    return static_cast<ResultTone>(index.data(role).toInt());
}

/// Where the words of a cell stand.
struct Ground {
    QColor text;   ///< of words without a tone
    QColor ofCell; ///< the cell's own background
    /// That of each row that is not selected, so that a word has the same colour in all of them.
    QList<QColor> ofRows;
};

Ground selectedGround(const QPalette& palette, QPalette::ColorGroup group) {
    const QColor highlight = legibleHighlight(palette, group);
    return {palette.color(group, QPalette::HighlightedText), highlight, {highlight}};
}

/// Rows lie on what the view's own background is: that of a list, or of the window around it.
Ground groundOf(const QStyleOptionViewItem& option, const QPalette& palette,
                QPalette::ColorGroup group) {
    if (option.state.testFlag(QStyle::State_Selected)) {
        return selectedGround(palette, group);
    }
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (view != nullptr && view->viewport()->backgroundRole() == QPalette::Window) {
        const QColor window = palette.color(group, QPalette::Window);
        return {palette.color(group, QPalette::WindowText), window, {window}};
    }
    const QColor base = palette.color(group, QPalette::Base);
    const QColor alternate = palette.color(group, QPalette::AlternateBase);
    const bool isAlternate = option.features.testFlag(QStyleOptionViewItem::Alternate);
    return {
        palette.color(group, QPalette::Text), isAlternate ? alternate : base, {base, alternate}};
}

QColor toneOnGround(ResultTone tone, const Ground& ground) {
    if (tone == ResultTone::muted) {
        return mutedColour(ground.text, ground.ofRows);
    }
    // Where rows are so different that no colour can be read on both, each has its own.
    return toneColour(tone, ground.ofRows, toneColour(tone, {ground.ofCell}, ground.text));
}

/// The group whose colours the style takes.
QPalette::ColorGroup groupOf(const QStyleOptionViewItem& option) {
    if (!option.state.testFlag(QStyle::State_Enabled)) {
        return QPalette::Disabled;
    }
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

Ground groundOf(const QStyleOptionViewItem& option) {
    return groundOf(option, option.palette, groupOf(option));
}

void makeLegible(QStyleOptionViewItem& option, ResultTone tone) {
    const QPalette palette = option.palette;
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    for (const QPalette::ColorGroup group : kGroups) {
        const Ground ground = groundOf(option, palette, group);
        const QColor colour = toneOnGround(tone, ground);
        option.palette.setColor(group, selected ? QPalette::HighlightedText : QPalette::Text,
                                colour);
        if (selected) {
            option.palette.setColor(group, QPalette::Highlight, ground.ofCell);
        }
    }
}

} // namespace

QColor CallDelegate::toneIn(const QStyleOptionViewItem& option, ResultTone tone) {
    return toneOnGround(tone, groundOf(option));
}

QColor CallDelegate::mutedIn(const QStyleOptionViewItem& option) {
    const Ground ground = groundOf(option);
    return mutedColour(ground.text, ground.ofRows);
}

void CallDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    const ResultTone tone = toneAt(index, kToneRole);
    const auto shape = static_cast<CallShape>(index.data(kShapeRole).toInt());
    if (shape != CallShape::none) {
        const ResultTone shapeTone =
            index.data(kShapeToneRole).isValid() ? toneAt(index, kShapeToneRole) : tone;
        const int side = option->fontMetrics.height() * 4 / 5;
        const QColor colour = toneIn(*option, shapeTone);
        option->features |= QStyleOptionViewItem::HasDecoration;
        option->decorationSize = QSize(side, side);
        option->icon = callIcon(shape, colour, colour);
    }
    makeLegible(*option, tone);
}

} // namespace ui
