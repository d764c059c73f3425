// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QImage>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionViewItem>
#include <QtTest>

#include "ui/call_delegate.h"
#include "ui/call_icons.h"
#include "ui/record_builder.h"
#include "ui/result_table_model.h"
#include "ui/result_tones.h"

namespace {

QPalette paletteOf(QRgb window, QRgb base, QRgb alternate, QRgb text, QRgb highlight,
                   QRgb highlightedText) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, alternate);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, highlightedText);
    return palette;
}

/// The calls of each tone, in one somatic RNA table.
support::PatientBuilder patientWithEveryTone() {
    support::PatientBuilder built("1");
    built.somaticRNA("A", "Positive").somaticRNA("B", "Negative");
    built.somaticRNA("C", "Control Not Working").somaticRNA("D", "ND *1");
    return built;
}

constexpr QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive};

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

    void everyCellCanBeRead_data() {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("fusion")
            << QStyleFactory::create(QStringLiteral("Fusion"))->standardPalette();
        QTest::newRow("light") << paletteOf(0xFFF0F0F0, 0xFFFFFFFF, 0xFFF5F5F5, 0xFF000000,
                                            0xFF308CC6, 0xFFFFFFFF);
        QTest::newRow("grey stripes")
            << paletteOf(0xFFEFEFEF, 0xFFFFFFFF, 0xFFE4E4E4, 0xFF1A1A1A, 0xFF3584E4, 0xFFFFFFFF);
        QTest::newRow("dark") << paletteOf(0xFF2D2D30, 0xFF1E1E20, 0xFF28282B, 0xFFE6E6E6,
                                           0xFF2A82DA, 0xFFFFFFFF);
        QTest::newRow("dark, soft")
            << paletteOf(0xFF353535, 0xFF2A2A2A, 0xFF3A3A3A, 0xFFFFFFFF, 0xFF8AB4F8, 0xFF000000);
        QTest::newRow("high contrast")
            << paletteOf(0xFF000000, 0xFF000000, 0xFF000000, 0xFFFFFFFF, 0xFFFFFF00, 0xFF000000);
    }
    void everyCellCanBeRead() {
        QFETCH(QPalette, palette);
        const auto built = patientWithEveryTone();
        ui::ResultTableModel model(ui::ResultTable::somaticRNA,
                                   {{QStringLiteral("1")}, {QStringLiteral("Diagnosis")}}, nullptr);
        model.reload(built.patient.get());
        const ui::CallDelegate delegate;
        QVERIFY(model.rowCount() > 0);
        for (int row = 0; row < model.rowCount(); ++row) {
            QStyleOptionViewItem option;
            option.palette = palette;
            delegate.initStyleOption(&option, model.index(row, 0));
            for (const QPalette::ColorGroup group : kGroups) {
                const auto at = [&](QPalette::ColorRole role) {
                    return option.palette.color(group, role);
                };
                QVERIFY(ui::contrastRatio(at(QPalette::Text), at(QPalette::Base)) >= 4.5);
                QVERIFY(ui::contrastRatio(at(QPalette::Text), at(QPalette::AlternateBase)) >= 4.5);
                QVERIFY(ui::contrastRatio(at(QPalette::HighlightedText), at(QPalette::Highlight)) >=
                        4.5);
            }
            QVERIFY(!option.icon.isNull());
        }
    }

    void theThreeTonesDifferFromEachOtherAndFromText() {
        for (const QRgb base : {0xFFFFFFFF, 0xFF1E1E20}) {
            const QPalette palette =
                paletteOf(base, base, base, ~base | 0xFF000000, 0xFF308CC6, 0xFFFFFFFF);
            QSet<QRgb> colours;
            for (const auto tone : {ui::ResultTone::plain, ui::ResultTone::finding,
                                    ui::ResultTone::clear, ui::ResultTone::controlFault}) {
                colours.insert(ui::toneColour(tone, palette).rgb());
            }
            QCOMPARE(colours.size(), 4);
        }
    }

    void betweenLightAndDarkTheWordsFallBackToTheText() {
        const QPalette grey =
            paletteOf(0xFF808080, 0xFF808080, 0xFF808080, 0xFF000000, 0xFF308CC6, 0xFFFFFFFF);
        QCOMPARE(ui::toneColour(ui::ResultTone::finding, grey), QColor(Qt::black));
    }

    void mutedSentencesCanBeRead() {
        for (const QRgb base : {0xFFFFFFFF, 0xFF1E1E20}) {
            const QPalette palette =
                paletteOf(base, base, base, ~base | 0xFF000000, 0xFF308CC6, 0xFFFFFFFF);
            QVERIFY(ui::contrastRatio(ui::mutedTextColour(palette), QColor(base)) >= 4.5);
        }
    }

    void everyShapeLooksDifferentWithoutItsColour() {
        QList<QImage> seen;
        for (int shape = static_cast<int>(ui::CallShape::triangle);
             shape <= static_cast<int>(ui::CallShape::filledDiamond); ++shape) {
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

QTEST_MAIN(ResultTonesTest)
#include "result_tones_test.moc"
