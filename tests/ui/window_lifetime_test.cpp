// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <future>
#include <utility>

#include <QLineEdit>
#include <QtTest>

#include "ui/open_window.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window_test.h"

using support::OpenWindow;
using ui::WindowController;

namespace {

/// Stops the window's run where it first reads a setting, until release().
class StoppedRun {
public:
    explicit StoppedRun(OpenWindow& open) {
        open.settings.onRead = [this, thread = QThread::currentThread()] {
            if (QThread::currentThread() != thread && !std::exchange(m_met, true)) {
                m_arrived.set_value();
                m_released.get_future().wait();
            }
        };
    }
    void waitUntilItStands() { m_arrived.get_future().wait(); }
    void release() { m_released.set_value(); }

private:
    bool m_met = false;
    std::promise<void> m_arrived;
    std::promise<void> m_released;
};

} // namespace

/// Windows whose runs go on at the same time, and windows that go before their run does.
class WindowLifetimeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoDocumentsRunAtOnceAndEachShowsItsOwnPatient() {
        OpenWindow one;
        OpenWindow two;
        ui::setReadsInputsInPlace(true);
        one.openPair(1, 3);
        two.openPair(2, 5);
        StoppedRun first(one);
        StoppedRun second(two);
        WindowController& left = one.show();
        WindowController& right = two.show();
        left.analyze();
        right.analyze();
        first.waitUntilItStands();
        second.waitUntilItStands();
        QVERIFY(left.analysisIsRunning() && right.analysisIsRunning());
        // The one that began last ends first.
        second.release();
        QTRY_VERIFY(!right.analysisIsRunning());
        QVERIFY(left.analysisIsRunning());
        first.release();
        QTRY_VERIFY(!left.analysisIsRunning());
        QCOMPARE(left.numberOfRowsInTableView(left.patientsNoTableView), 1);
        QCOMPARE(right.numberOfRowsInTableView(right.patientsNoTableView), 1);
        QCOMPARE(left.totalNumberOfReadsTextField->text(), QStringLiteral("3"));
        QCOMPARE(right.totalNumberOfReadsTextField->text(), QStringLiteral("5"));
        QCOMPARE(left.file1TextField->text(), QStringLiteral("p_S1_L001_R1_001.fastq"));
        QCOMPARE(right.file1TextField->text(), QStringLiteral("p_S2_L001_R1_001.fastq"));
    }

    void aWindowThatGoesWithTasksQueuedLeavesItsDocumentTheResult() {
        OpenWindow open;
        ui::setReadsInputsInPlace(true);
        open.openPair(1);
        StoppedRun run(open);
        open.show().analyze();
        // What the run has shown so far waits for the main thread, which stands here.
        run.waitUntilItStands();
        open.controller.reset();
        run.release();
        const auto& patients = open.document->mainRoutine().summaryForEachPatientMutAr;
        QTRY_COMPARE(archive::orEmpty(patients).size(), std::size_t(1));
        QVERIFY(open.document->windowController == nullptr);
    }

    void aDocumentThatGoesWithTasksQueuedIsNotTouchedByThem() {
        OpenWindow open;
        ui::setReadsInputsInPlace(true);
        open.openPair(1);
        StoppedRun run(open);
        open.show().analyze();
        run.waitUntilItStands();
        run.release();
        open.controller.reset();
        // Waits for the run: all that it queued is still there afterwards.
        open.document.reset();
        bool reached = false;
        open.queue.async([&reached] { reached = true; });
        QTRY_VERIFY(reached);
    }
};

WINDOW_TEST(WindowLifetimeTest, QApplication)
#include "window_lifetime_test.moc"
