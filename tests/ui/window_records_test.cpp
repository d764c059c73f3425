// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <QFileDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

#include "platform/files.h"
#include "report/run_record.h"
#include "ui/open_window.h"
#include "ui/record_builder.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/notices.h"
#include "ui/window_test.h"

using support::OpenWindow;
using support::PatientBuilder;
using ui::NoticeLine;
using ui::WindowController;

namespace {

QString text(const char* words) {
    return QString::fromUtf8(words);
}

/// The object under "run" of a record's file.
QJsonObject runIn(const std::string& path) {
    const QByteArray json = QByteArray::fromStdString(support::readFile(path));
    return QJsonDocument::fromJson(json).object().value(QLatin1String("run")).toObject();
}

} // namespace

/// The record of a run beside a saved result, as the window writes and finds it.
class WindowRecordsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSavedResultHasTheRecordOfItsRunBesideIt() {
        OpenWindow open;
        ui::setReadsInputsInPlace(true);
        const std::string path = savedAfterRun(open);
        const QJsonObject run = runIn(path + ".record.json");
        QCOMPARE(run.value(QLatin1String("inputMode")).toString(), text("direct"));
        QCOMPARE(run.value(QLatin1String("threads")).toInt(), 2);
        const QJsonArray patients = run.value(QLatin1String("patients")).toArray();
        QCOMPARE(patients.size(), 1);
        QCOMPARE(patients.at(0).toObject().value(QLatin1String("outcome")).toString(),
                 text("analysed"));
        OpenWindow reopened;
        QVERIFY(reopened.document->readFromURL(path, "VEXtAFile"));
        WindowController& window = reopened.show();
        window.takeRecordBeside(path);
        window.saveVEXtAFile(); // waits for the record
        QCoreApplication::processEvents();
        QVERIFY(!window.noticeLine->isVisible());
    }

    void whoWantsNoRecordGetsNone() {
        OpenWindow open;
        ui::setWritesRecords(false);
        const std::string path = savedAfterRun(open);
        QVERIFY(platform::fileExists(path));
        QVERIFY(!platform::fileExists(path + ".record.json"));
    }

    void whereTheRecordCannotBeWrittenNothingIsSaved() {
        OpenWindow open;
        std::filesystem::create_directory(open.dir.file("mine.vexta.record.json"));
        const std::string path = savedAfterRun(open);
        QVERIFY(!platform::fileExists(path));
        QCOMPARE(open.controller->noticeLine->kind(), NoticeLine::Kind::problem);
        QVERIFY(open.controller->noticeLine->text().startsWith(text("The result was not saved: ")));
        QVERIFY(open.controller->unsavedTextField->isVisible());
    }

    void beforeAnyRunThereIsNothingToRecord() {
        OpenWindow open;
        open.openPair(7);
        const std::string path = saved(open.show(), open);
        QVERIFY(platform::fileExists(path));
        QVERIFY(!platform::fileExists(path + ".record.json"));
    }

    void aReopenedResultKeepsItsRecordWhereverItIsSaved() {
        OpenWindow open;
        const std::string path = savedAfterRun(open);
        OpenWindow reopened;
        QVERIFY(reopened.document->readFromURL(path, "VEXtAFile"));
        WindowController& window = reopened.show();
        window.takeRecordBeside(path);
        window.saveVEXtAFile();
        const std::string other = chosen(window, reopened.dir.file("other"));
        QVERIFY(other != path);
        QCOMPARE(support::readFile(other + ".record.json"),
                 support::readFile(path + ".record.json"));
    }

    void aMissingRecordIsToldAsInformation() {
        OpenWindow open;
        const std::string path = reopened(open);
        QCOMPARE(open.controller->noticeLine->kind(), NoticeLine::Kind::information);
        QCOMPARE(open.controller->noticeLine->text(),
                 text("No record lies beside %1.").arg(QString::fromStdString(path)));
    }

    void aRecordOfOtherResultsIsAProblemAndNotKept() {
        OpenWindow other;
        const std::string record = savedAfterRun(other) + ".record.json";
        OpenWindow open;
        open.dir.write("saved.vexta.record.json", support::readFile(record));
        reopened(open);
        QCOMPARE(open.controller->noticeLine->kind(), NoticeLine::Kind::problem);
        QVERIFY(open.controller->noticeLine->text().endsWith(
            text(" is that of another document and is not used.")));
        open.controller->saveVEXtAFile();
        QVERIFY(!platform::fileExists(chosen(*open.controller, open.dir.file("other")) +
                                      ".record.json"));
    }

    void anUnreadableRecordIsAProblem() {
        OpenWindow open;
        open.dir.write("saved.vexta.record.json", "{\"run\": ");
        reopened(open);
        QCOMPARE(open.controller->noticeLine->kind(), NoticeLine::Kind::problem);
        QVERIFY(open.controller->noticeLine->text().endsWith(text(" is no record of a run.")));
    }

private:
    /// Types the path into the open save panel and waits for what comes of it. Returns the path of
    /// the document.
    static std::string chosen(const WindowController& window, const std::string& path) {
        auto* panel = window.mainWindow->findChild<QFileDialog*>(text("savePanel"));
        if (panel == nullptr) {
            qFatal("the save panel did not open");
        }
        window.noticeLine->clear();
        auto* name = panel->findChild<QLineEdit*>(text("fileNameEdit"));
        name->setText(QString::fromStdString(path));
        QTest::keyClick(name, Qt::Key_Return);
        if (!QTest::qWaitFor([&window] { return window.noticeLine->isVisible(); })) {
            qFatal("nothing came of saving");
        }
        return path + ".vexta";
    }
    static std::string saved(WindowController& window, const OpenWindow& open) {
        window.saveVEXtAFile();
        return chosen(window, open.dir.file("mine"));
    }
    static std::string savedAfterRun(OpenWindow& open) {
        open.openPair(7);
        WindowController& window = open.show();
        window.analyze();
        if (!QTest::qWaitFor([&window] { return !window.analysisIsRunning(); })) {
            qFatal("the run did not end");
        }
        return saved(window, open);
    }
    /// A saved result in its window, with whatever lies beside it.
    static std::string reopened(OpenWindow& open) {
        open.openSaved({PatientBuilder("1").patient}, 0);
        std::string path = open.dir.file("saved.vexta");
        const WindowController& window = open.show();
        open.controller->takeRecordBeside(path);
        if (!QTest::qWaitFor([&window] { return window.noticeLine->isVisible(); })) {
            qFatal("nothing was said of the record");
        }
        return path;
    }
};

WINDOW_TEST(WindowRecordsTest, QApplication)
#include "window_records_test.moc"
