// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

#include "ui/desktop_palettes.h"
#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/widgets/files_to_open.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window_test.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::ResultTone;

namespace {

QImage pictureOf(QWidget& widget) {
    return widget.grab().toImage();
}

/// The colours that a picture has inside its shapes and on its ground, not those of blended edges.
QSet<QRgb> solidColours(const QImage& picture) {
    QSet<QRgb> colours;
    for (int y = 1; y + 1 < picture.height(); ++y) {
        for (int x = 1; x + 1 < picture.width(); ++x) {
            const QRgb colour = picture.pixel(x, y);
            if (colour == picture.pixel(x - 1, y) && colour == picture.pixel(x + 1, y) &&
                colour == picture.pixel(x, y - 1) && colour == picture.pixel(x, y + 1)) {
                colours.insert(colour);
            }
        }
    }
    return colours;
}

/// Whether something solid in the picture shows the role and stands out from the background.
bool showsRoleOn(const QImage& picture, ResultTone role, const QColor& background) {
    const QSet<QRgb> colours = solidColours(picture);
    return std::any_of(colours.begin(), colours.end(), [&](QRgb rgb) {
        return support::showsRole(QColor(rgb), role) &&
               ui::contrastRatio(QColor(rgb), background) >= 4.5;
    });
}

/// Whether a pixel has about that colour: a thin line may be blended a little everywhere.
bool holdsColour(const QImage& picture, const QColor& colour) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green()) +
                    std::abs(pixel.blue() - colour.blue()) <
                40) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

/// What the window paints in colours of its own, on every desktop.
class WindowColoursTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_before = QApplication::palette();
        if (QTest::currentDataTag() != nullptr) {
            QFETCH(QPalette, palette);
            QApplication::setPalette(palette);
        }
    }
    void cleanup() { QApplication::setPalette(m_before); }

    void thePatientsTableHasTheWindowsBackgroundInEveryRow_data() { support::addDesktopRows(); }
    void thePatientsTableHasTheWindowsBackgroundInEveryRow() {
        QFETCH(QPalette, palette);
        OpenWindow open;
        open.openPair(1);
        const ui::WindowController& window = open.show();
        open.give({PatientBuilder("1").patient, PatientBuilder("2").patient,
                   PatientBuilder("3").patient});
        ui::RecordTableView& table = *window.patientsNoTableView;
        table.selectRow(2);
        const QImage picture = pictureOf(*table.viewport());
        for (const int row : {0, 1}) {
            const QRect cell = table.visualRect(table.model()->index(row, 0));
            QCOMPARE(picture.pixelColor(cell.right() - 2, cell.center().y()),
                     palette.color(QPalette::Window));
        }
        QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() - 2),
                 palette.color(QPalette::Window));
        QVERIFY(window.somaticDNAResultTableView->alternatingRowColors());
    }

    void aCallHasItsColourAlsoWhereItsRowIsSelected_data() { support::addDesktopRows(); }
    void aCallHasItsColourAlsoWhereItsRowIsSelected() {
        QFETCH(QPalette, palette);
        OpenWindow open;
        open.openPair(1);
        const ui::WindowController& window = open.show();
        open.give({PatientBuilder("1").somaticDNA("KRAS", "Positive").patient});
        window.patientsNoTableView->selectRow(0);
        ui::RecordTableView& table = *window.somaticDNAResultTableView;
        QVERIFY(showsRoleOn(pictureOf(*table.viewport()), ResultTone::finding,
                            palette.color(QPalette::Base)));
        table.selectRow(0);
        QVERIFY(showsRoleOn(pictureOf(*table.viewport()), ResultTone::finding,
                            ui::legibleHighlight(palette)));
    }

    void noticesHaveTheirColourOnTheWindow_data() { support::addDesktopRows(); }
    void noticesHaveTheirColourOnTheWindow() {
        QFETCH(QPalette, palette);
        const QColor ground = palette.color(QPalette::Window);
        ui::NoticeLine line;
        line.resize(300, 30);
        line.say(ui::NoticeLine::Kind::problem, QStringLiteral("odd"));
        QVERIFY(showsRoleOn(pictureOf(line), ResultTone::controlFault, ground));
        ui::FindingNotice notice;
        notice.setText(QStringLiteral("positive"));
        notice.resize(200, 24);
        QVERIFY(showsRoleOn(pictureOf(notice), ResultTone::finding, ground));
    }

    void thePatientWithoutReadsIsGreyAndNoFinding_data() { support::addDesktopRows(); }
    void thePatientWithoutReadsIsGreyAndNoFinding() {
        QFETCH(QPalette, palette);
        OpenWindow open;
        open.openPair(1);
        const ui::WindowController& window = open.show();
        open.give({PatientBuilder("1").counts(0, 0).germlineRNA("OAZ1", "RNA degraded").patient});
        const QImage picture = pictureOf(*window.patientsNoTableView->viewport());
        const QColor ground = palette.color(QPalette::Window);
        for (const ResultTone role :
             {ResultTone::finding, ResultTone::clear, ResultTone::controlFault}) {
            QVERIFY(!showsRoleOn(picture, role, ground));
        }
        const QColor muted = ui::toneColourOnWindow(ResultTone::muted, palette);
        const QRect row = window.patientsNoTableView->visualRect(
            window.patientsNoTableView->model()->index(0, 0));
        QVERIFY(holdsColour(picture.copy(row), muted));
    }

    void namesAreWrittenInTheWindowsText_data() { support::addDesktopRows(); }
    void namesAreWrittenInTheWindowsText() {
        OpenWindow open;
        open.openPair(1);
        const ui::WindowController& window = open.show();
        for (int time = 0; time < 2; ++time) {
            const QPalette names = window.file1TextField->palette();
            QCOMPARE(names.color(QPalette::Text),
                     window.mainWindow->palette().color(QPalette::WindowText));
            QCOMPARE(names.color(QPalette::Base).alpha(), 0);
            QApplication::setPalette(m_before); // the desktop changes its colours
            QTRY_COMPARE(window.mainWindow->palette().color(QPalette::Base),
                         m_before.color(QPalette::Base));
        }
    }

    void theEmptyErrorLogSaysSoLegibly_data() { support::addDesktopRows(); }
    void theEmptyErrorLogSaysSoLegibly() {
        ui::ErrorLogWindow log;
        log.show();
        const auto* text = log.findChild<QPlainTextEdit*>();
        for (int time = 0; time < 2; ++time) {
            const QPalette shown = text->palette();
            const QColor words = shown.color(QPalette::PlaceholderText);
            QCOMPARE(words.alpha(), 255);
            QVERIFY(ui::contrastRatio(words, shown.color(QPalette::Base)) >= 4.5 ||
                    words == shown.color(QPalette::Text));
            QApplication::setPalette(m_before);
            QTRY_COMPARE(text->palette().color(QPalette::Base), m_before.color(QPalette::Base));
        }
    }

    void theDropAreasWordsBelongToItsBackground() {
        const ui::DropArea area;
        QCOMPARE(area.foregroundRole(), QPalette::Text);
    }

private:
    QPalette m_before;
};

WINDOW_TEST(WindowColoursTest, QApplication)
#include "window_colours_test.moc"
