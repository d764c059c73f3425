// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// vexta-screenshots SCENE PICTURE: one picture of the program's real windows, which opened and
// analysed real files. See scripts/screenshots.
#include <algorithm>
#include <functional>
#include <iostream>
#include <map>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QToolButton>

#include "settings/settings_table.h"
#include "ui/application/information_windows.h"
#include "ui/application/preferences_window.h"
#include "ui/application/start_window.h"
#include "ui/application/vexta_application.h"
#include "ui/real_application.h"
#include "ui/tables/record_table_view.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window/run_controls.h"
#include "ui/window/warnings.h"

namespace fs = std::filesystem;
using support::RealApplication;
using support::require;
using ui::WindowController;

namespace {

constexpr int kPatience = 600'000; // milliseconds; a machine may be busy
constexpr int kSmallest = 0;       // a PNG's "quality" is only how little it is compressed
constexpr const char* kFirstRead1 = "DemoA_S1_L001_R1_001.fastq.gz";

/// What the scenes are made with.
struct Stage {
    /// A copy of the sample run, as runs write beside their inputs.
    std::string sampleRun() const {
        const std::string copy = dir.file("run42");
        fs::copy(VEXTA_SOURCE_DIR "/examples/sample-run", copy);
        return copy;
    }

    const support::TempDir& dir;
    RealApplication application;
};

// --- Pictures

/// The window, and what lies above it where it lies, even where that is beyond its edge.
QPixmap pictureOf(QWidget& window, const QList<QWidget*>& above = {}) {
    QTest::qWait(200); // the last of the layout, and the popover's fading in
    const auto placeOf = [](const QWidget& widget) {
        return QRect(widget.mapToGlobal(QPoint()), widget.size());
    };
    QRect all = placeOf(window);
    for (const QWidget* panel : above) {
        all |= placeOf(*panel);
    }
    QPixmap picture(all.size() * window.devicePixelRatioF());
    picture.setDevicePixelRatio(window.devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    for (QWidget* widget : QList<QWidget*>{&window} + above) {
        const QRect place = placeOf(*widget).translated(-all.topLeft());
        painter.drawPixmap(place.topLeft(), widget->grab());
        painter.setPen(widget->palette().color(QPalette::Mid));
        painter.drawRect(place.adjusted(0, 0, -1, -1));
    }
    return picture;
}

QPixmap pictureOf(const WindowController& window) {
    return pictureOf(*window.mainWindow);
}

// --- Steps

WindowController& analyseAll(Stage& stage, const std::string& read1) {
    WindowController& window = stage.application.open(read1);
    window.analyzeAll();
    support::waitForEndOfRun(window, kPatience);
    return window;
}

WindowController& analysedSampleRun(Stage& stage) {
    return analyseAll(stage, stage.sampleRun() + "/" + kFirstRead1);
}

void selectPatient(const WindowController& window, int row) {
    window.patientsNoTableView->selectRow(row);
    window.patientsNoTableView->scrollTo(window.patientsNoTableView->model()->index(row, 0));
}

const run::PatientList& patientsOf(const WindowController& window) {
    return window.mainRoutine->summaryForEachPatientMutAr;
}

void openPopover(const WindowController& window, ui::RecordTableView& table, int row) {
    table.setFocus();
    table.selectRow(row);
    QTest::keyClick(&table, Qt::Key_Return);
    require(window.popover->isVisible(), "the popover did not open");
}

QPalette darkPalette() {
    QPalette palette(QColor(53, 53, 57), QColor(42, 42, 46));
    palette.setColor(QPalette::Base, QColor(30, 30, 33));
    palette.setColor(QPalette::AlternateBase, QColor(38, 38, 42));
    palette.setColor(QPalette::Highlight, QColor(38, 79, 120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

// --- Scenes

QPixmap startWindow(Stage& stage) {
    const std::string runDirectory = stage.sampleRun();
    for (const char* name : {"DemoD_S10_L001_R1_001.fastq.gz", kFirstRead1}) {
        stage.application.delegate.recentFiles().add(
            QString::fromStdString(runDirectory + "/" + name));
    }
    stage.application.delegate.applicationDidFinishLaunching({});
    return pictureOf(stage.application.delegate.startWindow());
}

QPixmap emptyDocument(Stage& stage) {
    return pictureOf(stage.application.open(stage.sampleRun() + "/" + kFirstRead1));
}

/// Patients with the same reads, those of one patient of the sample run many times over: enough
/// for a pace and a forecast.
std::string longRun(const Stage& stage) {
    constexpr int kTimes = 400;
    constexpr int kSamples = 12;
    const std::string from = stage.sampleRun();
    const std::string to = stage.dir.file("run43");
    fs::create_directory(to);
    for (const std::string read : {"1", "2"}) {
        const std::string end = "_L001_R" + read + "_001.fastq.gz";
        const std::string once = support::readFile(from + "/DemoB_S2" + end);
        const std::string first = to + "/Patient1_S1" + end;
        std::ofstream out(first, std::ios::binary);
        for (int time = 0; time < kTimes; ++time) {
            out << once;
        }
        out.close();
        require(bool(out), "cannot write " + first);
        for (int sample = 2; sample <= kSamples; ++sample) {
            const std::string number = std::to_string(sample);
            fs::create_hard_link(first, to + "/Patient" + number + "_S" + number + end);
        }
    }
    return to + "/Patient1_S1_L001_R1_001.fastq.gz";
}

/// Whether pace and time left are on show, some patients into the run.
bool isWellUnderWay(const WindowController& window) {
    const auto labels = window.runProgressView->findChildren<QLabel*>();
    return patientsOf(window) && patientsOf(window)->size() >= 3 &&
           std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
               return label->text().contains(QStringLiteral("pairs/s")) &&
                      label->text().endsWith(QStringLiteral(" left"));
           });
}

QPixmap runningBatch(Stage& stage) {
    ui::setReadsInputsInPlace(true);
    WindowController& window = stage.application.open(longRun(stage));
    window.analyzeAll();
    const auto isTime = [&window] { return isWellUnderWay(window) || !window.analysisIsRunning(); };
    require(QTest::qWaitFor(isTime, kPatience) && window.analysisIsRunning(),
            "the run was over too soon");
    const QPixmap picture = window.mainWindow->grab(); // now: the pace is on show only at times
    window.cancelOperation(nullptr);
    support::waitForEndOfRun(window, kPatience);
    return picture;
}

QPixmap finishedBatch(Stage& stage) {
    const WindowController& window = analysedSampleRun(stage);
    selectPatient(window, 1);
    openPopover(window, *window.somaticDNAResultTableView, 1);
    return pictureOf(*window.mainWindow, {window.popover});
}

QPixmap darkBatch(Stage& stage) {
    QApplication::setPalette(darkPalette());
    return finishedBatch(stage);
}

QPixmap midiWindow(Stage& stage) {
    stage.application.services.documentServices().run.settings.setValue(
        settings::key::kWindowSizeMidi, true);
    return finishedBatch(stage);
}

/// The patients of the sample run, many times over under numbers of their own.
QPixmap manyPatients(Stage& stage) {
    constexpr std::size_t kPatients = 96;
    const run::PatientList& analysed = patientsOf(analysedSampleRun(stage));
    run::PatientList many(std::in_place);
    for (std::size_t place = 0; place < kPatients; ++place) {
        const auto patient = (*analysed)[place * 7 / 3 % analysed->size()]->copyWithZone();
        patient->patientNo = std::to_string(place + 1);
        many->append(patient);
    }
    const WindowController& window =
        stage.application.open(support::saveResult(many, stage.dir.file("run96.vexta")));
    selectPatient(window, 57);
    return pictureOf(window);
}

QPixmap reopenedResult(Stage& stage) {
    const run::PatientList& analysed = patientsOf(analysedSampleRun(stage));
    const WindowController& window =
        stage.application.open(support::saveResult(analysed, stage.dir.file("run42.vexta")));
    selectPatient(window, 2);
    return pictureOf(window);
}

QPixmap failedPatient(Stage& stage) {
    const std::string directory = stage.sampleRun();
    std::ofstream(directory + "/DemoC_S3_L001_R2_001.fastq") << "@another\nACGT\n+\nIIII\n";
    const WindowController& window = analyseAll(stage, directory + "/" + kFirstRead1);
    selectPatient(window, 1);
    require(window.errorLogWindow->isVisible(), "the error log did not come up");
    const QSize room = window.mainWindow->size() - window.errorLogWindow->size();
    window.errorLogWindow->move(window.mainWindow->mapToGlobal(QPoint(room.width() / 2, 240)));
    return pictureOf(*window.mainWindow, {window.errorLogWindow});
}

/// The sample run with an empty control, a read 2 that was cut short, a lane that nobody reads and
/// a second sample of one number.
const WindowController& warnedBatch(Stage& stage) {
    const std::string directory = stage.sampleRun();
    for (const char* read : {"1", "2"}) {
        std::ofstream(directory + "/Water_S4_L001_R" + read + "_001.fastq").close();
        const std::string end = std::string("_L001_R") + read + "_001.fastq.gz";
        fs::copy(directory + "/DemoD_S10" + end, directory + "/Other_S10" + end);
    }
    fs::resize_file(directory + "/DemoC_S3_L001_R2_001.fastq", 0);
    fs::copy(directory + "/DemoB_S2_L001_R1_001.fastq.gz",
             directory + "/DemoB_S2_L002_R1_001.fastq.gz");
    const WindowController& window = analyseAll(stage, directory + "/" + kFirstRead1);
    selectPatient(window, 3);
    return window;
}

QPixmap warnings(Stage& stage) {
    const WindowController& window = warnedBatch(stage);
    window.warningLine->findChild<QToolButton*>(QStringLiteral("noticeDetails"))->click();
    auto* list = window.mainWindow->findChild<ui::WarningsWindow*>();
    const QSize room = window.mainWindow->size() - list->size();
    list->move(window.mainWindow->mapToGlobal(QPoint(room.width() / 2, 260)));
    return pictureOf(*window.mainWindow, {list});
}

QPixmap notAssessable(Stage& stage) {
    return pictureOf(warnedBatch(stage));
}

QPixmap darkNotAssessable(Stage& stage) {
    QApplication::setPalette(darkPalette());
    return notAssessable(stage);
}

QPixmap about(Stage&) {
    const auto window =
        ui::makeAboutWindow(platform::resourcePath("ReferenceNucleotideSequence", "txt").value());
    window->show();
    return pictureOf(*window);
}

/// Makes a text of every row longer than any column.
template <class Record>
void lengthen(const archive::ListOf<Record>& rows, archive::Text Record::*text) {
    for (const auto& row : archive::orEmpty(rows)) {
        (*row.*text)->append("_with_a_name_that_goes_on_for_longer_than_any_column_is_wide");
    }
}

QPixmap longestNames(Stage& stage) {
    const auto patient = (*patientsOf(analysedSampleRun(stage)))[1]->copyWithZone();
    const std::string name(180, 'x');
    patient->file1 = name + "_S2_L001_R1_001.fastq.gz";
    patient->file2 = name + "_S2_L001_R2_001.fastq.gz";
    patient->patientNo = "1000";
    lengthen(patient->somaticDNAResultMutAr, &calling::ReportSomaticDNA::areaSearched);
    lengthen(patient->germlineDNAResultMutAr, &calling::ReportGermlineDNA::areaSearched);
    lengthen(patient->somaticRNAResultMutAr, &calling::ReportSomaticRNA::gene);
    const std::string saved = stage.dir.file(name + ".vexta");
    const WindowController& window = stage.application.open(
        support::saveResult(run::PatientList(run::PatientList::value_type::of({patient})), saved));
    return pictureOf(window);
}

QPixmap keyboardFocus(Stage& stage) {
    const WindowController& window = analysedSampleRun(stage);
    selectPatient(window, 3);
    QTest::keyClick(window.mainWindow, Qt::Key_2, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    return pictureOf(window);
}

QPixmap preferences(Stage& stage) {
    stage.application.delegate.showPreferenceWindow();
    return pictureOf(stage.application.delegate.preferenceWindow());
}

const std::map<std::string, std::function<QPixmap(Stage&)>> kScenes = {
    {"start", startWindow},
    {"empty", emptyDocument},
    {"running", runningBatch},
    {"finished", finishedBatch},
    {"dark", darkBatch},
    {"midi", midiWindow},
    {"many", manyPatients},
    {"reopened", reopenedResult},
    {"failed", failedPatient},
    {"longest", longestNames},
    {"focus", keyboardFocus},
    {"preferences", preferences},
    {"warnings", warnings},
    {"not-assessable", notAssessable},
    {"dark-not-assessable", darkNotAssessable},
    {"about", about}};

int makePicture(int argc, char** argv) {
    const support::ProgramHome home;
    const ui::VextaApplication application(argc, argv);
    const auto scene = argc == 3 ? kScenes.find(argv[1]) : kScenes.end();
    if (scene == kScenes.end()) {
        std::cerr << "usage: vexta-screenshots SCENE PICTURE, where SCENE is one of";
        for (const auto& [name, make] : kScenes) {
            std::cerr << ' ' << name;
        }
        std::cerr << '\n';
        return 2;
    }
    Stage stage{home.dir, {}};
    require(scene->second(stage).save(QString::fromLocal8Bit(argv[2]), "PNG", kSmallest),
            std::string("cannot write ") + argv[2]);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return makePicture(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "vexta-screenshots: " << failure.what() << '\n';
        return 1;
    }
}
