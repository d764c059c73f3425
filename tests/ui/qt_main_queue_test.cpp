// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include <QEventLoop>
#include <QtTest>

#include "ui/application/qt_ports.h"
#include "ui/window_test.h"

class QtMainQueueTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void tasksOfAThreadRunInTheOrderPosted() {
        ui::QtMainQueue queue;
        std::vector<int> seen;
        std::thread poster([&] {
            for (int number = 0; number < 100; ++number) {
                queue.async([&seen, number] { seen.push_back(number); });
            }
        });
        poster.join();
        QVERIFY(seen.empty());
        QCoreApplication::processEvents();
        QCOMPARE(seen.size(), std::size_t{100});
        QVERIFY(std::is_sorted(seen.begin(), seen.end()));
    }

    void tasksRunOnTheThreadOfTheQueue() {
        ui::QtMainQueue queue;
        std::thread::id ran;
        std::thread([&] { queue.async([&ran] { ran = std::this_thread::get_id(); }); }).join();
        QCoreApplication::processEvents();
        QVERIFY(ran == std::this_thread::get_id());
    }

    void aTaskRunsLaterAlsoWhenPostedOnTheMainThread() {
        ui::QtMainQueue queue;
        bool ran = false;
        queue.async([&ran] { ran = true; });
        QVERIFY(!ran);
        QCoreApplication::processEvents();
        QVERIFY(ran);
    }

    void tasksRunWhileUserInputIsExcluded() {
        ui::QtMainQueue queue;
        QEventLoop loop;
        std::thread poster([&] { queue.async([&loop] { loop.exit(7); }); });
        QCOMPARE(loop.exec(QEventLoop::ExcludeUserInputEvents), 7);
        poster.join();
    }

    void tasksPostedBeforeTheQueueEndsAreDropped() {
        auto queue = std::make_unique<ui::QtMainQueue>();
        auto held = std::make_shared<bool>(false);
        queue->async([held] { *held = true; });
        queue.reset();
        QCoreApplication::processEvents();
        QVERIFY(!*held);
        QCOMPARE(held.use_count(), 1L);
    }
};

WINDOW_TEST(QtMainQueueTest, QCoreApplication)
#include "qt_main_queue_test.moc"
