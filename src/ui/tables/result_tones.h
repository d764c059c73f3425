// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QList>
#include <QPalette>

namespace ui {

/// The role of a result word. A colour shows it, and never the colour alone.
enum class ResultTone {
    plain,        ///< the palette's text
    finding,      ///< red
    clear,        ///< blue
    controlFault, ///< orange
    muted,        ///< grey: there is nothing to judge
};

/// Contrast of two opaque colours after WCAG 2.1, 1 to 21.
double contrastRatio(const QColor& one, const QColor& other);
/// The least contrast that a result word has against its cell's background.
inline constexpr double kLeastContrast = 4.5;

/// The colour of words in the tone on all of these backgrounds: its usual light or dark colour, or
/// the nearest lighter or darker one of its hue that reaches kLeastContrast on each of them.
/// Returns `text` for plain, and where no lightness of the hue can be read; for muted, what
/// mutedColour() gives.
QColor toneColour(ResultTone tone, const QList<QColor>& backgrounds, const QColor& text);
/// The same on the palette's Base and AlternateBase, with its Text.
QColor toneColour(ResultTone tone, const QPalette& palette,
                  QPalette::ColorGroup group = QPalette::Active);
/// The same on the palette's Window, with its WindowText.
QColor toneColourOnWindow(ResultTone tone, const QPalette& palette);

/// The palette's Highlight, made darker or lighter until its HighlightedText and the tones reach
/// kLeastContrast on it. Some desktops' own pair does not, and on a highlight of middle lightness
/// all tones look alike.
QColor legibleHighlight(const QPalette& palette, QPalette::ColorGroup group = QPalette::Active);

/// A muted colour, for the sentence of an empty table and the like: `text` mixed with the
/// background as far as kLeastContrast on each of the backgrounds allows.
QColor mutedColour(const QColor& text, const QList<QColor>& backgrounds);

} // namespace ui
