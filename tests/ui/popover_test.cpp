// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QLabel>
#include <QSignalSpy>
#include <QtTest>

#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/popover.h"
#include "ui/window_test.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::WindowController;

namespace {

std::shared_ptr<run::SummaryForEachPatient> patientWithDetails() {
    return PatientBuilder("1")
        .germlineDNA("BIM", "wt/mut")
        .somaticDNA("KRAS", "Positive", "6.4%", "0.0000001000")
        .somaticDNA("EGFR", "Negative")
        .germlineRNA("OAZ1", "RNA not degraded", "9", "0.5")
        .somaticRNA("ALK", "Positive", "12", "<4500 copies")
        .patient;
}

/// A window that shows the patient, in the order that members are made.
struct WindowWithDetails {
    WindowWithDetails() : window(opened()) {
        open.give({patientWithDetails()});
        window.patientsNoTableView->selectRow(0);
    }
    WindowController& opened() {
        open.openPair(1);
        return open.show();
    }
    QString popoverCell(int row, const char* identifier) const {
        return window.objectValueForTableColumn(window.popoverTableView, QLatin1String(identifier),
                                                row);
    }

    OpenWindow open;
    WindowController& window;
};

QPoint centre(const QTableView* table, int row, int column) {
    return table->visualRect(table->model()->index(row, column)).center();
}

} // namespace

/// The panel with the counts behind a result row.
class PopoverTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDoubleClickShowsTheDomainsMutations() {
        WindowWithDetails with;
        const WindowController& window = with.window;
        QTest::mouseDClick(window.somaticDNAResultTableView->viewport(), Qt::LeftButton, {},
                           centre(window.somaticDNAResultTableView, 0, 1));
        QVERIFY(window.popover->isVisible());
        QCOMPARE(window.numberOfRowsInTableView(window.popoverTableView), 2);
        QCOMPARE(with.popoverCell(0, "0"), QStringLiteral("KRAS wt"));
        QCOMPARE(with.popoverCell(0, "1"), QStringLiteral("1200"));
        QCOMPARE(with.popoverCell(1, "0"), QStringLiteral("KRAS G12D"));
        QCOMPARE(with.popoverCell(1, "1"), QStringLiteral("60"));
        QCOMPARE(window.summaryForEachPatientUsedForPopover->patientNo, std::string("1"));
        QCOMPARE(window.popover->findChild<QLabel*>(QStringLiteral("popoverTitleLabel"))->text(),
                 QStringLiteral("KRAS, patient 1"));
        QCOMPARE(window.mutDomainUsedForPopover->name, std::string("KRAS"));
    }

    void itHasTheTypeOfItsWindow() {
        OpenWindow open(QStringLiteral("VextaDocumentMidi"));
        open.openPair(7);
        const WindowController& window = open.show();
        QVERIFY(window.mainWindow->font() != QApplication::font());
        QCOMPARE(window.popoverTableView->font().pointSizeF(),
                 window.somaticDNAResultTableView->font().pointSizeF());
    }

    void theCommentLineTellsTheFalsePositiveRate() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.somaticDNAResultTableView);
        QCOMPARE(window.popoverCommentTextField->text(),
                 QStringLiteral("False positive rate = 0.0000001000"));
        QVERIFY(window.popoverCommentTextField->isVisible());
    }

    void aSomaticRowWithAnEmptyCommentHasAnEmptyCommentLine() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.popoverCommentTextField->setText(QStringLiteral("of a row before"));
        window.somaticDNAResultTableView->selectRow(1);
        window.doubleClickAction(window.somaticDNAResultTableView);
        QVERIFY(window.popover->isVisible());
        QCOMPARE(window.popoverCommentTextField->text(), QString());
        QCOMPARE(window.mutDomainUsedForPopover->name, std::string("EGFR"));
    }

    void commentsOfOtherTablesAreNotShown() {
        WindowWithDetails with;
        WindowController& window = with.window;
        for (auto* table : {window.germlineDNAResultTableView, window.germlineRNAResultTableView,
                            window.somaticRNAResultTableView}) {
            table->selectRow(0);
            window.doubleClickAction(table);
            QVERIFY(window.mutDomainUsedForPopover != nullptr);
            QCOMPARE(window.popoverCommentTextField->text(), QString());
            window.popover->close();
        }
    }

    void anotherSenderGivesNoDomain() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.somaticDNAResultTableView);
        window.doubleClickAction(window.patientsNoTableView);
        QVERIFY(window.mutDomainUsedForPopover == nullptr);
        QVERIFY(window.summaryForEachPatientUsedForPopover != nullptr);
        QCOMPARE(window.numberOfRowsInTableView(window.popoverTableView), 0);
        QCOMPARE(window.popoverCommentTextField->text(), QString());
    }

    void aTableWithoutASelectedRowGivesNoDomain() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->clearSelection();
        window.doubleClickAction(window.somaticDNAResultTableView);
        QVERIFY(window.mutDomainUsedForPopover == nullptr);
    }

    void aRowWithoutADomainOpensAnEmptyPopover() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        const auto patient = patientWithDetails();
        (*patient->somaticDNAResultMutAr)[0]->mutDomain = nullptr;
        open.give({patient});
        window.patientsNoTableView->selectRow(0);
        window.somaticDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.somaticDNAResultTableView);
        QVERIFY(window.popover->isVisible());
        QCOMPARE(window.numberOfRowsInTableView(window.popoverTableView), 0);
    }

    void enterAndSpaceOpenIt_data() {
        QTest::addColumn<int>("key");
        QTest::newRow("return") << static_cast<int>(Qt::Key_Return);
        QTest::newRow("enter") << static_cast<int>(Qt::Key_Enter);
        QTest::newRow("space") << static_cast<int>(Qt::Key_Space);
    }
    void enterAndSpaceOpenIt() {
        QFETCH(int, key);
        WindowWithDetails with;
        const WindowController& window = with.window;
        window.germlineDNAResultTableView->jumpTo();
        QTest::keyClick(window.germlineDNAResultTableView, static_cast<Qt::Key>(key));
        QVERIFY(window.popover->isVisible());
        QCOMPARE(window.mutDomainUsedForPopover->name, std::string("BIM"));
    }

    void enterWithoutARowOpensNothing() {
        WindowWithDetails with;
        const WindowController& window = with.window;
        window.germlineDNAResultTableView->setFocus();
        QTest::keyClick(window.germlineDNAResultTableView, Qt::Key_Return);
        QVERIFY(!window.popover->isVisible());
    }

    void theFirstEscIsThePopoversTheNextTheWindows() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->jumpTo();
        window.doubleClickAction(window.somaticDNAResultTableView);
        QVERIFY(QTest::qWaitForWindowExposed(window.popover));
        QTest::keyClick(window.popover->windowHandle(), Qt::Key_Escape);
        QVERIFY(!window.popover->isVisible());
        QVERIFY(!with.open.document->cancelOperationFlag());
        with.open.activate();
        QTest::keyClick(window.mainWindow, Qt::Key_Escape);
        QVERIFY(with.open.document->cancelOperationFlag());
    }

    void workingElsewhereClosesIt() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->jumpTo();
        window.doubleClickAction(window.somaticDNAResultTableView);
        QVERIFY(QTest::qWaitForWindowExposed(window.popover));
        // A click far away from the panel.
        QTest::mouseClick(window.popover->windowHandle(), Qt::LeftButton, {}, QPoint(-50, -50));
        QVERIFY(!window.popover->isVisible());
    }

    void theSamePopoverServesEveryRow() {
        WindowWithDetails with;
        WindowController& window = with.window;
        const ui::Popover* made = window.popover;
        window.windowDidLoad();
        window.germlineDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.germlineDNAResultTableView);
        QCOMPARE(window.popover, made);
    }

    void itPrefersTheRightHandEdgeAndStaysOnTheScreen() {
        const QRect screen(0, 0, 1000, 800);
        const QSize size(300, 200);
        const QPoint right = ui::Popover::place(QRect(100, 300, 80, 20), size, screen);
        QVERIFY(right.x() >= 180);
        QCOMPARE(right.y(), 209);
        const QPoint left = ui::Popover::place(QRect(850, 300, 80, 20), size, screen);
        QVERIFY(left.x() + size.width() <= 850);
        // At the corners, and where neither side has room.
        for (const QRect anchor :
             {QRect(0, 0, 10, 10), QRect(990, 790, 10, 10), QRect(150, 300, 700, 20), QRect()}) {
            const QRect panel(ui::Popover::place(anchor, size, screen), size);
            QVERIFY(screen.contains(panel));
        }
    }

    void aBarHasTheLengthOfItsShare() {
        const QRectF cell(10, 0, 112, 20);
        QCOMPARE(ui::CountsChartDelegate::barIn(cell, 1.0).width(), 100.0);
        QCOMPARE(ui::CountsChartDelegate::barIn(cell, 0.25).width(), 25.0);
        QCOMPARE(ui::CountsChartDelegate::barIn(cell, 0.0001).width(), 1.0);
        QVERIFY(ui::CountsChartDelegate::barIn(cell, 0.0).isEmpty());
    }

    void barsArePaintedTheReferenceInAnotherColour() {
        WindowWithDetails with;
        WindowController& window = with.window;
        window.somaticDNAResultTableView->selectRow(0);
        window.doubleClickAction(window.somaticDNAResultTableView);
        window.popoverTableView->clearSelection();
        const ui::RecordTableView* table = window.popoverTableView;
        const QImage image = table->viewport()->grab().toImage();
        const auto barColour = [&](int row) {
            const QRect bar = table->visualRect(table->model()->index(row, 2));
            return image.pixelColor((bar.topLeft() + QPoint(8, bar.height() / 2)) *
                                    image.devicePixelRatio());
        };
        const QColor background = table->palette().color(QPalette::Base);
        QVERIFY(barColour(0) != background);
        QVERIFY(barColour(1) != barColour(0));
        // The wild type is grey.
        QVERIFY(barColour(0).hsvSaturation() < 20);
        QVERIFY(barColour(1).hsvSaturation() > 60);
    }
};

WINDOW_TEST(PopoverTest, QApplication)
#include "popover_test.moc"
