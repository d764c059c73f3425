// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

namespace ui {

/// The role that a result word plays, shown by a colour and never by the colour alone.
enum class ResultTone {
    plain,        ///< the palette's text
    finding,      ///< red
    clear,        ///< blue
    controlFault, ///< orange
};

/// The role of a cell by its text, compared exactly.
ResultTone toneOfText(const QString& text);

/// Contrast of two opaque colours after WCAG 2.1, 1 to 21.
double contrastRatio(const QColor& one, const QColor& other);
/// The least contrast that a result word has against its cell's background.
inline constexpr double kLeastContrast = 4.5;

/// The tone's colour on this palette's Base and AlternateBase. Where neither of a tone's two
/// colours reaches kLeastContrast on both (a palette in the middle between light and dark), the
/// palette's text.
QColor toneColour(ResultTone tone, const QPalette& palette,
                  QPalette::ColorGroup group = QPalette::Active);

/// The palette's Highlight, made darker or lighter until its HighlightedText reaches
/// kLeastContrast on it: some desktops' own pair does not.
QColor legibleHighlight(const QPalette& palette, QPalette::ColorGroup group = QPalette::Active);

/// A colour for sentences that stand back, such as those of an empty table.
QColor mutedTextColour(const QPalette& palette);

} // namespace ui
