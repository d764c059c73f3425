// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <filesystem>

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSplitter>
#include <QtTest>

#include "platform/files.h"
#include "settings/settings_table.h"
#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/result_tones.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window_test.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::WindowController;

namespace {

/// The lightest pixel of red tone in what the table paints; 0 where there is none.
struct RedPixels {
    explicit RedPixels(QTableView& table) {
        const QImage image = table.viewport()->grab().toImage();
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor colour = image.pixelColor(x, y);
                if (colour.red() > colour.green() + 60 && colour.red() > colour.blue() + 60 &&
                    colour.alpha() == 255 && isSolid(image, x, y)) {
                    lightness = std::max(lightness, colour.lightness());
                }
            }
        }
    }
    /// Inside a shape, not at its blended edge.
    static bool isSolid(const QImage& image, int x, int y) {
        return x > 0 && x + 1 < image.width() && image.pixel(x - 1, y) == image.pixel(x, y) &&
               image.pixel(x + 1, y) == image.pixel(x, y);
    }

    int lightness = 0;
};

} // namespace

/// The document window's rules, on the real window.
class WindowControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withNoPatientsEveryTableIsEmptyAndTheCountsAreZero() {
        OpenWindow open;
        open.openPair(7);
        WindowController& window = open.show();
        for (const QTableView* table :
             {window.patientsNoTableView, window.germlineDNAResultTableView,
              window.somaticDNAResultTableView, window.germlineRNAResultTableView,
              window.somaticRNAResultTableView}) {
            QCOMPARE(window.numberOfRowsInTableView(table), 0);
        }
        QCOMPARE(window.file1TextField->text(), QStringLiteral("p_S7_L001_R1_001.fastq"));
        QCOMPARE(window.file2TextField->text(), QStringLiteral("p_S7_L001_R2_001.fastq"));
        QCOMPARE(window.totalNumberOfReadsTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.readsMappedTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.readsFailedToBeMappedTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.totalNumberOfIntormativeReadsTextField->text(), QString());
    }

    void theCopyNumberIsStoredOnlyWhereItIsMissing() {
        OpenWindow first;
        QVERIFY(!first.settings.value(kCopies));
        first.show();
        QCOMPARE(settings::integerSetting(first.settings, kCopies), 100000);
        QVERIFY(first.settings.value(kCopies) == settings::SettingValue(std::string("100000")));
        OpenWindow other;
        other.settings.setValue(kCopies, std::int64_t(7));
        other.show();
        QVERIFY(other.settings.value(kCopies) == settings::SettingValue(std::int64_t(7)));
    }

    void thePatientsTableHasTheWindowsBackground() {
        OpenWindow open;
        const WindowController& window = open.show();
        const QWidget* viewport = window.patientsNoTableView->viewport();
        QCOMPARE(viewport->palette().color(viewport->backgroundRole()),
                 window.mainWindow->palette().color(QPalette::Window));
        QVERIFY(!window.indicator);
    }

    void aReopenedResultCanBeReadAndNothingElse() {
        OpenWindow open;
        open.openSaved({PatientBuilder("1").patient, PatientBuilder("2").patient,
                        PatientBuilder("3").counts(10, 7).somaticDNA("KRAS", "Positive").patient},
                       2);
        const WindowController& window = open.show();
        QVERIFY(!window.analyzeButton->isEnabled());
        QVERIFY(!window.analyzeAllButton->isEnabled());
        QVERIFY(!window.validateMenuItem(QString::fromUtf8(ui::titles::kSaveResult)));
        QVERIFY(window.validateMenuItem(QStringLiteral("Make Summary Table")));
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 3);
        QCOMPARE(window.patientsNoTableView->selectedRow(), 2);
        QCOMPARE(window.file1TextField->text(), QStringLiteral("P3_S3_L001_R1_001.fastq"));
        QCOMPARE(window.readsFailedToBeMappedTextField->text(), QStringLiteral("3"));
        QCOMPARE(cell(window, window.somaticDNAResultTableView, "0", 0), QStringLiteral("KRAS"));
        QVERIFY(window.ribbon->isVisible());
        QCOMPARE(window.ribbon->text(), QStringLiteral("Saved result, read-only"));
    }

    void aPairsWindowIsTitledByItsFileAndFolder() {
        OpenWindow open;
        open.openPair(7);
        const WindowController& window = open.show();
        QCOMPARE(window.mainWindow->windowTitle(), QStringLiteral("p_S7_L001_R1_001.fastq - ") +
                                                       QString::fromStdString(open.reads.path()));
    }

    void aSavedEmptyResultShowsNobodyAndNoSummaryTable() {
        OpenWindow open;
        open.openSaved({}, -1);
        const WindowController& window = open.show();
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 0);
        QVERIFY(!window.validateMenuItem(QStringLiteral("Make Summary Table")));
    }

    void aSavedRowBeyondTheListShowsNothingAndIsNotCorrected() {
        OpenWindow open;
        open.openSaved({PatientBuilder("1").somaticDNA("KRAS", "Positive").patient}, 5);
        const WindowController& window = open.show();
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(5));
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 0);
        QCOMPARE(window.patientsNoTableView->selectedRow(), -1);
        window.mainWindow->grab(); // paints every table
    }

    void selectingAPatientShowsItsNamesCountsAndRows() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({PatientBuilder("1").patient, everyKindOfRow()});
        window.patientsNoTableView->selectRow(1);
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(1));
        QCOMPARE(window.file2TextField->text(), QStringLiteral("P2_S2_L001_R2_001.fastq"));
        QCOMPARE(window.totalNumberOfReadsTextField->text(), QStringLiteral("1000"));
        QCOMPARE(window.readsMappedTextField->text(), QStringLiteral("900"));
        QCOMPARE(window.readsFailedToBeMappedTextField->text(), QStringLiteral("100"));
        QCOMPARE(window.mappedShareLabel->text(), QStringLiteral("90.0 % of the read pairs"));
        QCOMPARE(cell(window, window.germlineDNAResultTableView, "1", 0), QStringLiteral("wt/mut"));
        QCOMPARE(cell(window, window.somaticDNAResultTableView, "2", 0), QStringLiteral("6.4%"));
        QCOMPARE(cell(window, window.germlineRNAResultTableView, "2", 0), QStringLiteral("3"));
        QCOMPARE(cell(window, window.somaticRNAResultTableView, "0", 0), QStringLiteral("ALK"));
        QCOMPARE(cell(window, window.somaticRNAResultTableView, "8", 0), QString());
        QCOMPARE(window.totalNumberOfIntormativeReadsTextField->text(), QString());
    }

    void anEmptySelectionLeavesTheLastPatientOnShow() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow()});
        window.patientsNoTableView->selectRow(0);
        window.patientsNoTableView->clearSelection();
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(0));
        QCOMPARE(window.file1TextField->text(), QStringLiteral("P2_S2_L001_R1_001.fastq"));
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 1);
        QVERIFY(window.somaticDNAResultTextField->isVisible());
    }

    void aSelectionElsewhereChangesNothing() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow()});
        window.patientsNoTableView->selectRow(0);
        window.mainRoutine->selectedPatientRowNo = -1;
        window.somaticDNAResultTableView->selectRow(0);
        window.tableViewSelectionDidChange(window.somaticDNAResultTableView);
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(-1));
    }

    void noticesStandBesideTablesThatHoldAFinding() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow(), PatientBuilder("3").germlineDNA("BIM", "wt/wt").patient,
                   PatientBuilder("4").germlineDNA("BIM", "Not Determined").patient});
        const auto shownNotices = [&window] {
            QString shown;
            for (const QLabel* notice :
                 {window.germlineDNAResultTextField, window.somaticDNAResultTextField,
                  window.germlineRNAResultTextField, window.somaticRNAResultTextField}) {
                shown += notice->isVisible() ? QLatin1Char('1') : QLatin1Char('0');
            }
            return shown;
        };
        window.patientsNoTableView->selectRow(0);
        QCOMPARE(shownNotices(), QStringLiteral("1111"));
        window.patientsNoTableView->selectRow(2);
        QCOMPARE(shownNotices(), QStringLiteral("1000"));
        window.patientsNoTableView->selectRow(1);
        QCOMPARE(shownNotices(), QStringLiteral("0000"));
    }

    void germlineRowsThatAreAllWildTypeHideTheirNotice() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give(
            {everyKindOfRow(),
             PatientBuilder("3").germlineDNA("BIM", "wt/wt").germlineDNA("UGT", "wt/wt").patient,
             PatientBuilder("4").germlineDNA("BIM", "wt/wt").germlineDNA("UGT", "wt/mut").patient});
        window.patientsNoTableView->selectRow(0);
        QVERIFY(window.germlineDNAResultTextField->isVisible());
        window.patientsNoTableView->selectRow(1);
        QCOMPARE(window.numberOfRowsInTableView(window.germlineDNAResultTableView), 2);
        QVERIFY(!window.germlineDNAResultTextField->isVisible());
        window.patientsNoTableView->selectRow(2);
        QVERIFY(window.germlineDNAResultTextField->isVisible());
    }

    void aRowBeyondTheTableIsNeitherACrashNorCorrected() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow(), PatientBuilder("3").patient});
        window.patientsNoTableView->selectRow(0);
        window.mainRoutine->selectedPatientRowNo = 2;
        window.reloadPatientsTable();
        window.selectPatientRow(2);
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(2));
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 0);
        QVERIFY(!window.somaticDNAResultTextField->isVisible());
        window.mainWindow->grab();
        // Anyone can still be chosen.
        QTest::mouseClick(window.patientsNoTableView->viewport(), Qt::LeftButton, {},
                          centre(window.patientsNoTableView, 0, 0));
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(0));
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 1);
    }

    void aNewListKeepsTheRowsThatAreSelected() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        const auto first = PatientBuilder("1").patient;
        open.give({first});
        window.patientsNoTableView->selectRow(0);
        open.give({first, PatientBuilder("2").patient});
        QCOMPARE(window.selectedPatientRows(), std::vector<std::int64_t>{0});
    }

    void copyIsOffUntilAPatientIsSelected() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({PatientBuilder("1").patient});
        QAction* copy = actionTitled(window, "Copy");
        QVERIFY(!window.validateMenuItem(QStringLiteral("Copy")));
        QVERIFY(!copy->isEnabled());
        window.patientsNoTableView->selectRow(0);
        QVERIFY(window.validateMenuItem(QStringLiteral("Copy")));
        QVERIFY(copy->isEnabled());
    }

    void menuItemsAreToldApartByTheirTitlesInOrder() {
        OpenWindow open;
        open.openPair(1);
        const WindowController& window = open.show();
        QVERIFY(window.validateMenuItem(QStringLiteral("Show Error Log")));
        QVERIFY(window.validateMenuItem(QStringLiteral("Show ND1 and ND2 Threshold")));
        QVERIFY(!window.validateMenuItem(QStringLiteral("Copy Report")));
        // A title that holds two of the words takes the first rule.
        QVERIFY(window.validateMenuItem(QStringLiteral("Copy and Show Error Log")));
        QVERIFY(window.validateMenuItem(QStringLiteral("Show ND1 and ND2 Threshold, Copy")));
        QVERIFY(!window.validateMenuItem(QStringLiteral("Make Summary Table")));
        QVERIFY(window.validateMenuItem(QString::fromUtf8(ui::titles::kSaveResult)));
    }

    void escSetsTheFlagAlsoWhileNothingRuns() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        QVERIFY(!open.document->cancelOperationFlag());
        QTest::keyClick(window.mainWindow, Qt::Key_Escape);
        QVERIFY(open.document->cancelOperationFlag());
        QVERIFY(!window.noticeLine->isVisible());
        // The next batch clears it.
        window.analyzeAll();
        QVERIFY(!open.document->cancelOperationFlag());
        QTRY_VERIFY(!window.analysisIsRunning());
    }

    void escInTheErrorLogAlsoStopsABatch() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.showErrorLogWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window.errorLogWindow);
        QTest::keyClick(window.errorLogWindow, Qt::Key_Escape);
        QVERIFY(!window.errorLogWindow->isVisible());
        QVERIFY(!open.document->cancelOperationFlag());
        window.analyzeAll();
        window.showErrorLogWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window.errorLogWindow);
        QTest::keyClick(window.errorLogWindow, Qt::Key_Escape);
        QVERIFY(!window.errorLogWindow->isVisible());
        QVERIFY(open.document->cancelOperationFlag());
        QTRY_VERIFY(!window.analysisIsRunning());
    }

    void theStopButtonForwardsToWhoeverIsItsDelegateThen() {
        struct Receiver : ui::CancelOperationReceiver {
            void cancelOperation(QObject* sender) override { senders.push_back(sender); }
            std::vector<QObject*> senders;
        };
        Receiver first;
        Receiver second;
        ui::ButtonForwardingCancelOperationToDelegate button;
        QTest::keyClick(&button, Qt::Key_Escape);
        button.delegate = &first;
        QTest::keyClick(&button, Qt::Key_Escape);
        button.delegate = &second;
        QTest::keyClick(&button, Qt::Key_Escape);
        button.cancelOperation(this);
        QCOMPARE(first.senders, std::vector<QObject*>{&button});
        QCOMPARE(second.senders, (std::vector<QObject*>{&button, this}));
    }

    void theErrorLogGrowsAndComesForward() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        QVERIFY(!window.errorLogWindow->isVisible());
        window.appendToErrorLog("first <b>line</b>\n");
        window.appendToErrorLog("second\n");
        window.bringErrorLogForward();
        QVERIFY(window.errorLogWindow->isVisible());
        QCOMPARE(window.errorLogTextView->toPlainText(),
                 QStringLiteral("first <b>line</b>\nsecond\n"));
        QVERIFY(window.errorLogTextView->isReadOnly());
        window.errorLogWindow->close();
        open.activate();
        QTest::keyClick(window.mainWindow, Qt::Key_F8);
        QVERIFY(window.errorLogWindow->isVisible());
    }

    void filesThatACleanUpWouldRemoveAreNamedWhileTheyAreThere() {
        OpenWindow open;
        const std::string bystander = openBesideABystander(open);
        WindowController& window = open.show();
        QVERIFY(window.noticeLine->isVisible());
        const QColor bar =
            window.noticeLine->grab().toImage().pixelColor(1, window.noticeLine->height() / 2);
        const QColor danger = ui::toneColour(ui::ResultTone::finding, window.noticeLine->palette());
        QVERIFY(qAbs(bar.red() - danger.red()) < 3 && qAbs(bar.green() - danger.green()) < 3 &&
                qAbs(bar.blue() - danger.blue()) < 3);
        QVERIFY(window.noticeLine->text().contains(QString::fromStdString(bystander)));
        QVERIFY(window.noticeLine->text().contains(QStringLiteral("Reading the inputs directly")));
        QVERIFY(platform::fileExists(bystander));
        window.analyze();
        QVERIFY(window.errorLogTextView->toPlainText().contains(QString::fromStdString(bystander)));
        window.showWarning({run::Warning::Kind::padding, "zero bytes after a member"}, nullptr);
        QVERIFY(window.noticeLine->text().contains(QString::fromStdString(bystander)));
        QVERIFY(window.warningLine->text().contains(QStringLiteral("zero bytes")));
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(!platform::fileExists(bystander)); // the rule of clean-up stands
    }

    void aCleanUpThatWillNotBeIsNoNews() {
        OpenWindow open;
        ui::setReadsInputsInPlace(true);
        const std::string bystander = openBesideABystander(open);
        WindowController& window = open.show();
        QVERIFY(!window.noticeLine->isVisible());
        window.analyzeAll();
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(
            !window.errorLogTextView->toPlainText().contains(QString::fromStdString(bystander)));
        QVERIFY(platform::fileExists(bystander));
    }

    void aWarningIsSaidInTheWindowAndKeptInTheLog() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.showWarning({run::Warning::Kind::padding, "reads may be missing"}, nullptr);
        QCOMPARE(window.warningLine->text(), QStringLiteral("reads may be missing."));
        QVERIFY(window.warningLine->isVisible());
        QVERIFY(window.errorLogTextView->toPlainText().contains(QStringLiteral("may be missing")));
        QVERIFY(!window.errorLogWindow->isVisible());
    }

    void theThresholdsAreShownWithoutHoldingTheWindowUp() {
        OpenWindow open;
        open.openPair(1);
        settings::key::writeFirstRunValues(open.settings);
        WindowController& window = open.show();
        actionTitled(window, "Show ND1 and ND2 Threshold")->trigger();
        const auto* box = window.mainWindow->findChild<QMessageBox*>();
        QVERIFY(box != nullptr && box->isVisible() && !box->isModal());
        QVERIFY(box->text().contains(QStringLiteral("500")));
        QVERIFY(box->text().contains(QStringLiteral("ND2 threshold: 10")));
        // A box that is open already shows what is stored by then.
        open.settings.setValue(settings::key::kND1Threshold, std::string("321"));
        actionTitled(window, "Show ND1 and ND2 Threshold")->trigger();
        QCOMPARE(window.mainWindow->findChildren<QMessageBox*>().size(), 1);
        QVERIFY(box->text().contains(QStringLiteral("ND1 threshold: 321")));
    }

    void textsOfARunAreShownAsTheyCome() {
        using run::RunField;
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.setText(RunField::totalNumberOfReads, "2000");
        window.setText(RunField::readsMapped, "0");
        window.setText(RunField::readsFailedToBeMapped, "0");
        window.setText(RunField::file1, "other_R1_001.fastq");
        QCOMPARE(window.totalNumberOfReadsTextField->text(), QStringLiteral("2000"));
        QCOMPARE(window.readsMappedTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.readsFailedToBeMappedTextField->text(), QStringLiteral("0"));
        QCOMPARE(window.file1TextField->text(), QStringLiteral("other_R1_001.fastq"));
        QCOMPARE(window.mappedShareLabel->text(), QString());
    }

    void ctrlAndADigitJumpsToATable() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow()});
        window.patientsNoTableView->selectRow(0);
        const std::array tables = {
            window.germlineDNAResultTableView, window.somaticDNAResultTableView,
            window.germlineRNAResultTableView, window.somaticRNAResultTableView};
        for (std::size_t place = 0; place < tables.size(); ++place) {
            const auto key = static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(place));
            QTest::keyClick(window.mainWindow, key, Qt::ControlModifier);
            QVERIFY(tables[place]->hasFocus());
            QCOMPARE(tables[place]->selectedRow(), 0);
        }
        QTest::keyClick(window.mainWindow, Qt::Key_0, Qt::ControlModifier);
        QVERIFY(window.patientsNoTableView->hasFocus());
    }

    void tabGoesFromControlToControl() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.analyzeButton->setFocus();
        QStringList order;
        for (int step = 0; step < 13; ++step) {
            order.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(order,
                 QStringList({QStringLiteral("analyzeButton"), QStringLiteral("analyzeAllButton"),
                              QStringLiteral("stopButton"), QStringLiteral("patientsNoTableView"),
                              QStringLiteral("file1TextField"), QStringLiteral("file2TextField"),
                              QStringLiteral("totalNumberOfReadsTextField"),
                              QStringLiteral("readsMappedTextField"),
                              QStringLiteral("readsFailedToBeMappedTextField"),
                              QStringLiteral("germlineDNAResultTableView"),
                              QStringLiteral("somaticDNAResultTableView"),
                              QStringLiteral("germlineRNAResultTableView"),
                              QStringLiteral("somaticRNAResultTableView")}));
    }

    void droppedFilesAreAskedToBeOpened() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        QSignalSpy asked(&window, &WindowController::openRequested);
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QStringLiteral("/a/x_R1_.fastq")),
                      QUrl(QStringLiteral("https://example.org/x"))});
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.mainWindow, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.mainWindow, &drop);
        // Not while the program that they come from waits for the drop.
        QCOMPARE(asked.count(), 0);
        QTRY_COMPARE(asked.count(), 1);
        QCOMPARE(asked.at(0).at(0).toStringList(), QStringList{QStringLiteral("/a/x_R1_.fastq")});
        QMimeData text;
        text.setText(QStringLiteral("no file"));
        QDragEnterEvent other(QPoint(5, 5), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window.mainWindow, &other);
        QVERIFY(!other.isAccepted());
    }

    void closingTheWindowIsTold() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        const QSignalSpy closed(&window, &WindowController::windowClosed);
        QTest::keyClick(window.mainWindow, Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(closed.count(), 1);
    }

    void theErrorLogGoesWithItsWindowAndDoesNotComeBack() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.bringErrorLogForward();
        window.mainWindow->close();
        QVERIFY(!window.errorLogWindow->isVisible());
        window.appendToErrorLog("late\n");
        window.bringErrorLogForward();
        QVERIFY(!window.errorLogWindow->isVisible());
        QVERIFY(window.errorLogTextView->toPlainText().contains(QStringLiteral("late")));
    }

    void theErrorLogTakesNoKeyboardFromADialog() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        QDialog dialog(window.mainWindow);
        dialog.open();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        window.bringErrorLogForward();
        QVERIFY(window.errorLogWindow->isVisible());
        // Only a window manager can show it; this platform activates whatever appears.
        QVERIFY(window.errorLogWindow->testAttribute(Qt::WA_ShowWithoutActivating));
        dialog.close();
        window.bringErrorLogForward();
        QVERIFY(!window.errorLogWindow->testAttribute(Qt::WA_ShowWithoutActivating));
    }

    void anotherPaletteRepaintsTheWords() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        open.give({everyKindOfRow()});
        window.patientsNoTableView->selectRow(0);
        const RedPixels light(*window.somaticDNAResultTableView);
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(30, 30, 32));
        dark.setColor(QPalette::AlternateBase, QColor(40, 40, 43));
        dark.setColor(QPalette::Text, QColor(230, 230, 230));
        window.mainWindow->setPalette(dark);
        const RedPixels onDark(*window.somaticDNAResultTableView);
        QVERIFY2(light.lightness > 0 && onDark.lightness > light.lightness,
                 qPrintable(QStringLiteral("%1, %2").arg(light.lightness).arg(onDark.lightness)));
    }

    void sizesAndColumnWidthsAreRemembered() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        window.mainWindow->resize(900, 610);
        window.somaticDNAResultTableView->setColumnWidth(0, 217);
        const QByteArray splitter =
            window.mainWindow->findChild<QSplitter*>(QStringLiteral("resultsSplitter"))
                ->saveState();
        open.controller.reset();
        const WindowController& again = open.show();
        QCOMPARE(again.mainWindow->size(), QSize(900, 610));
        QCOMPARE(again.somaticDNAResultTableView->columnWidth(0), 217);
        QCOMPARE(
            again.mainWindow->findChild<QSplitter*>(QStringLiteral("resultsSplitter"))->saveState(),
            splitter);
    }

    void aSecondWindowDoesNotCoverTheFirst() {
        OpenWindow open;
        open.openPair(1);
        open.show().mainWindow->setGeometry(40, 50, 700, 500);
        open.controller.reset();
        const WindowController& first = open.show();
        const QPoint corner = first.mainWindow->geometry().topLeft();
        ui::WindowController second(*open.document, QStringLiteral("VextaDocument"), open.settings,
                                    ui::ApplicationActions());
        const QPoint beside = second.mainWindow->geometry().topLeft();
        QVERIFY(beside.x() > corner.x() && beside.y() > corner.y());
        QCOMPARE(second.mainWindow->size(), first.mainWindow->size());
        second.mainWindow->show();
        ui::WindowController third(*open.document, QStringLiteral("VextaDocument"), open.settings,
                                   ui::ApplicationActions());
        QVERIFY(third.mainWindow->geometry().topLeft() != corner);
        QVERIFY(third.mainWindow->geometry().topLeft() != beside);
    }

    void emptyTablesSayWhy() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        QCOMPARE(window.patientsNoTableView->emptyText(), QStringLiteral("Press Analyze (Ctrl+R)"));
        QCOMPARE(window.somaticDNAResultTableView->emptyText(),
                 QStringLiteral("Press Analyze (Ctrl+R)"));
        open.give({PatientBuilder("1").patient});
        window.reloadResultTables();
        QCOMPARE(window.somaticDNAResultTableView->emptyText(),
                 QStringLiteral("Select a patient."));
        window.patientsNoTableView->selectRow(0);
        QCOMPARE(window.somaticDNAResultTableView->emptyText(),
                 QStringLiteral("This patient has no rows in this table."));
    }

    void aLongNameIsElidedAndWholeInItsTooltip() {
        OpenWindow open;
        open.openPair(1);
        WindowController& window = open.show();
        const QString name = QString(300, QLatin1Char('x')) + QStringLiteral("<i>_R1_001.fastq");
        window.setText(run::RunField::file1, name.toStdString());
        QCOMPARE(window.file1TextField->text(), name);
        QVERIFY(window.file1TextField->toolTip().contains(QStringLiteral("&lt;i&gt;")));
        QVERIFY(window.file1TextField->isReadOnly());
        window.mainWindow->grab();
    }

private:
    static constexpr std::string_view kCopies = settings::key::kCopyNumberOfInternalControl;

    /// Opens a pair in a folder whose name holds "_R1". Returns a file beside that folder whose
    /// name is one of clean-up's.
    static std::string openBesideABystander(const OpenWindow& open) {
        const std::string folder = open.reads.file("run_R1_new");
        std::filesystem::create_directory(folder);
        open.writePair(7, 3, 3);
        for (const char* name : {"/p_S7_L001_R1_001.fastq", "/p_S7_L001_R2_001.fastq"}) {
            std::filesystem::rename(open.reads.path() + name, folder + name);
        }
        open.document->readFromURL(folder + "/p_S7_L001_R1_001.fastq", "fastq");
        return open.reads.write("run_R1_001.fastq", "somebody's");
    }
    static std::shared_ptr<run::SummaryForEachPatient> everyKindOfRow() {
        return PatientBuilder("2")
            .counts(1000, 900)
            .germlineDNA("BIM", "wt/mut")
            .somaticDNA("KRAS", "Positive", "6.4%")
            .germlineRNA("OAZ1", "RNA degraded", "3")
            .somaticRNA("ALK", "Positive", "12")
            .patient;
    }
    static QString cell(const WindowController& window, const QTableView* table,
                        const char* identifier, int row) {
        return window.objectValueForTableColumn(table, QLatin1String(identifier), row);
    }
    static QPoint centre(const QTableView* table, int row, int column) {
        return table->visualRect(table->model()->index(row, column)).center();
    }
    static QAction* actionTitled(const WindowController& window, const char* title) {
        for (QAction* action : window.mainWindow->findChildren<QAction*>()) {
            if (action->text() == QString::fromUtf8(title)) {
                return action;
            }
        }
        qFatal("no action %s", title);
    }
};

WINDOW_TEST(WindowControllerTest, QApplication)
#include "window_controller_test.moc"
