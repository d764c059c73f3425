// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cmath>
#include <cstdint>
#include <random>

#include <QImage>
#include <QPainter>
#include <QStyleOptionViewItem>
#include <QtTest>

#include "ui/desktop_palettes.h"
#include "ui/record_builder.h"
#include "ui/tables/call_delegate.h"
#include "ui/tables/call_icons.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/result_tones.h"
#include "ui/tables/table_models.h"
#include "ui/window_test.h"

namespace {

/// The calls of each tone, in one somatic RNA table.
support::PatientBuilder patientWithEveryTone() {
    support::PatientBuilder built("1");
    built.somaticRNA("A", "Positive").somaticRNA("B", "Negative");
    built.somaticRNA("C", "Control Not Working").somaticRNA("D", "ND *1");
    return built;
}

constexpr QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive};
constexpr std::array kRoles = {ui::ResultTone::finding, ui::ResultTone::clear,
                               ui::ResultTone::controlFault};

int distance(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
           std::abs(one.blue() - other.blue());
}

/// Whether any colour of the role's hue can be read there: all of them are tried.
bool hasLegibleLightness(ui::ResultTone role, const QColor& background) {
    const QColor usual = ui::toneColour(role, {Qt::white}, Qt::black);
    for (int lightness = 0; lightness <= 1000; ++lightness) {
        const QColor exact = QColor::fromHslF(usual.hslHueF(), usual.hslSaturationF(),
                                              static_cast<float>(lightness) / 1000.0F);
        const QColor colour = QColor::fromRgb(exact.rgb());
        if (support::chroma(colour) >= 26 && ui::contrastRatio(colour, background) >= 4.5) {
            return true;
        }
    }
    return false;
}

/// A row that has the role, on a table of the window, as the delegate has it painted.
struct PaintedCell {
    PaintedCell(const QPalette& palette, ui::ResultTone role, QStyle::State state,
                QStyleOptionViewItem::ViewItemFeatures features = {}) {
        const auto built = patientWithEveryTone();
        ui::ResultTableModel model(ui::ResultTable::somaticRNA,
                                   {{QStringLiteral("1")}, {QStringLiteral("Diagnosis")}}, nullptr);
        model.reload(built.patient.get());
        option.palette = palette;
        option.state = state | QStyle::State_Enabled;
        option.features = features;
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.index(row, 0).data(ui::kToneRole).toInt() == static_cast<int>(role)) {
                ui::CallDelegate().initStyleOption(&option, model.index(row, 0));
            }
        }
    }
    QColor shape() const {
        const QImage image =
            option.icon
                .pixmap(QSize(64, 64), option.state.testFlag(QStyle::State_Selected)
                                           ? QIcon::Selected
                                           : QIcon::Normal)
                .toImage();
        // The middle of what is filled, or the outline of the circle.
        return image.pixelColor(image.pixelColor(32, 32).alpha() == 255 ? QPoint(32, 32)
                                                                        : QPoint(32, 10));
    }
    QStyleOptionViewItem option;
};

} // namespace

/// Colours that are read: computed against the background that each cell has.
class ResultTonesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void contrastAgreesWithKnownPairs() {
        QCOMPARE(ui::contrastRatio(Qt::black, Qt::white), 21.0);
        QCOMPARE(ui::contrastRatio(Qt::white, Qt::white), 1.0);
        // The least grey that reaches 4.5 on white.
        QVERIFY(ui::contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white) >= 4.5);
        QVERIFY(ui::contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white) < 4.5);
    }

    void everyRoleIsShownAndCanBeRead_data() { support::addDesktopRows(); }
    void everyRoleIsShownAndCanBeRead() {
        QFETCH(QPalette, palette);
        for (const ui::ResultTone role : kRoles) {
            for (const auto feature :
                 {QStyleOptionViewItem::None, QStyleOptionViewItem::Alternate}) {
                const QStyleOptionViewItem option = PaintedCell(palette, role, {}, feature).option;
                for (const QPalette::ColorGroup group : kGroups) {
                    const QColor word = option.palette.color(group, QPalette::Text);
                    QVERIFY2(support::showsRole(word, role), qPrintable(word.name()));
                    QVERIFY(ui::contrastRatio(
                                word, palette.color(group, feature == QStyleOptionViewItem::None
                                                               ? QPalette::Base
                                                               : QPalette::AlternateBase)) >= 4.5);
                }
            }
            const QStyleOptionViewItem option =
                PaintedCell(palette, role, QStyle::State_Selected).option;
            for (const QPalette::ColorGroup group : kGroups) {
                const QColor word = option.palette.color(group, QPalette::HighlightedText);
                QVERIFY2(support::showsRole(word, role), qPrintable(word.name()));
                QVERIFY(ui::contrastRatio(word, option.palette.color(group, QPalette::Highlight)) >=
                        4.5);
            }
        }
    }

    void rolesDifferFromEachOtherAndFromText_data() { support::addDesktopRows(); }
    void rolesDifferFromEachOtherAndFromText() {
        QFETCH(QPalette, palette);
        for (const auto state : {QStyle::State_None, QStyle::State_Selected}) {
            const bool selected = state == QStyle::State_Selected;
            QList<QColor> seen;
            for (const auto role : {ui::ResultTone::plain, ui::ResultTone::finding,
                                    ui::ResultTone::clear, ui::ResultTone::controlFault}) {
                const QPalette painted = PaintedCell(palette, role, state).option.palette;
                const QColor colour = painted.color(
                    QPalette::Inactive, selected ? QPalette::HighlightedText : QPalette::Text);
                for (const QColor& other : seen) {
                    QVERIFY2(distance(colour, other) >= 30,
                             qPrintable(colour.name() + other.name()));
                }
                seen.append(colour);
            }
        }
    }

    void wordsWithoutARoleKeepThePalettesText_data() { support::addDesktopRows(); }
    void wordsWithoutARoleKeepThePalettesText() {
        QFETCH(QPalette, palette);
        const QPalette row = PaintedCell(palette, ui::ResultTone::plain, {}).option.palette;
        QCOMPARE(row.color(QPalette::Text), palette.color(QPalette::Text));
        const QPalette selected =
            PaintedCell(palette, ui::ResultTone::plain, QStyle::State_Selected).option.palette;
        QCOMPARE(selected.color(QPalette::HighlightedText),
                 palette.color(QPalette::HighlightedText));
        QVERIFY(ui::contrastRatio(selected.color(QPalette::HighlightedText),
                                  selected.color(QPalette::Highlight)) >= 4.5);
    }

    void theMutedToneIsGreyAndCanBeRead_data() { support::addDesktopRows(); }
    void theMutedToneIsGreyAndCanBeRead() {
        QFETCH(QPalette, palette);
        for (const ui::ResultTone role : kRoles) {
            const QColor window = palette.color(QPalette::Window);
            const QColor muted = ui::toneColourOnWindow(ui::ResultTone::muted, palette);
            QVERIFY(!support::showsRole(muted, role));
            QVERIFY(ui::contrastRatio(muted, window) >= 4.5);
        }
    }

    void theShapeHasTheColourOfItsWord_data() { support::addDesktopRows(); }
    void theShapeHasTheColourOfItsWord() {
        QFETCH(QPalette, palette);
        for (const ui::ResultTone role : kRoles) {
            const PaintedCell row(palette, role, QStyle::State_Active);
            QCOMPARE(row.shape(), row.option.palette.color(QPalette::Active, QPalette::Text));
            const PaintedCell selected(palette, role, QStyle::State_Selected);
            QCOMPARE(selected.shape(),
                     selected.option.palette.color(QPalette::Inactive, QPalette::HighlightedText));
        }
    }

    void onUsualDesktopsTheTonesAreTheUsualOnes() {
        const QPalette light = support::desktops().at(0).palette;
        QCOMPARE(ui::toneColour(ui::ResultTone::finding, light), QColor(0xB0, 0x00, 0x20));
        QCOMPARE(ui::toneColour(ui::ResultTone::clear, light), QColor(0x0B, 0x57, 0xA4));
        QCOMPARE(ui::toneColour(ui::ResultTone::controlFault, light), QColor(0x8A, 0x4B, 0x00));
        const QPalette dark = support::desktops().at(4).palette;
        QCOMPARE(ui::toneColour(ui::ResultTone::finding, dark), QColor(0xFF, 0x8A, 0x80));
        QCOMPARE(ui::toneColour(ui::ResultTone::clear, dark), QColor(0x8A, 0xB4, 0xF8));
        QCOMPARE(ui::toneColour(ui::ResultTone::controlFault, dark), QColor(0xFF, 0xB7, 0x4D));
    }

    void aRoleIsDroppedOnlyWhereNoLightnessOfItsHueCanBeRead() {
        int dropped = 0;
        for (int grey = 0; grey < 256; ++grey) {
            const QColor background(grey, grey, grey);
            const QColor text = grey < 128 ? Qt::white : Qt::black;
            for (const ui::ResultTone role : kRoles) {
                const QColor colour = ui::toneColour(role, {background}, text);
                if (colour == text) {
                    ++dropped;
                    QVERIFY2(!hasLegibleLightness(role, background), qPrintable(background.name()));
                } else {
                    QVERIFY(support::showsRole(colour, role));
                    QVERIFY(ui::contrastRatio(colour, background) >= 4.5);
                }
            }
        }
        QVERIFY2(dropped > 0 && dropped < 40, qPrintable(QString::number(dropped)));
    }

    void coloursOfAnyDesktopKeepTheRules() {
        constexpr std::uint32_t kSeed = 20261122;
        std::mt19937 random(kSeed);
        const auto colour = [&random] { return QColor::fromRgb(static_cast<QRgb>(random())); };
        for (int time = 0; time < 300; ++time) {
            const QColor base = colour();
            const QColor text =
                ui::contrastRatio(base, Qt::black) > ui::contrastRatio(base, Qt::white) ? Qt::black
                                                                                        : Qt::white;
            const QPalette palette =
                support::paletteOf(base.rgb(), base.rgb(), base.darker(105).rgb(), text.rgb(),
                                   colour().rgb(), time % 2 == 0 ? 0xFFFFFFFF : 0xFF000000);
            for (const ui::ResultTone role : kRoles) {
                const QPalette row = PaintedCell(palette, role, {}).option.palette;
                const QColor word = row.color(QPalette::Text);
                QVERIFY2(support::showsRole(word, role) || !hasLegibleLightness(role, base),
                         qPrintable(base.name()));
                QVERIFY(ui::contrastRatio(word, base) >= 4.5);
                const QPalette selected =
                    PaintedCell(palette, role, QStyle::State_Selected).option.palette;
                const QColor highlighted = selected.color(QPalette::HighlightedText);
                QVERIFY(support::showsRole(highlighted, role));
                QVERIFY(ui::contrastRatio(highlighted, selected.color(QPalette::Highlight)) >= 4.5);
            }
        }
    }

    void rowsOnTheWindowsBackgroundAreReadThere_data() { support::addDesktopRows(); }
    void rowsOnTheWindowsBackgroundAreReadThere() {
        QFETCH(QPalette, palette);
        ui::RecordTableView view;
        view.viewport()->setBackgroundRole(QPalette::Window);
        const auto built = patientWithEveryTone();
        ui::ResultTableModel model(ui::ResultTable::somaticRNA,
                                   {{QStringLiteral("1")}, {QStringLiteral("Diagnosis")}}, nullptr);
        model.reload(built.patient.get());
        QVERIFY(model.rowCount() > 0);
        for (int row = 0; row < model.rowCount(); ++row) {
            QStyleOptionViewItem option;
            option.palette = palette;
            option.state = QStyle::State_Enabled;
            option.widget = &view;
            ui::CallDelegate().initStyleOption(&option, model.index(row, 0));
            const QColor word = option.palette.color(QPalette::Text);
            QVERIFY2(ui::contrastRatio(word, palette.color(QPalette::Window)) >= 4.5 ||
                         word == palette.color(QPalette::WindowText),
                     qPrintable(word.name()));
        }
    }

    void whatStandsBackCanBeRead_data() { support::addDesktopRows(); }
    void whatStandsBackCanBeRead() {
        QFETCH(QPalette, palette);
        const QColor base = palette.color(QPalette::Base);
        const QColor text = palette.color(QPalette::Text);
        const QColor muted = ui::mutedColour(text, {base});
        QVERIFY(ui::contrastRatio(muted, base) >= 4.5 || muted == text);
        QVERIFY(ui::contrastRatio(muted, base) <= ui::contrastRatio(text, base));
    }

    void everyShapeLooksDifferentWithoutItsColour() {
        QList<QImage> seen;
        for (int shape = static_cast<int>(ui::CallShape::triangle);
             shape <= static_cast<int>(ui::CallShape::hollowSquare); ++shape) {
            const QImage image =
                ui::callIcon(static_cast<ui::CallShape>(shape), Qt::black, Qt::white)
                    .pixmap(QSize(16, 16))
                    .toImage();
            QVERIFY(!seen.contains(image));
            seen.append(image);
        }
        QVERIFY(ui::callIcon(ui::CallShape::none, Qt::black, Qt::white).isNull());
    }

    void aShapeIsSharpAtTwiceTheScale() {
        const QIcon icon = ui::callIcon(ui::CallShape::triangle, Qt::black, Qt::white);
        QCOMPARE(icon.pixmap(QSize(16, 16), 2.0).size(), QSize(32, 32));
    }

    void onASelectedRowTheShapeHasTheHighlightedTextsColour() {
        const QImage image = ui::callIcon(ui::CallShape::square, Qt::red, Qt::white)
                                 .pixmap(QSize(16, 16), QIcon::Selected)
                                 .toImage();
        QCOMPARE(image.pixelColor(8, 8), QColor(Qt::white));
    }
};

WINDOW_TEST(ResultTonesTest, QApplication)
#include "result_tones_test.moc"
