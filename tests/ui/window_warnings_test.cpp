// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include <QAccessible>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QtTest>

#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/table_models.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/notices.h"
#include "ui/window/warnings.h"
#include "ui/window_test.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::NoticeLine;
using ui::WindowController;

namespace {

QString text(const char* words) {
    return QString::fromUtf8(words);
}

/// Reads whose names say which read they are.
std::string readsNamed(int pairs, const std::string& mark) {
    std::string named = support::reads(pairs);
    for (std::size_t at = named.find("@read"); at != std::string::npos;
         at = named.find("@read", at)) {
        at = named.find('\n', at);
        named.insert(at, mark);
    }
    return named;
}

} // namespace

/// What the window says of runs that give results and may be wrong all the same.
class WindowWarningsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QSettings().clear(); }

    void anEmptyPairIsToldAndIsNoFinding() {
        OpenWindow open;
        open.writePair(1, 5, 5);
        open.writePair(2, 0, 0);
        const WindowController& window = analysedAll(open);
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::problem);
        QCOMPARE(window.warningLine->text(), text("p_S2_L001_R1_001.fastq: holds no reads."));
        const QString all = details(window);
        QVERIFY2(all.contains(text("no read pair was counted: nothing is assessable")),
                 qPrintable(all));
        QCOMPARE(shapeOf(window, 1), ui::CallShape::hollowSquare);
        QVERIFY(shapeOf(window, 0) != ui::CallShape::hollowSquare);
    }

    void aReopenedPatientWithoutAMappedPairKeepsTheBadge() {
        OpenWindow open;
        open.openSaved({PatientBuilder("1").counts(0, 0).germlineRNA("X", "RNA degraded").patient,
                        PatientBuilder("2").germlineRNA("X", "RNA degraded").patient},
                       0);
        const WindowController& window = open.show();
        QCOMPARE(shapeOf(window, 0), ui::CallShape::hollowSquare);
        QCOMPARE(shapeOf(window, 1), ui::CallShape::triangle);
    }

    void exchangedReadsAreSaidInRed() {
        OpenWindow open;
        open.reads.write("p_S1_L001_R1_001.fastq", readsNamed(3, " 2:N:0:1"));
        open.reads.write("p_S1_L001_R2_001.fastq", readsNamed(3, " 1:N:0:1"));
        const WindowController& window = analysedAll(open);
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::danger);
        QVERIFY2(window.warningLine->text().endsWith(text("the files seem to be exchanged.")),
                 qPrintable(window.warningLine->text()));
    }

    void aCutRead2IsSaidInRed() {
        OpenWindow open;
        open.writePair(1, 9, 4);
        const WindowController& window = analysedAll(open);
        QCOMPARE(window.totalNumberOfReadsTextField->text(), text("4"));
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::danger);
        QVERIFY2(window.warningLine->text().startsWith(
                     text("p_S1_L001_R1_001.fastq: 5 records have none of ")),
                 qPrintable(window.warningLine->text()));
    }

    void samplesWithOneNumberAreNamedInRedBeforeAnythingRuns() {
        OpenWindow open;
        for (const char* start : {"Anna_S1_L001_R", "Bert_S1_L001_R"}) {
            for (const char* end : {"1_001.fastq", "2_001.fastq"}) {
                open.reads.write(std::string(start) + end, support::reads(3));
            }
        }
        open.document->readFromURL(open.reads.file("Anna_S1_L001_R1_001.fastq"), "fastq");
        ui::setReadsInputsInPlace(true);
        WindowController& window = open.show();
        window.analyzeAll();
        // Nothing of the run has come back yet.
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 0);
        QVERIFY(window.warningLine->isVisible());
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::danger);
        const QString line = window.warningLine->text();
        QVERIFY2(line.contains(text("Anna_S1_L001_R1_001.fastq")) &&
                     line.contains(text("Bert_S1_L001_R1_001.fastq")) &&
                     line.contains(text("Reads of two people may be mixed up")),
                 qPrintable(line));
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(window.warningLine->text(), line); // what came later is not as grave
    }

    void lanesBesideTheRunAreNamed() {
        OpenWindow open;
        open.openPair(1);
        open.reads.write("p_S1_L002_R1_001.fastq", support::reads(3));
        open.reads.write("p_S1_L002_R2_001.fastq", support::reads(3));
        WindowController& window = open.show();
        window.analyze();
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::problem);
        QVERIFY2(window.warningLine->text().startsWith(
                     text("p_S1_L002_R1_001.fastq: these reads are not used: ")),
                 qPrintable(window.warningLine->text()));
        QVERIFY(
            details(window).startsWith(text("The whole run\n  \u2022 p_S1_L002_R1_001.fastq: ")));
    }

    void aCatalogueThatChangesDuringABatchIsToldAndTheBatchGoesOn() {
        OpenWindow open;
        open.writePair(1, 3, 3);
        open.writePair(2, 3, 3);
        open.openPair(1);
        WindowController& window = open.show();
        // Behind the catalogue's end, so that the digest alone differs. A batch reads settings once
        // it has read its catalogue.
        open.settings.onRead = [&open, done = false]() mutable {
            if (!std::exchange(done, true)) {
                open.dir.write("catalogue.txt", support::kSmallCatalogue + "changed\n");
            }
        };
        window.analyzeAll();
        QTRY_VERIFY(!window.analysisIsRunning());
        open.settings.onRead = nullptr;
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 2);
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::problem);
        QVERIFY2(window.warningLine->text().contains(text(" has changed since the batch began")),
                 qPrintable(window.warningLine->text()));
    }

    void nothingTakesTheWarningsPlaceAndTheKeyboardReachesAllOfThem() {
        OpenWindow open;
        open.writePair(1, 3, 3);
        open.writePair(2, 9, 4);
        open.openPair(1);
        WindowController& window = open.show();
        window.analyzeAll();
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(window.noticeLine->text().contains(text("2 analysed")));
        QVERIFY(window.warningLine->text().contains(text("5 records have none of")));
        auto* more = window.warningLine->findChild<QToolButton*>(text("noticeDetails"));
        QVERIFY(more != nullptr && more->isVisible());
        QCOMPARE(more->text(), text("and 2 more\u2026"));
        QVERIFY(QAccessible::queryAccessibleInterface(more)
                    ->text(QAccessible::Name)
                    .contains(text("Show all warnings")));
        window.stopButton->setFocus();
        for (int step = 0; step < 60 && !more->hasFocus(); ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(more->hasFocus());
        QTest::keyClick(more, Qt::Key_Space);
        const QString all = textOfList(window);
        QVERIFY2(all.contains(text("Patient 1, sample p\n  \u2022 p_S1_L001_R1_001.fastq: ")) &&
                     all.contains(text("Patient 2, sample p\n  \u2022 p_S2_L001_R1_001.fastq: ")),
                 qPrintable(all));
    }

    void theNextRunStartsWithoutTheLastOnesWarnings() {
        OpenWindow open;
        open.writePair(1, 9, 4);
        WindowController& window = analysedAll(open);
        details(window);
        open.writePair(1, 4, 4);
        window.analyzeAll();
        QVERIFY(!window.warningLine->isVisible());
        QVERIFY(!window.mainWindow->findChild<ui::WarningsWindow*>()->isVisible());
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(window.warningLine->kind(), NoticeLine::Kind::information);
        QVERIFY(window.warningLine->text().contains(text("not assessable (1 of 1 targets ND *1)")));
    }

    void aLineThatWasPutAwayComesBackForAnotherWarning() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.showWarning({run::Warning::Kind::earlyEnd, "cut"}, nullptr);
        window.warningLine->clear();
        window.showWarning({run::Warning::Kind::notAssessable, "mild"}, nullptr);
        QVERIFY(window.warningLine->isVisible());
        QCOMPARE(window.warningLine->text(), text("cut."));
        QVERIFY(details(window).contains(text("mild.")));
    }

    void aTableOfWhichNothingCouldBeJudgedSaysSo() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        const auto poor = PatientBuilder("1").germlineDNA("BIM", "Not Determined").patient;
        poor->mutDomains = support::catalogueOf(
            {support::calledDomain("KRAS", "SomaticDNA", {"", "ND *1"}),
             support::calledDomain("BIM", "Germline", {"Not Determined", ""})});
        open.give({poor, PatientBuilder("2").germlineDNA("BIM", "Not Determined").patient});
        window.patientsNoTableView->selectRow(0);
        QCOMPARE(window.somaticDNANotAssessableTextField->text(),
                 text("not assessable (1 of 1 targets ND *1)"));
        QVERIFY(window.somaticDNANotAssessableTextField->isVisible());
        QVERIFY(!window.somaticDNAResultTextField->isVisible()); // it holds no finding
        QCOMPARE(window.germlineDNANotAssessableTextField->text(),
                 text("not assessable (1 of 1 targets Not Determined)"));
        QVERIFY(window.germlineDNAResultTextField->isVisible());
        window.patientsNoTableView->selectRow(1);
        QVERIFY(!window.somaticDNANotAssessableTextField->isVisible());
        QVERIFY(!window.germlineDNANotAssessableTextField->isVisible());
    }

private:
    /// Opens the pair of sample 1 and analyses the folder.
    static WindowController& analysedAll(OpenWindow& open) {
        open.document->readFromURL(open.reads.file("p_S1_L001_R1_001.fastq"), "fastq");
        WindowController& window = open.show();
        window.analyzeAll();
        if (!QTest::qWaitFor([&window] { return !window.analysisIsRunning(); })) {
            qFatal("the run did not end");
        }
        return window;
    }
    static QString textOfList(const WindowController& window) {
        const auto* list = window.mainWindow->findChild<ui::WarningsWindow*>();
        if (list == nullptr || !list->isVisible()) {
            qFatal("no list of warnings is open");
        }
        return list->findChild<QPlainTextEdit*>()->toPlainText();
    }
    static QString details(const WindowController& window) {
        window.warningLine->findChild<QToolButton*>(text("noticeDetails"))->click();
        return textOfList(window);
    }
    static ui::CallShape shapeOf(const WindowController& window, int row) {
        const QModelIndex index = window.patientsNoTableView->model()->index(row, 0);
        return static_cast<ui::CallShape>(index.data(ui::kShapeRole).toInt());
    }
};

WINDOW_TEST(WindowWarningsTest, QApplication)
#include "window_warnings_test.moc"
