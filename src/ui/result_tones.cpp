// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/result_tones.h"

#include <algorithm>
#include <cmath>

namespace ui {
namespace {

/// A tone as it is written on light and on dark backgrounds.
struct TonePair {
    QRgb onLight;
    QRgb onDark;
};

TonePair pairOf(ResultTone tone) {
    switch (tone) {
    case ResultTone::finding:
        return {0xFFB00020, 0xFFFF8A80};
    case ResultTone::clear:
        return {0xFF0B57A4, 0xFF8AB4F8};
    case ResultTone::controlFault:
        return {0xFF8A4B00, 0xFFFFB74D};
    case ResultTone::plain:
        break;
    }
    return {0xFF000000, 0xFFFFFFFF};
}

/// Relative luminance of an sRGB colour, 0 to 1 (WCAG 2.1).
double luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double contrastOnCells(const QColor& colour, const QPalette& palette, QPalette::ColorGroup group) {
    return std::min(contrastRatio(colour, palette.color(group, QPalette::Base)),
                    contrastRatio(colour, palette.color(group, QPalette::AlternateBase)));
}

QColor mixed(const QColor& one, const QColor& other, double shareOfOne) {
    const auto mix = [shareOfOne](double a, double b) {
        return static_cast<float>(a * shareOfOne + b * (1.0 - shareOfOne));
    };
    return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                            mix(one.blueF(), other.blueF()));
}

} // namespace

ResultTone toneOfText(const QString& text) {
    if (text == QLatin1String("Positive") || text == QLatin1String("RNA degraded")) {
        return ResultTone::finding;
    }
    if (text == QLatin1String("Negative") || text == QLatin1String("RNA not degraded") ||
        text == QLatin1String("Not Detected")) {
        return ResultTone::clear;
    }
    return text == QLatin1String("Control Not Working") ? ResultTone::controlFault
                                                        : ResultTone::plain;
}

double contrastRatio(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

QColor toneColour(ResultTone tone, const QPalette& palette, QPalette::ColorGroup group) {
    const QColor text = palette.color(group, QPalette::Text);
    if (tone == ResultTone::plain) {
        return text;
    }
    const TonePair pair = pairOf(tone);
    for (const QRgb rgb : {pair.onLight, pair.onDark}) {
        const QColor colour = QColor::fromRgb(rgb);
        if (contrastOnCells(colour, palette, group) >= kLeastContrast) {
            return colour;
        }
    }
    return text;
}

QColor legibleHighlight(const QPalette& palette, QPalette::ColorGroup group) {
    const QColor text = palette.color(group, QPalette::HighlightedText);
    const QColor highlight = palette.color(group, QPalette::Highlight);
    // Away from the text: what is left of the highlight goes down until the pair can be read.
    const QColor away = luminance(text) > 0.5 ? Qt::black : Qt::white;
    for (double share = 1.0; share > 0.0; share -= 0.05) {
        const QColor candidate = mixed(highlight, away, share);
        if (contrastRatio(text, candidate) >= kLeastContrast) {
            return candidate;
        }
    }
    return away;
}

QColor mutedTextColour(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Text);
    const QColor base = palette.color(QPalette::Base);
    for (double share = 0.6; share < 1.0; share += 0.05) {
        const QColor candidate = mixed(text, base, share);
        if (contrastRatio(candidate, base) >= kLeastContrast) {
            return candidate;
        }
    }
    return text;
}

} // namespace ui
