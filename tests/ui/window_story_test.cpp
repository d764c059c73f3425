// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include <QAbstractButton>
#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QtTest>

#include "ui/accessible_tree.h"
#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/result_tones.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/run_controls.h"
#include "ui/window/save_dialog.h"
#include "ui/window_test.h"

using support::OpenWindow;
using ui::WindowController;

namespace {

void click(QAbstractButton* button) {
    QTest::mouseClick(button, Qt::LeftButton);
}

} // namespace

/// Whole stories at the real window: real files, real runs.
class WindowStoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPatientIsAnalysedSelectedCopiedAndSaved_data() { descriptions(); }
    void aPatientIsAnalysedSelectedCopiedAndSaved() {
        QFETCH(QString, description);
        OpenWindow open(description);
        open.openPair(7, 3);
        const WindowController& window = open.show();
        const QSignalSpy over(&window, &WindowController::analysisOver);
        click(window.analyzeButton);
        QVERIFY(window.analysisIsRunning());
        QTRY_COMPARE(over.count(), 1);
        QVERIFY(!window.analysisIsRunning());
        QVERIFY(!window.indicator);
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 1);
        QCOMPARE(
            window.objectValueForTableColumn(window.patientsNoTableView, QStringLiteral("0"), 0),
            QStringLiteral("7"));
        QCOMPARE(window.patientsNoTableView->selectedRow(), 0);
        QCOMPARE(window.totalNumberOfReadsTextField->text(), QStringLiteral("3"));
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 1);
        QVERIFY(window.unsavedTextField->isVisible());
        QTest::keyClick(window.mainWindow, Qt::Key_C, Qt::ControlModifier);
        QVERIFY(
            QApplication::clipboard()->text().contains(QStringLiteral("TotalNumberOfReads\t3\n")));
        QTest::keyClick(window.mainWindow, Qt::Key_T, Qt::ControlModifier);
        QVERIFY(QApplication::clipboard()->text().startsWith(QStringLiteral("File\tMutation\t")));
        saveAs(window, open.dir.file("mine"));
        QTRY_VERIFY(QFile::exists(QString::fromStdString(open.dir.file("mine.vexta"))));
        QVERIFY(!window.unsavedTextField->isVisible());
        QVERIFY(window.noticeLine->text().contains(QStringLiteral("mine.vexta")));
    }

    void aSavedBatchReopensWithItsPatientsAndTheSelectedOne_data() { descriptions(); }
    void aSavedBatchReopensWithItsPatientsAndTheSelectedOne() {
        QFETCH(QString, description);
        OpenWindow open(description);
        for (const int sample : {1, 2, 3}) {
            open.writePair(sample, 2 + sample, 2 + sample);
        }
        open.openPair(1);
        const WindowController& window = open.show();
        click(window.analyzeAllButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        window.patientsNoTableView->selectRow(0);
        window.patientsNoTableView->selectRow(2);
        const std::string path = open.dir.file("batch.vexta");
        saveAs(window, path);
        QTRY_VERIFY(QFile::exists(QString::fromStdString(path)));

        OpenWindow reopened(description);
        QVERIFY(reopened.document->readFromURL(path, "VEXtAFile"));
        const WindowController& saved = reopened.show();
        QCOMPARE(saved.numberOfRowsInTableView(saved.patientsNoTableView), 3);
        QCOMPARE(saved.patientsNoTableView->selectedRow(), 2);
        QCOMPARE(saved.file1TextField->text(), QStringLiteral("p_S3_L001_R1_001.fastq"));
        QCOMPARE(saved.totalNumberOfReadsTextField->text(), QStringLiteral("5"));
        QCOMPARE(rowsOf(saved), rowsOf(window));
        QCOMPARE(rowsOf(saved).size(), 1);
        saved.patientsNoTableView->selectRow(0);
        QCOMPARE(saved.totalNumberOfReadsTextField->text(), QStringLiteral("3"));
        QVERIFY(!saved.unsavedTextField->isVisible());
    }

    void theSavePanelOffersOnlyTheResultDocument() {
        OpenWindow open;
        open.openPair(7);
        const WindowController& window = open.show();
        QTest::keyClick(window.mainWindow, Qt::Key_S, Qt::ControlModifier);
        auto* panel = window.mainWindow->findChild<QFileDialog*>(QStringLiteral("savePanel"));
        QVERIFY(panel != nullptr);
        QCOMPARE(panel->windowModality(), Qt::WindowModal);
        QCOMPARE(panel->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(panel->nameFilters(), QStringList{QStringLiteral("Vexta result (*.vexta)")});
        panel->reject();
        QVERIFY(window.noticeLine->text().isEmpty());
    }

    void theSuggestedNameIsThatOfTheSampleInItsFolder() {
        OpenWindow open;
        const support::TempDir parent;
        // Bytes as the system has them in names, whatever its locale.
        const std::string folder =
            parent.file(QFile::encodeName(QStringLiteral("Müller")).toStdString());
        QVERIFY(QDir().mkpath(QFile::decodeName(QByteArray::fromStdString(folder))));
        open.openPair(7);
        open.document->fastqFileDir = folder;
        open.document->file1 = "p_S7_L001_R1_001.fastq";
        WindowController& window = open.show();
        open.give({support::PatientBuilder("7").patient});
        window.offerToSave("bytes", "vexta");
        auto* panel = window.mainWindow->findChild<QFileDialog*>(QStringLiteral("savePanel"));
        const QString chosen = panel->selectedFiles().value(0);
        QCOMPARE(QFile::encodeName(chosen).toStdString(), folder + "/p_S7_L001.vexta");
    }

    void aNameWithAnotherExtensionGetsTheRightOne() {
        OpenWindow open;
        open.openPair(7);
        const WindowController& window = open.show();
        saveAs(window, open.dir.file("result.txt"));
        QTRY_VERIFY(QFile::exists(QString::fromStdString(open.dir.file("result.txt.vexta"))));
        QVERIFY(!QFile::exists(QString::fromStdString(open.dir.file("result.txt"))));
    }

    void aFailedWriteIsToldInTheWindow() {
        OpenWindow open;
        open.openPair(7);
        WindowController& window = open.show();
        window.offerToSave("bytes", "vexta");
        auto* panel = window.mainWindow->findChild<QFileDialog*>(QStringLiteral("savePanel"));
        const std::string target = open.dir.file("nowhere/result.vexta");
        Q_EMIT panel->fileSelected(QString::fromStdString(target));
        QVERIFY(window.noticeLine->text().startsWith(QStringLiteral("The result was not saved: ")));
        QVERIFY(window.noticeLine->text().contains(QString::fromStdString(target)));
    }

    void aFailedSingleRunLeavesTheButtonsOffAndSaysTheWayOut() {
        OpenWindow open;
        const std::string read1 = open.writePair(7, 3, 3);
        open.reads.write("p_S7_L001_R2_001.fastq", "@other\nACGT\n+\nIIII\n");
        open.document->readFromURL(read1, "fastq");
        const WindowController& window = open.show();
        QTest::keyClick(window.mainWindow, Qt::Key_R, Qt::ControlModifier);
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(!window.analyzeButton->isEnabled());
        QVERIFY(!window.analyzeAllButton->isEnabled());
        QVERIFY(!window.validateMenuItem(QString::fromUtf8(ui::titles::kSaveResult)));
        QVERIFY(window.indicator);
        QVERIFY(window.errorLogWindow->isVisible());
        QVERIFY(window.errorLogTextView->toPlainText().contains(
            QStringLiteral("Error occurred for files ")));
        QVERIFY(window.noticeLine->isVisible());
        QVERIFY(window.noticeLine->text().endsWith(
            QStringLiteral("Close this document and open it again to analyse.")));
    }

    void anEmptyDirectoryClearsTheTablesAndLeavesTheButtonsOff() {
        OpenWindow open;
        const WindowController& window = open.show();
        click(window.analyzeAllButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(!window.analyzeButton->isEnabled());
        QVERIFY(!window.analyzeAllButton->isEnabled());
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 0);
        QVERIFY(window.noticeLine->text().contains(QStringLiteral("open it again")));
    }

    void anUnpairedSampleRunsNobodyAndKeepsTheButtonsOn() {
        OpenWindow open;
        open.openPair(1);
        open.reads.write("p_S2_L001_R2_001.fastq", support::reads(1));
        const WindowController& window = open.show();
        click(window.analyzeAllButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(open.alerts.messages,
                 std::vector<std::string>{"Patient 2 has unpaired fastq file."});
        QVERIFY(window.analyzeAllButton->isEnabled());
    }

    void aBatchWhoseSecondPatientFailsAsksForARowThatIsNotThere() {
        OpenWindow open;
        open.openPair(1);
        open.writePair(2, 3, 3);
        open.reads.write("p_S2_L001_R2_001.fastq", "@other\nACGT\n+\nIIII\n");
        open.writePair(3, 3, 3);
        const WindowController& window = open.show();
        QTest::keyClick(window.mainWindow, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(window.mainRoutine->selectedPatientRowNo, std::int64_t(2));
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 2);
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 0);
        QVERIFY(window.errorLogTextView->toPlainText().contains(
            QStringLiteral("Error occurred for files ")));
        QVERIFY(window.analyzeAllButton->isEnabled());
        QCOMPARE(window.noticeLine->text(),
                 QStringLiteral("2 analysed, 1 failed; the error log (F8) says why"));
        window.mainWindow->grab();
    }

    void escDuringTheSecondOfFivePatientsSkipsTheRest_data() { descriptions(); }
    void escDuringTheSecondOfFivePatientsSkipsTheRest() {
        QFETCH(QString, description);
        OpenWindow open(description);
        for (int sample = 1; sample <= 5; ++sample) {
            open.writePair(sample, 3, 3);
        }
        open.openPair(1);
        const WindowController& window = open.show();
        open.settings.onRead = [&, asked = false]() mutable {
            if (!asked && open.document->mainRoutine().summaryForEachPatient->patientNo == "2") {
                asked = true;
                // The second patient's run waits for the key to be pressed.
                QMetaObject::invokeMethod(
                    window.mainWindow,
                    [&window] { QTest::keyClick(window.mainWindow, Qt::Key_Escape); },
                    Qt::BlockingQueuedConnection);
            }
        };
        click(window.analyzeAllButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 2);
        QVERIFY(window.analyzeButton->isEnabled());
        QVERIFY(window.analyzeAllButton->isEnabled());
        QVERIFY(!window.indicator);
        QCOMPARE(window.noticeLine->text(), QStringLiteral("2 analysed, 3 skipped"));
    }

    void resultsOfABatchAreUnsavedFromTheFirstPatientOn() {
        OpenWindow open;
        open.writePair(2, 3, 3);
        open.openPair(1);
        const WindowController& window = open.show();
        std::optional<bool> unsaved;
        open.settings.onRead = [&] {
            if (!unsaved && open.document->mainRoutine().summaryForEachPatient->patientNo == "2") {
                // Comes after what the first patient queued.
                QMetaObject::invokeMethod(
                    window.mainWindow, [&] { unsaved = window.unsavedTextField->isVisible(); },
                    Qt::BlockingQueuedConnection);
            }
        };
        QVERIFY(!window.unsavedTextField->isVisible());
        click(window.analyzeAllButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        QCOMPARE(unsaved, std::optional(true));
    }

    void stoppingASingleRunSaysThatItWillFinish() {
        OpenWindow open;
        open.openPair(7);
        const WindowController& window = open.show();
        open.settings.onRead = [&, asked = false]() mutable {
            if (!std::exchange(asked, true)) {
                QMetaObject::invokeMethod(
                    window.mainWindow, [&window] { click(window.stopButton); },
                    Qt::BlockingQueuedConnection);
            }
        };
        click(window.analyzeButton);
        QTRY_VERIFY(!window.analysisIsRunning());
        QVERIFY(open.document->cancelOperationFlag());
        QVERIFY(window.noticeLine->text().contains(QStringLiteral("will finish")));
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 1);
    }

    void whileARunGoesOnNoOtherCanBegin() {
        OpenWindow open;
        open.openPair(7);
        WindowController& window = open.show();
        const QSignalSpy over(&window, &WindowController::analysisOver);
        window.analyze();
        QVERIFY(!window.validateMenuItem(QStringLiteral("Analyze")));
        QVERIFY(!window.analyzeButton->isEnabled());
        QVERIFY(window.indicator);
        QVERIFY(window.runProgressView->isVisible());
        window.analyze();
        window.analyzeAll();
        QTRY_VERIFY(!window.analysisIsRunning());
        QTest::qWait(20);
        QCOMPARE(over.count(), 1);
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 1);
        QVERIFY(!window.runProgressView->isVisible());
    }

    void theTableWithTheKeyboardHasAFrameOfItsOwn() {
        OpenWindow open;
        open.openPair(7);
        const WindowController& window = open.show();
        const auto frameOf = [](ui::RecordTableView* table) {
            return table->grab().toImage().pixel(0, table->height() / 2);
        };
        QTest::keyClick(window.mainWindow, Qt::Key_1, Qt::ControlModifier);
        const QRgb without = frameOf(window.somaticDNAResultTableView);
        QTest::keyClick(window.mainWindow, Qt::Key_2, Qt::ControlModifier);
        QVERIFY(window.somaticDNAResultTableView->hasFocus());
        const QRgb highlight =
            ui::legibleHighlight(window.somaticDNAResultTableView->palette()).rgb();
        QCOMPARE(frameOf(window.somaticDNAResultTableView), highlight);
        QVERIFY(without != highlight);
        QCOMPARE(frameOf(window.germlineDNAResultTableView), without);
    }

    void theOwnPreferenceDecidesHowInputsAreRead() {
        OpenWindow open;
        open.openPair(7);
        WindowController& window = open.show();
        window.analyze();
        QCOMPARE(open.document->inputMode, document::InputMode::workingCopies);
        QTRY_VERIFY(!window.analysisIsRunning());
        ui::setReadsInputsInPlace(true);
        window.analyze();
        QCOMPARE(open.document->inputMode, document::InputMode::direct);
        QTRY_VERIFY(!window.analysisIsRunning());
    }

    void resultsWithoutACatalogueSaySoUntilARunHasItBack_data() { descriptions(); }
    void resultsWithoutACatalogueSaySoUntilARunHasItBack() {
        QFETCH(QString, description);
        OpenWindow open(description);
        open.openPair(1);
        const WindowController& window = open.show();
        QVERIFY(!window.ribbon->isVisible());
        QFile::remove(QString::fromStdString(open.dir.file("catalogue.txt")));
        const QSignalSpy over(&window, &WindowController::analysisOver);
        click(window.analyzeButton);
        QTRY_COMPARE(over.count(), 1);
        QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 1);
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 0);
        QVERIFY(window.ribbon->isVisible());
        QVERIFY(!window.ribbon->isDismissible());
        QCOMPARE(window.ribbon->text(),
                 QStringLiteral("The catalogue could not be read: no target was searched, every "
                                "result is empty. Cannot open %1: No such file or directory.")
                     .arg(QString::fromStdString(open.dir.file("catalogue.txt"))));
        QCOMPARE(support::accessibleText(*window.ribbon, QAccessible::Name), window.ribbon->text());
        QVERIFY(!window.errorLogTextView->toPlainText().contains(QStringLiteral("catalogue")));
        QVERIFY(!window.errorLogWindow->isVisible());
        window.patientsNoTableView->clearSelection();
        window.patientsNoTableView->selectRow(0);
        saveAs(window, open.dir.file("mine"));
        QVERIFY(window.ribbon->isVisible());
        open.dir.write("catalogue.txt", support::kSmallCatalogue);
        click(window.analyzeButton);
        QTRY_COMPARE(over.count(), 2);
        QVERIFY(!window.ribbon->isVisible());
        QCOMPARE(window.numberOfRowsInTableView(window.somaticDNAResultTableView), 1);
    }

    void aBatchNamesThePatientsThatHadNoCatalogue() {
        OpenWindow open;
        open.writePair(1, 3, 3);
        open.writePair(2, 3, 3);
        open.writePair(3, 3, 3);
        open.openPair(1);
        const WindowController& window = open.show();
        open.settings.onRead = [&open] {
            QFile::remove(QString::fromStdString(open.dir.file("catalogue.txt")));
        };
        const QSignalSpy over(&window, &WindowController::analysisOver);
        click(window.analyzeAllButton);
        QTRY_COMPARE(over.count(), 1);
        QVERIFY(window.ribbon->text().startsWith(QStringLiteral(
            "The catalogue could not be read for patients 2, 3: no target was searched, ")));
        QCOMPARE(window.noticeLine->text(), QStringLiteral("3 analysed"));
        // The notice is no line of the log, which has the warning that the batch's has gone.
        QVERIFY(
            !window.errorLogTextView->toPlainText().contains(QStringLiteral("could not be read")));
    }

    void theRibbonFitsSmallWindowsAndIsReachedByTheKeyboard_data() { descriptions(); }
    void theRibbonFitsSmallWindowsAndIsReachedByTheKeyboard() {
        QFETCH(QString, description);
        OpenWindow open(description);
        open.openPair(1);
        WindowController& window = open.show();
        const int narrowest = window.mainWindow->minimumSizeHint().width();
        const std::string longName(200, 'x');
        window.showCatalogueNotice("The catalogue could not be read: no target was searched, every "
                                   "result is empty. Cannot open /" +
                                   longName + "/" + longName + ".txt: Permission denied.");
        window.mainWindow->resize(window.mainWindow->minimumSizeHint());
        QTRY_COMPARE(window.mainWindow->minimumSizeHint().width(), narrowest);
        QTRY_VERIFY(window.mainWindow->width() <= narrowest);
        auto* text = window.ribbon->findChild<QLabel*>(QStringLiteral("noticeText"));
        QVERIFY(text != nullptr);
        QTRY_VERIFY(text->height() >= text->heightForWidth(text->width()));
        QWidget* focused = window.ribbon;
        do {
            focused = focused->nextInFocusChain();
        } while (focused != window.ribbon &&
                 ((focused->focusPolicy() & Qt::TabFocus) == 0 || !focused->isVisible() ||
                  !window.ribbon->isAncestorOf(focused)));
        QCOMPARE(focused, text);
    }

private:
    static void descriptions() {
        QTest::addColumn<QString>("description");
        QTest::newRow("usual") << QStringLiteral("VextaDocument");
        QTest::newRow("midi") << QStringLiteral("VextaDocumentMidi");
    }
    /// The somatic DNA rows on show, with every column.
    static QList<QStringList> rowsOf(const WindowController& window) {
        const QTableView* table = window.somaticDNAResultTableView;
        QList<QStringList> rows;
        for (int row = 0; row < window.numberOfRowsInTableView(table); ++row) {
            rows.append(QStringList());
            for (const char* column : {"0", "1", "2", "3"}) {
                rows.last().append(
                    window.objectValueForTableColumn(table, QLatin1String(column), row));
            }
        }
        return rows;
    }
    static void saveAs(const WindowController& window, const std::string& path) {
        QTest::keyClick(window.mainWindow, Qt::Key_S, Qt::ControlModifier);
        auto* panel = window.mainWindow->findChild<QFileDialog*>(QStringLiteral("savePanel"));
        auto* name = panel->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setText(QString::fromStdString(path));
        QTest::keyClick(name, Qt::Key_Return);
    }
};

WINDOW_TEST(WindowStoryTest, QApplication)
#include "window_story_test.moc"
