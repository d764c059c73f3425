// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Colours that tell roles apart on whatever background a desktop has. A role is its hue. If neither
// of a tone's two usual colours can be read on a background, the hue stays and the lightness moves,
// as little as it takes. If no lightness can be read, the word has the colour of the palette's
// text, and the shape beside it still tells the role.
//
// Contrast is that of WCAG 2.1, 4.5 at least. In the worst case a thousand colours are
// tried, and cells ask when they are painted, so the linear light of a channel is looked up. Tested
// by result_tones_test.cpp.
#include "ui/tables/result_tones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace ui {
namespace {

/// A tone as it is written on light and on dark backgrounds.
struct TonePair {
    QRgb onLight;
    QRgb onDark;
};

constexpr std::array kRoles = {ResultTone::finding, ResultTone::clear, ResultTone::controlFault};

TonePair pairOf(ResultTone tone) {
    switch (tone) {
    case ResultTone::finding:
        return {0xFFB00020, 0xFFFF8A80};
    case ResultTone::clear:
        return {0xFF0B57A4, 0xFF8AB4F8};
    case ResultTone::controlFault:
        return {0xFF8A4B00, 0xFFFFB74D};
    case ResultTone::plain:
    case ResultTone::muted:
        break;
    }
    return {0xFF000000, 0xFFFFFFFF};
}

/// About as fine as a screen's colours.
constexpr int kLightnessSteps = 256;
/// The least distance of a colour's strongest from its weakest channel at which its hue is seen at
/// all, and that at which it is seen at a glance.
constexpr float kLeastChroma = 0.1F;
constexpr float kClearChroma = 0.25F;

/// The linear light of each value of a channel of sRGB (WCAG 2.1).
std::array<double, 256> linearLight() {
    std::array<double, 256> light{};
    for (std::size_t value = 0; value < light.size(); ++value) {
        const double channel = static_cast<double>(value) / 255.0;
        light[value] =
            channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    }
    return light;
}

/// Relative luminance of an sRGB colour, 0 to 1 (WCAG 2.1).
double luminance(const QColor& colour) {
    static const std::array<double, 256> kLight = linearLight();
    const auto light = [](int channel) { return kLight[static_cast<std::size_t>(channel)]; };
    return 0.2126 * light(colour.red()) + 0.7152 * light(colour.green()) +
           0.0722 * light(colour.blue());
}

bool isLegible(const QColor& colour, const QList<QColor>& backgrounds) {
    return std::all_of(backgrounds.begin(), backgrounds.end(), [&](const QColor& background) {
        return contrastRatio(colour, background) >= kLeastContrast;
    });
}

float chromaOf(const QColor& colour) {
    const auto [least, most] = std::minmax({colour.redF(), colour.greenF(), colour.blueF()});
    return most - least;
}

/// The colour with another lightness (0 to 1), as a screen shows it.
QColor withLightness(const QColor& colour, float lightness) {
    float hue = 0.0F;
    float saturation = 0.0F;
    float ignored = 0.0F;
    colour.getHslF(&hue, &saturation, &ignored);
    return QColor::fromRgb(QColor::fromHslF(hue, saturation, lightness).rgb());
}

std::array<QColor, 2> usualColours(ResultTone tone) {
    const TonePair pair = pairOf(tone);
    return {QColor::fromRgb(pair.onLight), QColor::fromRgb(pair.onDark)};
}

std::optional<QColor> toneOn(ResultTone tone, const QList<QColor>& backgrounds) {
    const auto usual = usualColours(tone);
    for (const QColor& colour : usual) {
        if (isLegible(colour, backgrounds)) {
            return colour;
        }
    }
    for (int step = 1; step < kLightnessSteps; ++step) {
        const float change = static_cast<float>(step) / static_cast<float>(kLightnessSteps);
        for (const QColor& colour : usual) {
            for (const float lightness :
                 {colour.lightnessF() - change, colour.lightnessF() + change}) {
                if (lightness <= 0.0F || lightness >= 1.0F) {
                    continue;
                }
                const QColor candidate = withLightness(colour, lightness);
                if (chromaOf(candidate) >= kLeastChroma && isLegible(candidate, backgrounds)) {
                    return candidate;
                }
            }
        }
    }
    return std::nullopt;
}

/// Whether the tone has a colour on that background whose hue is seen at a glance: if one has, so
/// does the darkest or the lightest of them.
bool isClearOn(const QColor& background, ResultTone tone) {
    const auto usual = usualColours(tone);
    return std::any_of(usual.begin(), usual.end(), [&](const QColor& colour) {
        const float end = kClearChroma / (2.0F * colour.hslSaturationF());
        return isLegible(withLightness(colour, end), {background}) ||
               isLegible(withLightness(colour, 1.0F - end), {background});
    });
}

/// Whether a selected row of that colour can be read, and its roles told apart.
bool showsEveryRole(const QColor& highlight, const QColor& text) {
    return contrastRatio(text, highlight) >= kLeastContrast &&
           std::all_of(kRoles.begin(), kRoles.end(),
                       [&](ResultTone tone) { return isClearOn(highlight, tone); });
}

QColor mixed(const QColor& one, const QColor& other, double shareOfOne) {
    const auto mix = [shareOfOne](double a, double b) {
        return static_cast<float>(a * shareOfOne + b * (1.0 - shareOfOne));
    };
    const QColor fine =
        QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                         mix(one.blueF(), other.blueF()));
    return QColor::fromRgb(fine.rgb()); // as a screen shows it
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

QColor toneColour(ResultTone tone, const QList<QColor>& backgrounds, const QColor& text) {
    switch (tone) {
    case ResultTone::plain:
        return text;
    case ResultTone::muted:
        return mutedColour(text, backgrounds);
    default:
        return toneOn(tone, backgrounds).value_or(text);
    }
}

QColor toneColour(ResultTone tone, const QPalette& palette, QPalette::ColorGroup group) {
    return toneColour(
        tone, {palette.color(group, QPalette::Base), palette.color(group, QPalette::AlternateBase)},
        palette.color(group, QPalette::Text));
}

QColor toneColourOnWindow(ResultTone tone, const QPalette& palette) {
    return toneColour(tone, {palette.color(QPalette::Window)}, palette.color(QPalette::WindowText));
}

QColor legibleHighlight(const QPalette& palette, QPalette::ColorGroup group) {
    const QColor text = palette.color(group, QPalette::HighlightedText);
    const QColor highlight = palette.color(group, QPalette::Highlight);
    // Away from the text: what is left of the highlight goes down until the pair can be read.
    const QColor away =
        contrastRatio(text, Qt::black) > contrastRatio(text, Qt::white) ? Qt::black : Qt::white;
    for (double share = 1.0; share > 0.0; share -= 0.05) {
        const QColor candidate = mixed(highlight, away, share);
        if (showsEveryRole(candidate, text)) {
            return candidate;
        }
    }
    return away;
}

QColor mutedColour(const QColor& text, const QList<QColor>& backgrounds) {
    for (double share = 0.6; share < 1.0; share += 0.05) {
        const QColor candidate = mixed(text, backgrounds.first(), share);
        if (isLegible(candidate, backgrounds)) {
            return candidate;
        }
    }
    return text;
}

} // namespace ui
