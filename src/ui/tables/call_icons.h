// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

namespace ui {

/// The shapes beside result words, so that no colour tells anything alone.
enum class CallShape {
    none,
    triangle,        ///< a finding
    circle,          ///< nothing found
    square,          ///< the control does not work
    questionDiamond, ///< undecided
    hollowDiamond,   ///< both alleles wild type
    halfDiamond,     ///< one allele mutant
    filledDiamond,   ///< both alleles mutant
    hollowSquare,    ///< not assessable
};

/// What the shape says, for a tooltip and for a screen reader. Empty for none.
QString wordsOf(CallShape shape);

/// The shape as an icon, sharp at any size and scale. On a selected row it is painted in
/// `selected`.
QIcon callIcon(CallShape shape, const QColor& colour, const QColor& selected);

} // namespace ui
