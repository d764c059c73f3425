// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a user of the desktop application waits for, measured at its real windows on the offscreen
// platform; bench/desktop calls it and makes the inputs.
//   desktop_bench start SINCE [FILE]    milliseconds from SINCE (date +%s%N) to a usable window
//   desktop_bench scroll                repainting of a saved result of 96 patients with 40 rows
//   desktop_bench run copies|direct FILE    for how long the window does not answer during a run
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <vector>

#include <QAbstractItemView>
#include <QApplication>
#include <QEventLoop>
#include <QScrollBar>
#include <QTimer>

#include "ui/application/vexta_application.h"
#include "ui/real_application.h"
#include "ui/record_builder.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/desktop_preferences.h"

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;
using support::RealApplication;

constexpr int kPatients = 96;
constexpr int kRows = 40;

double millisecondsSince(Clock::time_point begin) {
    return Milliseconds(Clock::now() - begin).count();
}

void print(const char* what, double value, const char* unit, int decimals = 1) {
    std::printf("%-58s %8.*f %s\n", what, decimals, value, unit);
}

void printTimes(const std::string& what, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    print((what + ", median").c_str(), times.at(times.size() / 2), "ms");
    print((what + ", longest").c_str(), times.back(), "ms");
}

// --- Start

/// Ends the application when something was painted and nothing is left to do.
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            qApp->removeEventFilter(this);
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        }
        return QObject::eventFilter(watched, event);
    }
};

void measureStart(const std::string& since, const QStringList& files) {
    RealApplication application;
    FirstPaint firstPaint;
    qApp->installEventFilter(&firstPaint);
    application.delegate.applicationDidFinishLaunching(files);
    QCoreApplication::exec();
    // The clock of date(1), since the time to load the program counts as well.
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    std::printf("%.0f\n", Milliseconds(now - std::chrono::nanoseconds(std::stoll(since))).count());
}

// --- Scrolling

std::shared_ptr<run::SummaryForEachPatient> patientOf(int number) {
    support::PatientBuilder builder(std::to_string(number));
    builder.counts(1'000'000, 800'000);
    for (int row = 1; row <= kRows; ++row) {
        const std::string name = "GENE" + std::to_string(row);
        const bool found = (number + row) % 7 == 0;
        builder.germlineDNA(name, found ? "wt/mut" : "wt/wt");
        builder.somaticDNA(name, found ? "Positive" : "Negative", found ? "6.4%" : "");
        builder.germlineRNA(name, found ? "RNA degraded" : "RNA not degraded", "900");
        builder.somaticRNA(name, found ? "Positive" : "Negative", "12");
    }
    return builder.patient;
}

run::PatientList manyPatients() {
    run::PatientList patients(std::in_place);
    for (int number = 1; number <= kPatients; ++number) {
        patients->append(patientOf(number));
    }
    return patients;
}

/// Times of scrolling from the first row to the last, row by row.
std::vector<double> scrollThrough(const QAbstractItemView& table) {
    std::vector<double> times;
    QScrollBar& bar = *table.verticalScrollBar();
    support::require(bar.maximum() > 0, "the table has nothing to scroll");
    const int rowHeight = table.visualRect(table.model()->index(0, 0)).height();
    const int step = table.verticalScrollMode() == QAbstractItemView::ScrollPerItem ? 1 : rowHeight;
    for (int place = 0; place <= bar.maximum(); place += step) {
        const auto begin = Clock::now();
        bar.setValue(place);
        table.viewport()->repaint();
        times.push_back(millisecondsSince(begin));
    }
    return times;
}

std::vector<double> goThrough(const ui::WindowController& window) {
    std::vector<double> times;
    for (int row = 0; row < kPatients; ++row) {
        const auto begin = Clock::now();
        window.patientsNoTableView->selectRow(row);
        QCoreApplication::processEvents();
        window.mainWindow->repaint();
        times.push_back(millisecondsSince(begin));
    }
    return times;
}

void measureScrolling(const support::TempDir& dir) {
    RealApplication application;
    const std::string saved = support::saveResult(manyPatients(), dir.file("many.vexta"));
    const auto begin = Clock::now();
    const ui::WindowController& window = application.open(saved);
    print("opening the result of 96 patients with 4 x 40 rows", millisecondsSince(begin), "ms");
    QTest::qWait(100);
    printTimes("a step through the 96 patients", scrollThrough(*window.patientsNoTableView));
    printTimes("a step through the 40 rows of a table",
               scrollThrough(*window.somaticDNAResultTableView));
    printTimes("selecting the next patient", goThrough(window));
}

// --- A run

/// Asks every 10 ms to be called, as a user's keys and clicks would, and notes how late it was.
class Heartbeat {
public:
    Heartbeat() {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { beat(); });
        m_timer.start(10);
    }
    void beat() {
        m_gaps.push_back(millisecondsSince(m_last));
        m_last = Clock::now();
    }
    const std::vector<double>& gaps() const { return m_gaps; }

private:
    QTimer m_timer;
    Clock::time_point m_last = Clock::now();
    std::vector<double> m_gaps;
};

void measureRun(const std::string& mode, const std::string& read1) {
    ui::setReadsInputsInPlace(mode == "direct");
    RealApplication application;
    ui::WindowController& window = application.open(read1);
    QEventLoop loop;
    QObject::connect(&window, &ui::WindowController::analysisOver, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    Heartbeat heartbeat;
    const auto begin = Clock::now();
    window.analyze();
    if (window.analysisIsRunning()) {
        loop.exec();
    }
    heartbeat.beat();
    const double seconds = millisecondsSince(begin) / 1000;
    const auto& patients = archive::orEmpty(window.mainRoutine->summaryForEachPatientMutAr);
    support::require(patients.size() == 1, "the run failed");
    print("pairs", static_cast<double>(patients[0]->totalNumberOfReads), "", 0);
    print("the whole run", seconds, "s");
    printTimes("between two answers (10 ms wanted)", heartbeat.gaps());
}

// --- Choice

int usage() {
    std::cerr << "usage: desktop_bench start SINCE [FILE] | scroll | run copies|direct FILE\n";
    return 2;
}

int measure(const std::vector<std::string>& arguments) {
    const support::ProgramHome home;
    int argc = 1;
    char name[] = "desktop_bench";
    char* argv[] = {name, nullptr};
    const ui::VextaApplication application(argc, argv);
    const std::string what = arguments.empty() ? "" : arguments[0];
    if (what == "start" && (arguments.size() == 2 || arguments.size() == 3)) {
        QStringList files;
        for (std::size_t place = 2; place < arguments.size(); ++place) {
            files.append(QString::fromStdString(arguments[place]));
        }
        measureStart(arguments[1], files);
    } else if (what == "scroll" && arguments.size() == 1) {
        measureScrolling(home.dir);
    } else if (what == "run" && arguments.size() == 3) {
        measureRun(arguments[1], arguments[2]);
    } else {
        return usage();
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return measure({argv + 1, argv + argc});
    } catch (const std::exception& failure) {
        std::cerr << "desktop_bench: " << failure.what() << '\n';
        return 1;
    }
}
