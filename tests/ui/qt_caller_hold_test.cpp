// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>

#include <QCursor>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <QtTest>

#include "document/recording_window.h"
#include "document/vexta_document.h"
#include "support/small_run.h"
#include "support/temp_dir.h"
#include "ui/application/qt_caller_hold.h"
#include "ui/application/qt_ports.h"
#include "ui/open_window.h"
#include "ui/tables/record_table_view.h"
#include "ui/window_test.h"

namespace {

/// A click as the window system sends it.
void clickAsTheWindowSystemDoes(const QWidget& button) {
    QWindow* window = button.window()->windowHandle();
    const QPointF place = button.mapTo(button.window(), button.rect().center());
    const QPointF onScreen = button.mapToGlobal(button.rect().center());
    qt_handleMouseEvent(window, place, onScreen, Qt::LeftButton, Qt::LeftButton,
                        QEvent::MouseButtonPress, Qt::NoModifier, 1);
    qt_handleMouseEvent(window, place, onScreen, Qt::NoButton, Qt::LeftButton,
                        QEvent::MouseButtonRelease, Qt::NoModifier, 2);
}

/// From another thread: runs `step` on the main thread and lets its event loop turn a few times.
void onMainThread(QObject& there, const std::function<void()>& step) {
    QMetaObject::invokeMethod(&there, step, Qt::BlockingQueuedConnection);
    for (int turn = 0; turn < 5; ++turn) {
        QMetaObject::invokeMethod(
            &there, [] {}, Qt::BlockingQueuedConnection);
    }
}

class PaintedWidget : public QWidget {
public:
    std::atomic<int> paints{0};

protected:
    void paintEvent(QPaintEvent*) override { ++paints; }
};

/// A hold that clicks a button while its work is under way.
class ClickingHold : public ui::QtCallerHold {
public:
    explicit ClickingHold(QPushButton& button) : m_button(button) {}
    void hold(const platform::Task& work) override {
        QtCallerHold::hold([&] {
            work();
            onMainThread(m_button, [this] { clickAsTheWindowSystemDoes(m_button); });
        });
    }

private:
    QPushButton& m_button;
};

/// A window of which the Analyze button is a real one.
class ButtonWindow : public document::RecordingWindow {
public:
    ButtonWindow(platform::RunLoop& loop, QPushButton& button)
        : RecordingWindow(loop), m_button(button) {}
    void setAnalyzeButtonEnabled(bool enabled) override { m_button.setEnabled(enabled); }
    bool analyzeButtonEnabled() const override { return m_button.isEnabled(); }

private:
    QPushButton& m_button;
};

/// Settings that keep a run waiting, as calling reads them, until they are let go.
class WaitingSettings : public settings::MemorySettingsStore {
public:
    std::optional<settings::SettingValue> value(std::string_view key) const override {
        m_letGo.wait();
        return settings::MemorySettingsStore::value(key);
    }
    void letGo() { m_gate.set_value(); }

private:
    std::promise<void> m_gate;
    std::shared_future<void> m_letGo = m_gate.get_future().share();
};

} // namespace

class QtCallerHoldTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theCallerGoesOnWhenTheWorkIsDone() {
        bool done = false;
        ui::QtCallerHold().hold([&] { done = true; });
        QVERIFY(done);
    }

    void windowsArePaintedAndPostedTasksRunMeanwhile() {
        PaintedWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const int before = window.paints;
        ui::QtMainQueue queue;
        std::promise<void> ran;
        ui::QtCallerHold().hold([&] {
            queue.async([&] {
                window.update();
                ran.set_value();
            });
            ran.get_future().wait();
            while (window.paints == before) {
                std::this_thread::yield();
            }
        });
        QVERIFY(window.paints > before);
    }

    void clicksAndKeysAreDroppedForGood() {
        QPushButton button;
        button.show();
        QVERIFY(QTest::qWaitForWindowExposed(&button));
        int clicks = 0;
        connect(&button, &QPushButton::clicked, [&clicks] { ++clicks; });
        ui::QtCallerHold().hold([&] {
            onMainThread(button, [&] {
                clickAsTheWindowSystemDoes(button);
                QTest::mouseClick(&button, Qt::LeftButton);
                QTest::keyClick(&button, Qt::Key_Space);
            });
        });
        QCOMPARE(clicks, 0);
        QCoreApplication::processEvents();
        QCOMPARE(clicks, 0);
        QVERIFY(!button.isDown());
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicks, 1);
    }

    void aRequestToCloseAWindowIsDropped() {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        ui::QtCallerHold().hold([&] {
            // Comes as from the window manager.
            onMainThread(window, [&] { window.windowHandle()->close(); });
        });
        QVERIFY(window.isVisible());
        QVERIFY(window.close());
    }

    void thePointerIsBusyMeanwhile() {
        QWidget there;
        bool busy = false;
        ui::QtCallerHold().hold([&] {
            onMainThread(there, [&busy] {
                const QCursor* cursor = QGuiApplication::overrideCursor();
                busy = cursor && cursor->shape() == Qt::BusyCursor;
            });
        });
        QVERIFY(busy);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void anExceptionOfTheWorkReachesTheCaller() {
        QVERIFY_EXCEPTION_THROWN(ui::QtCallerHold().hold([] { throw std::runtime_error("full"); }),
                                 std::runtime_error);
    }

    void theWorkIsFinishedAlsoWhenTheApplicationIsToQuit() {
        QWidget there;
        std::promise<void> told;
        std::atomic<bool> done{false};
        ui::QtCallerHold().hold([&] {
            QMetaObject::invokeMethod(
                &there,
                [&told] {
                    QCoreApplication::quit();
                    told.set_value();
                },
                Qt::QueuedConnection);
            told.get_future().wait();
            // Time in which a hold that heeds the quitting would return.
            for (int turn = 0; turn < 1000; ++turn) {
                std::this_thread::yield();
            }
            done = true;
        });
        QVERIFY(done);
    }

    void aBoxThatHoldsEverythingUpIsAnswered() {
        QWidget there;
        bool answered = false;
        ui::QtCallerHold hold;
        hold.hold([&] {
            QMetaObject::invokeMethod(
                &there,
                [&answered] {
                    QMessageBox box;
                    box.addButton(QMessageBox::Ok);
                    QTimer::singleShot(
                        0, &box, [&box] { QTest::keyClick(box.windowHandle(), Qt::Key_Return); });
                    // Ends a test that would hang.
                    QTimer::singleShot(5000, &box, [&box] { box.done(QMessageBox::Cancel); });
                    answered = box.exec() == QMessageBox::Ok;
                },
                Qt::BlockingQueuedConnection);
        });
        QVERIFY(answered);
    }

    void theEndOfAHoldIsTold() {
        ui::QtCallerHold hold;
        const QSignalSpy over(&hold, &ui::QtCallerHold::over);
        bool holding = false;
        hold.hold([&] { holding = hold.isHolding(); });
        QVERIFY(holding);
        QVERIFY(!hold.isHolding());
        QCOMPARE(over.size(), 1);
    }

    void aClickOnAnalyzeWhileCopiesAreMadeStartsNoSecondRun();
    void theWindowsOwnAnalyzeButtonIsDeafWhileCopiesAreMade();
};

void QtCallerHoldTest::aClickOnAnalyzeWhileCopiesAreMadeStartsNoSecondRun() {
    const support::TempDir dir;
    const std::string read1 = dir.write("p_S7_L001_R1_001.fastq", support::reads(3));
    dir.write("p_S7_L001_R2_001.fastq", support::reads(3));
    WaitingSettings settings;
    platform::WorkerPool workers(1);
    platform::RunLoop unused;
    ui::QtMainQueue queue;
    document::RecordingClipboard clipboard;
    document::RecordingAlerts alerts;
    QPushButton button;
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    ButtonWindow window(unused, button);
    ClickingHold hold(button);
    const support::TempDir own;
    document::VextaDocument document(
        {{settings, workers, own.write("catalogue.txt", support::kSmallCatalogue)},
         queue,
         &clipboard,
         alerts,
         hold});
    document.windowController = &window;
    document.runObserver = &window;
    QVERIFY(document.readFromURL(read1, "fastq"));
    int clicks = 0;
    connect(&button, &QPushButton::clicked, &button, [&] {
        ++clicks;
        document.analyze();
    });

    clickAsTheWindowSystemDoes(button);
    const int clicksDuringTheRun = clicks;
    const bool enabledDuringTheRun = button.isEnabled();
    settings.letGo();
    QCOMPARE(clicksDuringTheRun, 1);
    QVERIFY(!enabledDuringTheRun);
    QTRY_COMPARE(window.outcomes.size(), std::size_t{1});
    QCOMPARE(window.countOf("start 1/1"), std::size_t{1});
    QCOMPARE(window.countOf("busy"), std::size_t{1});
    QVERIFY(button.isEnabled());
    QCoreApplication::processEvents();
    QCOMPARE(clicks, 1);
}

void QtCallerHoldTest::theWindowsOwnAnalyzeButtonIsDeafWhileCopiesAreMade() {
    support::OpenWindow open;
    open.openPair(7);
    ui::WindowController& window = open.show();
    const QSignalSpy clicked(window.analyzeButton, &QAbstractButton::clicked);
    const QSignalSpy over(&window, &ui::WindowController::analysisOver);
    bool enabledDuringTheHold = false;
    // Comes first in the event loop of the hold: the end of the work is posted after it.
    QMetaObject::invokeMethod(
        &window,
        [&] {
            enabledDuringTheHold = open.callerHold.isHolding() && window.analyzeButton->isEnabled();
            clickAsTheWindowSystemDoes(*window.analyzeButton);
        },
        Qt::QueuedConnection);
    window.analyzeButton->click();
    QVERIFY(enabledDuringTheHold);
    QTRY_COMPARE(over.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(over.size(), 1);
    QCOMPARE(window.numberOfRowsInTableView(window.patientsNoTableView), 1);
}

WINDOW_TEST(QtCallerHoldTest, QApplication)
#include "qt_caller_hold_test.moc"
