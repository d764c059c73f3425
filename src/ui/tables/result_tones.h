// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QList>
#include <QPalette>

namespace ui {

/// The role that a result word plays, shown by a colour and never by the colour alone.
enum class ResultTone {
    plain,        ///< the palette's text
    finding,      ///< red
    clear,        ///< blue
    controlFault, ///< orange
};

/// Contrast of two opaque colours after WCAG 2.1, 1 to 21.
double contrastRatio(const QColor& one, const QColor& other);
/// The least contrast that a result word has against its cell's background.
inline constexpr double kLeastContrast = 4.5;

/// The tone as words are written in it on each of these backgrounds: its usual light or dark
/// colour, or else the nearest lighter or darker one of its hue that reaches kLeastContrast on all
/// of them. `text` for plain, and where no lightness of the hue does.
QColor toneColour(ResultTone tone, const QList<QColor>& backgrounds, const QColor& text);
/// The same on this palette's Base and AlternateBase, or else its Text.
QColor toneColour(ResultTone tone, const QPalette& palette,
                  QPalette::ColorGroup group = QPalette::Active);
/// The same on this palette's Window, or else its WindowText.
QColor toneColourOnWindow(ResultTone tone, const QPalette& palette);

/// The palette's Highlight, made darker or lighter until its HighlightedText and the tones reach
/// kLeastContrast on it: some desktops' own pair does not, and on a highlight of middle lightness
/// no tone could be told from another.
QColor legibleHighlight(const QPalette& palette, QPalette::ColorGroup group = QPalette::Active);

/// A colour for what stands back, such as the sentence of an empty table: `text`, as near to the
/// backgrounds as kLeastContrast on each of them allows.
QColor mutedColour(const QColor& text, const QList<QColor>& backgrounds);

} // namespace ui
