// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <future>
#include <memory>

#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTimer>
#include <QUrl>
#include <QtTest>

#include "document/result_document.h"
#include "settings/settings_table.h"
#include "support/small_run.h"
#include "support/temp_dir.h"
#include "ui/application/app_delegate.h"
#include "ui/application/open_documents.h"
#include "ui/application/preferences_window.h"
#include "ui/application/qt_caller_hold.h"
#include "ui/application/qt_ports.h"
#include "ui/application/start_window.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/notices.h"
#include "ui/window/window_controller.h"
#include "ui/window_test.h"

namespace setting = settings::key;
using settings::SettingValue;

namespace {

/// A store that remembers in which order it was asked to fill gaps.
class WatchedStore : public settings::MemorySettingsStore {
public:
    void setMissing(const KeysAndValues& values) override {
        for (const auto& [key, value] : values) {
            askedFor.push_back(key);
        }
        settings::MemorySettingsStore::setMissing(values);
    }
    std::vector<std::string> askedFor;
};

/// The application over services of its own, with everything a real one has but the settings file.
struct Application {
    explicit Application(std::size_t workerCount = 2) : workers(workerCount) {
        catalogue = dir.write("catalogue.txt", support::kSmallCatalogue);
    }

    ui::AppDelegate& launch(const QStringList& files = {}) {
        delegate = std::make_unique<ui::AppDelegate>(
            document::DocumentServices{
                {settings, workers, catalogue}, queue, &clipboard, alerts, callerHold},
            callerHold);
        delegate->applicationDidFinishLaunching(files);
        return *delegate;
    }

    /// Writes a pair; returns its read-1 file, or its read-2 file.
    QString pair(int sample, int read = 1) const {
        const std::string start = "p_S" + std::to_string(sample) + "_L001_R";
        dir.write(start + "1_001.fastq", support::reads(pairsPerFile));
        dir.write(start + "2_001.fastq", support::reads(pairsPerFile));
        return QString::fromStdString(dir.file(start + std::to_string(read) + "_001.fastq"));
    }

    QString savedResult() const {
        const auto bytes = document::encodeResultDocument({});
        return QString::fromStdString(dir.write("result.vexta", bytes.value()));
    }

    int pairsPerFile = 2;
    support::TempDir dir;
    std::string catalogue;
    WatchedStore settings;
    platform::WorkerPool workers;
    ui::QtMainQueue queue;
    ui::QtClipboard clipboard;
    ui::MessageAlerts alerts;
    ui::QtCallerHold callerHold;
    std::unique_ptr<ui::AppDelegate> delegate;
};

/// An application whose runs stand still until release(): its one worker is busy, and batches that
/// are full wait for a worker.
struct HeldApplication : Application {
    HeldApplication() : Application(1) {
        pairsPerFile = 3000;
        workers.async([held = released.get_future().share()] { held.wait(); });
    }
    ~HeldApplication() {
        release();
        delegate.reset();
    }
    void release() {
        if (!isReleased) {
            isReleased = true;
            released.set_value();
        }
    }
    std::promise<void> released;
    bool isReleased = false;
};

/// Presses Enter in the next modal box and keeps its text.
void acceptNextBox(QString& text) {
    QTimer::singleShot(0, qApp, [&text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) {
            acceptNextBox(text);
            return;
        }
        text = box->text();
        QTest::keyClick(box, Qt::Key_Return);
    });
}

QMessageBox* quitQuestion() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QStringLiteral("quitQuestion") && widget->isVisible()) {
            return qobject_cast<QMessageBox*>(widget);
        }
    }
    return nullptr;
}

void answerQuitQuestion(const QString& answer) {
    for (QAbstractButton* button : quitQuestion()->buttons()) {
        if (button->text().remove(QLatin1Char('&')) == answer) {
            button->click();
            return;
        }
    }
    QFAIL("no such answer");
}

QWidget* visibleWindow(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == QLatin1String(name) && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

QMainWindow& windowOf(ui::OpenDocument& document) {
    return *document.windowController()->mainWindow;
}

} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("app-delegate-test"));
    }

    void init() {
        QSettings().clear();
        ui::setReadsInputsInPlace(true);
    }

    // --- First-run values

    void aFreshUserStartsWithTheFirstRunValuesInTheirOrder() {
        Application application;
        application.launch();
        QCOMPARE(application.settings.askedFor,
                 (std::vector<std::string>{"leaveIntermediateFiles", "calculateFalsePositiveRate",
                                           "nD1Threshold", "nD2Threshold", "windowSizeMidi"}));
        const auto stored = [&](std::string_view key) {
            return application.settings.value(key).value();
        };
        QVERIFY(stored(setting::kLeaveIntermediateFiles) == SettingValue(false));
        QVERIFY(stored(setting::kCalculateFalsePositiveRate) == SettingValue(false));
        QVERIFY(stored(setting::kND1Threshold) == SettingValue(std::string("500")));
        QVERIFY(stored(setting::kND2Threshold) == SettingValue(std::string("10")));
        QVERIFY(stored(setting::kWindowSizeMidi) == SettingValue(false));
        QVERIFY(!application.settings.value(setting::kLeaveFileForFailedToBeAssignedReads));
    }

    void existingValuesOfAnyTypeAreNeverReplaced() {
        Application application;
        const std::vector<std::pair<std::string_view, SettingValue>> existing{
            {setting::kLeaveIntermediateFiles, std::string("maybe")},
            {setting::kCalculateFalsePositiveRate, std::int64_t{1}},
            {setting::kND1Threshold, std::int64_t{7}},
            {setting::kND2Threshold, SettingValue()},
            {setting::kWindowSizeMidi, 0.5},
            {setting::kCopyNumberOfInternalControl, false}};
        for (const auto& [key, value] : existing) {
            application.settings.setValue(key, value);
        }
        application.launch({application.pair(1)});
        for (const auto& [key, value] : existing) {
            QVERIFY2(application.settings.value(key).value() == value, std::string(key).c_str());
        }
    }

    void theControlsCopiesAreStoredWithTheFirstDocumentWindow() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(!application.settings.value(setting::kCopyNumberOfInternalControl));
        QVERIFY(delegate.openFile(application.pair(1)));
        QVERIFY(application.settings.value(setting::kCopyNumberOfInternalControl).value() ==
                SettingValue(std::string("100000")));
    }

    // --- Opening

    void launchingShowsTheStartWindowAndNoDocument() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(!ui::AppDelegate::applicationShouldOpenUntitledFile());
        QVERIFY(delegate.documents().isEmpty());
        QVERIFY(delegate.startWindow().isVisible());
    }

    void filesOfTheCommandLineOpenAsDocuments() {
        Application application;
        ui::AppDelegate& delegate = application.launch(
            {application.pair(1), QUrl::fromLocalFile(application.pair(2)).toString()});
        QCOMPARE(delegate.documents().size(), 2);
        QVERIFY(!delegate.startWindow().isVisible());
        QVERIFY(windowOf(*delegate.documents().first()).isVisible());
    }

    void theSameFileTwiceRaisesItsWindow() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(delegate.openFile(application.pair(1)));
        QVERIFY(delegate.openFile(application.pair(2)));
        QMainWindow& first = windowOf(*delegate.documents().first());
        first.showMinimized();
        QVERIFY(delegate.openFile(application.pair(1)));
        QCOMPARE(delegate.documents().size(), 2);
        QVERIFY(!first.isMinimized());
        QVERIFY(QTest::qWaitForWindowActive(&first));
    }

    void theReadTwoFileIsTheSameDocument() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(delegate.openFile(application.pair(1, 2)));
        QVERIFY(delegate.openFile(application.pair(1, 1)));
        QCOMPARE(delegate.documents().size(), 1);
        QCOMPARE(delegate.documents().first()->windowController()->file1TextField->text(),
                 QStringLiteral("p_S1_L001_R1_001.fastq"));
    }

    void aFolderOpensAsItsFirstPair() {
        Application application;
        application.pair(12);
        application.pair(3);
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(
            delegate.openFile(QString::fromStdString(application.dir.path()) + QLatin1Char('/')));
        QCOMPARE(delegate.documents().first()->windowController()->file1TextField->text(),
                 QStringLiteral("p_S3_L001_R1_001.fastq"));
    }

    void aSavedResultOpensForViewing() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(delegate.openFile(application.savedResult()));
        ui::OpenDocument& document = *delegate.documents().first();
        QCOMPARE(document.document().fileType(), std::string("VEXtAFile"));
        QVERIFY(!document.windowController()->analyzeButton->isEnabled());
        QVERIFY(!document.windowController()->analyzeAllButton->isEnabled());
        QVERIFY(!document.document().validateUserInterfaceItem("saveVEXtAFile:"));
    }

    void savedResultsOfTheSameNameAreToldApart() {
        Application application;
        const support::TempDir other;
        const auto bytes = document::encodeResultDocument({});
        const QString elsewhere =
            QString::fromStdString(other.write("result.vexta", bytes.value()));
        const QString result = application.savedResult();
        const ui::AppDelegate& delegate = application.launch({result, elsewhere});
        const auto& first = *delegate.documents().first()->windowController();
        const auto& last = *delegate.documents().last()->windowController();
        QCOMPARE(first.mainWindow->windowTitle(),
                 QStringLiteral("result.vexta - ") +
                     QString::fromStdString(application.dir.path()));
        QVERIFY(first.mainWindow->windowTitle() != last.mainWindow->windowTitle());
        QCOMPARE(first.ribbon->toolTip(), result);
        QCOMPARE(last.ribbon->toolTip(), elsewhere);
    }

    void aResultThatIsOpenedWithoutItsRecordSaysSo() {
        Application application;
        const ui::AppDelegate& delegate = application.launch({application.savedResult()});
        const auto& window = *delegate.documents().first()->windowController();
        QTRY_VERIFY(window.noticeLine->text().startsWith(QStringLiteral("No record lies beside ")));
    }

    void anUnpairedFileShowsTheAlertAndLeavesNothing() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        const QString file =
            QString::fromStdString(application.dir.write("p_S1_L001_R1_001.fastq", ""));
        QString text;
        acceptNextBox(text);
        QVERIFY(!delegate.openFile(file));
        QCOMPARE(text, QStringLiteral("Files are not paired or incompatible."));
        QVERIFY(delegate.documents().isEmpty());
        QVERIFY(delegate.startWindow().isVisible());
        QVERIFY(delegate.recentFiles().paths().isEmpty());
        QVERIFY(!application.settings.value(setting::kCopyNumberOfInternalControl));
    }

    void openedFilesAreRecentFiles() {
        Application application;
        const QString read1 = application.pair(1);
        ui::AppDelegate& delegate = application.launch({application.savedResult(), read1});
        QCOMPARE(delegate.recentFiles().paths().size(), 2);
        QCOMPARE(delegate.recentFiles().paths().first(), read1);
    }

    void filesDroppedOnADocumentWindowOpen() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        Q_EMIT delegate.documents().first()->windowController()->openRequested(
            {application.pair(2)});
        QCOMPARE(delegate.documents().size(), 2);
    }

    void filesOfAnotherStartOpenHere() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        delegate.filesHandedOver({application.pair(1), application.pair(2)});
        QCOMPARE(delegate.documents().size(), 2);
        windowOf(*delegate.documents().last()).showMinimized();
        delegate.filesHandedOver({});
        QVERIFY(!windowOf(*delegate.documents().last()).isMinimized());
    }

    void filesOfAnotherStartWaitUntilACallerIsNoLongerHeld() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        const QString unpaired =
            QString::fromStdString(application.dir.write("q_S9_L001_R1_001.fastq", ""));
        const QString read1 = application.pair(1);
        QWidget* boxDuringTheHold = nullptr;
        application.callerHold.hold([&] {
            QMetaObject::invokeMethod(
                &delegate,
                [&] {
                    delegate.filesHandedOver({unpaired});
                    delegate.filesHandedOver({read1});
                    boxDuringTheHold = QApplication::activeModalWidget();
                },
                Qt::BlockingQueuedConnection);
        });
        QVERIFY(boxDuringTheHold == nullptr);
        QVERIFY(delegate.documents().isEmpty());
        QString text;
        acceptNextBox(text);
        QTRY_COMPARE(delegate.documents().size(), 1);
        QCOMPARE(text, QStringLiteral("Files are not paired or incompatible."));
    }

    void theSettingChoosesTheWindowDescription() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        application.settings.setValue(setting::kWindowSizeMidi, true);
        QVERIFY(delegate.openFile(application.pair(2)));
        QVERIFY(windowOf(*delegate.documents().at(1)).width() >
                windowOf(*delegate.documents().at(0)).width());
    }

    // --- Windows that belong to no document

    void preferencesAreAlwaysEnabled() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        delegate.actions().preferences->setEnabled(false);
        QVERIFY(delegate.validateMenuItem(QStringLiteral("Preferences...")));
        QVERIFY(delegate.validateMenuItem(QStringLiteral("My Preferences")));
    }

    void everyOtherCommandIsEnabledAsItIs() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(delegate.validateMenuItem(QStringLiteral("Open...")));
        delegate.actions().open->setEnabled(false);
        QVERIFY(!delegate.validateMenuItem(QStringLiteral("Open...")));
        QVERIFY(!delegate.validateMenuItem(QStringLiteral("Print")));
    }

    void theKeyboardOpensPreferencesAndHelp() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        QVERIFY(QTest::qWaitForWindowActive(&delegate.startWindow()));
        QTest::keyClick(&delegate.startWindow(), Qt::Key_Comma, Qt::ControlModifier);
        QVERIFY(delegate.preferenceWindow().isVisible());
        QVERIFY(QTest::qWaitForWindowActive(&delegate.preferenceWindow()));
        QTest::keyClick(&delegate.preferenceWindow(), Qt::Key_F1);
        QVERIFY(visibleWindow("helpWindow") != nullptr);
    }

    void aMissingCatalogueIsToldAtTheStart() {
        Application application;
        application.catalogue = application.dir.file("gone.txt");
        ui::AppDelegate& delegate = application.launch();
        const auto* notice =
            delegate.startWindow().findChild<QLabel*>(QStringLiteral("startNotice"));
        QVERIFY(notice->isVisible());
        QVERIFY(notice->text().contains(QStringLiteral("gone.txt")));
    }

    void aDocumentThatOpensWithoutACatalogueSaysSoOnItsRibbon() {
        Application application;
        application.catalogue = application.dir.file("gone.txt");
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        const auto& window = *delegate.documents().first()->windowController();
        QVERIFY(window.ribbon->isVisible());
        QVERIFY(window.ribbon->text().startsWith(
            QStringLiteral("The catalogue cannot be read: no target would be searched, every "
                           "result would be empty. Cannot open ")));
        QVERIFY(window.errorLogTextView->toPlainText().isEmpty());
    }

    // --- Closing and quitting

    void theStartWindowReturnsWhenTheLastDocumentCloses() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1), application.pair(2)});
        windowOf(*delegate.documents().first()).close();
        QCOMPARE(delegate.documents().size(), 1);
        QVERIFY(!delegate.startWindow().isVisible());
        windowOf(*delegate.documents().first()).close();
        QVERIFY(delegate.documents().isEmpty());
        QVERIFY(delegate.startWindow().isVisible());
    }

    void aClosedDocumentOpensAnew() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        const QPointer<ui::OpenDocument> closed(delegate.documents().first());
        windowOf(*closed).close();
        QVERIFY(delegate.openFile(application.pair(1)));
        QTRY_VERIFY(!closed);
        QCOMPARE(delegate.documents().size(), 1);
    }

    void closingTheStartWindowQuits() {
        Application application;
        ui::AppDelegate& delegate = application.launch();
        const QSignalSpy ready(&delegate, &ui::AppDelegate::readyToQuit);
        QVERIFY(QTest::qWaitForWindowActive(&delegate.startWindow()));
        QTest::keyClick(&delegate.startWindow(), Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(ready.size(), 1);
        QVERIFY(!delegate.startWindow().isVisible());
    }

    void quittingWithoutARunAsksNothing() {
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1), application.pair(2)});
        const QSignalSpy ready(&delegate, &ui::AppDelegate::readyToQuit);
        delegate.actions().quit->trigger();
        QVERIFY(quitQuestion() == nullptr);
        QCOMPARE(ready.size(), 1);
        QVERIFY(!delegate.startWindow().isVisible());
    }

    void noSecondRunMakesWorkingCopiesInAFolder() {
        ui::setReadsInputsInPlace(false);
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1), application.pair(2)});
        ui::OpenDocument& first = *delegate.documents().at(0);
        ui::OpenDocument& second = *delegate.documents().at(1);
        first.windowController()->analyzeAll();
        QVERIFY(first.analysisIsRunning());
        second.windowController()->analyze();
        QVERIFY(!second.analysisIsRunning());
        QVERIFY(second.windowController()->noticeLine->text().startsWith(
            QStringLiteral("Not started")));
        // Also when the first one's window is gone and its patient still runs.
        windowOf(first).close();
        second.windowController()->analyzeAll();
        QVERIFY(!second.analysisIsRunning());
        // The inputs themselves may be read by any number of runs.
        ui::setReadsInputsInPlace(true);
        second.windowController()->analyze();
        QVERIFY(second.analysisIsRunning());
        application.release();
        QTRY_VERIFY(!second.analysisIsRunning());
    }

    void aFolderIsFreeForWorkingCopiesAgainAfterTheRun() {
        ui::setReadsInputsInPlace(false);
        Application application;
        ui::AppDelegate& delegate = application.launch({application.pair(1), application.pair(2)});
        QCOMPARE(delegate.documents().size(), 2);
        for (ui::OpenDocument* document : delegate.documents()) {
            document->windowController()->analyze();
            QVERIFY(document->analysisIsRunning());
            QTRY_VERIFY(!document->analysisIsRunning());
            QCOMPARE(document->windowController()->numberOfRowsInTableView(
                         document->windowController()->patientsNoTableView),
                     1);
        }
    }

    void aClosedBatchTellsThatItIsStopping() {
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        ui::OpenDocument& document = *delegate.documents().first();
        document.windowController()->analyzeAll();
        windowOf(document).close();
        document.raiseWindow();
        QVERIFY(document.document().cancelOperationFlag());
        QVERIFY(
            document.windowController()->noticeLine->text().startsWith(QStringLiteral("Stopping")));
    }

    void closingDuringARunHidesTheWindowAndWaitsInTheBackground() {
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        const QPointer<ui::OpenDocument> document(delegate.documents().first());
        document->windowController()->analyze();
        QVERIFY(document->analysisIsRunning());
        windowOf(*document).close();
        QVERIFY(delegate.documents().isEmpty());
        QVERIFY(delegate.startWindow().isVisible());
        QVERIFY(document);
        QVERIFY(document->document().cancelOperationFlag());
        application.release();
        QTRY_VERIFY(!document);
    }

    void openingAFileWhoseRunIsEndingBringsItsWindowBack() {
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        ui::OpenDocument* document = delegate.documents().first();
        document->windowController()->analyze();
        windowOf(*document).close();
        QVERIFY(delegate.openFile(application.pair(1)));
        QCOMPARE(delegate.documents(), QList<ui::OpenDocument*>{document});
        QVERIFY(!delegate.startWindow().isVisible());
        const QSignalSpy over(document->windowController(), &ui::WindowController::analysisOver);
        application.release();
        QTRY_COMPARE(over.size(), 1);
        QVERIFY(windowOf(*document).isVisible());
    }

    void quittingDuringARunAsksAndMayBeRefused() {
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1)});
        delegate.documents().first()->windowController()->analyze();
        const QSignalSpy ready(&delegate, &ui::AppDelegate::readyToQuit);
        delegate.quit();
        delegate.quit();
        QVERIFY(quitQuestion() != nullptr);
        answerQuitQuestion(QStringLiteral("Keep Running"));
        QTRY_VERIFY(quitQuestion() == nullptr);
        QCOMPARE(delegate.documents().size(), 1);
        QVERIFY(!delegate.documents().first()->document().cancelOperationFlag());
        QCOMPARE(ready.size(), 0);
    }

    void quittingDuringARunWaitsForItsPatient() {
        HeldApplication application;
        ui::AppDelegate& delegate = application.launch({application.pair(1), application.pair(2)});
        delegate.documents().first()->windowController()->analyze();
        const QSignalSpy ready(&delegate, &ui::AppDelegate::readyToQuit);
        delegate.quit();
        answerQuitQuestion(QStringLiteral("Quit"));
        QVERIFY(visibleWindow("endingWindow") != nullptr);
        QVERIFY(!delegate.startWindow().isVisible());
        QTest::qWait(20);
        QCOMPARE(ready.size(), 0);
        QVERIFY(!delegate.openFile(application.pair(3)));
        delegate.filesHandedOver({application.pair(3)});
        const auto* label =
            visibleWindow("endingWindow")->findChild<QLabel*>(QStringLiteral("notOpenedLabel"));
        QVERIFY(label->isVisible());
        QVERIFY(label->text().endsWith(application.pair(3)));
        application.release();
        QTRY_COMPARE(ready.size(), 1);
    }
};

WINDOW_TEST(AppDelegateTest, QApplication)
#include "app_delegate_test.moc"
