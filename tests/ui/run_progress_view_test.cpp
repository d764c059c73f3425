// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QtTest>

#include "support/temp_dir.h"
#include "ui/window/run_controls.h"
#include "ui/window_test.h"

using document::ProgressMeter;

class RunProgressViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault({QLocale::English, QLocale::UnitedStates}); }
    void init() {
        reading = std::make_unique<run::ReadingProgress>();
        view = std::make_unique<ui::RunProgressView>(*reading);
        bar = view->findChild<QProgressBar*>();
        // Some time ahead: the view itself looks at its own clock when it is told something.
        start = ProgressMeter::Clock::now() + std::chrono::hours(1);
    }
    void cleanup() { view.reset(); }

    void isHiddenUnlessSomethingRuns() {
        QVERIFY(view->isHidden());
        view->begin();
        QVERIFY(!view->isHidden());
        view->end();
        QVERIFY(view->isHidden());
    }

    void anUnknownTotalShowsThatSomethingGoesOnAndNoForecast() {
        view->begin();
        view->patientStarts(1, 1);
        lookAfter(60);
        QVERIFY(isIndeterminate());
        QCOMPARE(text("runPaceLabel"), QString());
        count(0, 0, 12); // empty files, whatever was counted
        lookAfter(120);
        QVERIFY(isIndeterminate());
        QVERIFY(!text("runPaceLabel").contains(QStringLiteral("left")));
    }

    void aSingleRunShowsBytesPairsRateAndTimeLeft() {
        view->begin();
        view->patientStarts(1, 1);
        count(1000, 0, 0);
        lookAfter(0);
        QVERIFY(!isIndeterminate());
        count(1000, 100, 30'000'000);
        lookAfter(20);
        QCOMPARE(percent(), 10);
        QCOMPARE(text("runPatientLabel"), QString());
        QCOMPARE(text("runActivityLabel"), QStringLiteral("30,000,000 pairs"));
        QCOMPARE(text("runPaceLabel"), QStringLiteral("1.5 M pairs/s   about 3 min left"));
    }

    void theTimeLeftIsShownAfterFiveSecondsOfReading() {
        view->begin();
        view->patientStarts(1, 1);
        count(1000, 1, 1);
        lookAfter(0);
        count(1000, 500, 4000);
        lookAfter(4);
        QCOMPARE(text("runPaceLabel"), QStringLiteral("1.0 k pairs/s"));
        lookAfter(5);
        QCOMPARE(text("runPaceLabel"), QStringLiteral("800 pairs/s   a few seconds left"));
    }

    void aBatchNumbersItsPatientsAndTheBarNeverGoesBack() {
        view->begin();
        view->patientStarts(3, 12);
        count(1000, 500, 10);
        lookAfter(0);
        QCOMPARE(text("runPatientLabel"), QStringLiteral("patient 3 of 12"));
        QCOMPARE(percent(), 20); // 2.5 of 12
        count(1000, 200, 10);
        lookAfter(1);
        QCOMPARE(percent(), 20);
        view->patientStarts(4, 12);
        QCOMPARE(percent(), 25);
    }

    void aCopyThatIsMadeIsNamedWithWhatIsThereOfIt() {
        const support::TempDir dir;
        const std::string copy = dir.write("_x_R1_001.fastq", std::string(2500, 'A'));
        view->begin();
        view->preparing({"x_R1_001.fastq.gz", copy});
        QCOMPARE(text("runActivityLabel"),
                 QStringLiteral("Preparing x_R1_001.fastq.gz   2.5 kB so far"));
        QVERIFY(isIndeterminate());
        dir.write("_x_R1_001.fastq", std::string(3500, 'A'));
        lookAfter(1);
        QVERIFY(text("runActivityLabel").endsWith(QStringLiteral("3.5 kB so far")));
        view->preparing({"x_R2_001.fastq", dir.file("not there")});
        QCOMPARE(text("runActivityLabel"), QStringLiteral("Preparing x_R2_001.fastq"));
        view->prepared();
        view->patientStarts(1, 1);
        QCOMPARE(text("runActivityLabel"), QStringLiteral("0 pairs"));
    }

    void aLongNameIsShortenedAndWholeInItsTooltip() {
        view->begin();
        const std::string name = "<b>" + std::string(200, 'x') + "_R1_001.fastq.gz";
        view->preparing({name, "/nowhere"});
        QVERIFY(text("runActivityLabel").size() < 100);
        const auto* label = view->findChild<QLabel*>(QStringLiteral("runActivityLabel"));
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QVERIFY(label->toolTip().contains(QString(200, QLatin1Char('x'))));
        QVERIFY(!label->toolTip().contains(QStringLiteral("<b>")));
    }

    void aSecondRunBeginsAnew() {
        view->begin();
        view->patientStarts(2, 2);
        count(1000, 1000, 77);
        lookAfter(10);
        view->end();
        view->begin();
        QVERIFY(isIndeterminate());
        view->patientStarts(1, 2);
        QCOMPARE(text("runActivityLabel"), QStringLiteral("0 pairs"));
        count(500, 100, 5);
        view->refresh(start + std::chrono::hours(1));
        QCOMPARE(percent(), 10);
    }

    void whatComesWhileNothingRunsShowsNothing() {
        view->patientStarts(1, 1);
        view->prepared();
        QVERIFY(view->isHidden());
        QCOMPARE(text("runActivityLabel"), QString());
    }

    void aScreenReaderIsToldWhatTheBarIs() {
        QVERIFY(!view->accessibleName().isEmpty());
        QVERIFY(!bar->accessibleName().isEmpty());
    }

private:
    void count(std::uint64_t total, std::uint64_t taken, std::int64_t pairs) const {
        reading->bytesTotal = total;
        reading->bytesTaken = taken;
        reading->pairs = pairs;
    }
    void lookAfter(int seconds) const { view->refresh(start + std::chrono::seconds(seconds)); }
    QString text(const char* label) const {
        return view->findChild<QLabel*>(QLatin1String(label))->text();
    }
    bool isIndeterminate() const { return bar->minimum() == bar->maximum(); }
    int percent() const { return bar->value() * 100 / bar->maximum(); }

    std::unique_ptr<run::ReadingProgress> reading;
    std::unique_ptr<ui::RunProgressView> view;
    QProgressBar* bar = nullptr;
    ProgressMeter::Clock::time_point start;
};

WINDOW_TEST(RunProgressViewTest, QApplication)
#include "run_progress_view_test.moc"
