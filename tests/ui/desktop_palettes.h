// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cmath>
#include <map>

#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QtTest>

#include "ui/tables/result_tones.h"

namespace support {

inline QPalette paletteOf(QRgb window, QRgb base, QRgb alternate, QRgb text, QRgb highlight,
                          QRgb highlightedText) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, alternate);
    palette.setColor(QPalette::WindowText,
                     QColor(text).lightness() < 128 && QColor(window).lightness() < 64 ? 0xFFFFFFFF
                                                                                       : text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, highlightedText);
    return palette;
}

struct NamedPalette {
    const char* name;
    QPalette palette;
};

/// Palettes as desktops have them, and some that nobody would choose.
inline QList<NamedPalette> desktops() {
    constexpr QRgb kBlack = 0xFF000000;
    constexpr QRgb kWhite = 0xFFFFFFFF;
    return {
        {"fusion", QStyleFactory::create(QStringLiteral("Fusion"))->standardPalette()},
        {"light", paletteOf(0xFFF0F0F0, kWhite, 0xFFF5F5F5, kBlack, 0xFF308CC6, kWhite)},
        {"grey stripes", paletteOf(0xFFEFEFEF, kWhite, 0xFFE4E4E4, 0xFF1A1A1A, 0xFF3584E4, kWhite)},
        {"beige", paletteOf(0xFFD4CFC4, 0xFFE9E2D0, 0xFFC9BFA5, 0xFF1A1A1A, 0xFF7A5C2E, kWhite)},
        {"dark", paletteOf(0xFF2D2D30, 0xFF1E1E20, 0xFF28282B, 0xFFE6E6E6, 0xFF2A82DA, kWhite)},
        {"dark, soft", paletteOf(0xFF353535, 0xFF2A2A2A, 0xFF3A3A3A, kWhite, 0xFF8AB4F8, kBlack)},
        {"darker", paletteOf(0xFF222020, 0xFF3D3D3D, 0xFF5C5B5A, kWhite, 0xFF12608A, 0xFFF9F9F9)},
        {"slate", paletteOf(0xFF4A525A, 0xFF555D66, 0xFF5F6871, kWhite, 0xFF3DAEE9, kWhite)},
        {"high contrast", paletteOf(kBlack, kBlack, kBlack, kWhite, 0xFFFFFF00, kBlack)},
        {"high contrast, light", paletteOf(kWhite, kWhite, kWhite, kBlack, kBlack, kWhite)},
        {"mid-grey", paletteOf(0xFF808080, 0xFF808080, 0xFF888888, kBlack, 0xFF308CC6, kWhite)},
        {"light grey", paletteOf(0xFFA0A0A0, 0xFFB4B4B4, 0xFFAAAAAA, kBlack, 0xFF606060, kWhite)},
        {"red highlight", paletteOf(0xFFF0F0F0, kWhite, 0xFFF5F5F5, kBlack, 0xFFE2231A, kWhite)},
        {"orange highlight", paletteOf(0xFFF0F0F0, kWhite, 0xFFF5F5F5, kBlack, 0xFFE95420, kWhite)},
        {"pale highlight", paletteOf(0xFFF0F0F0, kWhite, 0xFFF5F5F5, kBlack, 0xFFB5D5FF, kBlack)},
        {"green highlight",
         paletteOf(0xFF2D2D30, 0xFF1E1E20, 0xFF28282B, kWhite, 0xFF35BF5C, kBlack)},
        {"grey on grey", paletteOf(0xFFF0F0F0, kWhite, 0xFFF5F5F5, kBlack, 0xFF909090, 0xFFAAAAAA)},
        {"unlike rows", paletteOf(kBlack, kWhite, kBlack, 0xFF777777, 0xFF308CC6, kWhite)},
        {"dark window, light tables",
         paletteOf(0xFF202020, kWhite, 0xFFF5F5F5, kBlack, 0xFF308CC6, kWhite)},
    };
}

/// A row of data for each of them, in a column "palette".
inline void addDesktopRows() {
    QTest::addColumn<QPalette>("palette");
    for (const NamedPalette& desktop : desktops()) {
        QTest::newRow(desktop.name) << desktop.palette;
    }
}

/// How far the colour's hue is from the role's, in degrees.
inline int hueDistance(const QColor& colour, ui::ResultTone role) {
    const std::map<ui::ResultTone, int> hues = {{ui::ResultTone::finding, 357},
                                                {ui::ResultTone::clear, 214},
                                                {ui::ResultTone::controlFault, 34}};
    const int apart = std::abs(colour.hslHue() - hues.at(role));
    return std::min(apart, 360 - apart);
}

inline int chroma(const QColor& colour) {
    const auto [least, most] = std::minmax({colour.red(), colour.green(), colour.blue()});
    return most - least;
}

/// Whether the colour can be taken for the role's.
inline bool showsRole(const QColor& colour, ui::ResultTone role) {
    return chroma(colour) >= 25 && hueDistance(colour, role) <= 12;
}

} // namespace support
