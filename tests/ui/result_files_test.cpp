// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <QtTest>

#include "platform/files.h"
#include "support/temp_dir.h"
#include "ui/window/result_files.h"
#include "ui/window_test.h"

class ResultFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theRecordLiesBesideTheDocument() {
        const support::TempDir dir;
        QVERIFY(ui::writeResultFiles(dir.file("a.vexta"), {"document", "record"}).ok());
        QCOMPARE(support::readFile(dir.file("a.vexta")), std::string("document"));
        QCOMPARE(support::readFile(dir.file("a.vexta.record.json")), std::string("record"));
    }

    void bothReplaceWhatWasThere() {
        const support::TempDir dir;
        dir.write("a.vexta", "old document");
        dir.write("a.vexta.record.json", "old record");
        QVERIFY(ui::writeResultFiles(dir.file("a.vexta"), {"document", "record"}).ok());
        QCOMPARE(support::readFile(dir.file("a.vexta")), std::string("document"));
        QCOMPARE(support::readFile(dir.file("a.vexta.record.json")), std::string("record"));
    }

    void withoutARecordTheDocumentStandsAlone() {
        const support::TempDir dir;
        QVERIFY(ui::writeResultFiles(dir.file("a.vexta"), {"document", ""}).ok());
        QVERIFY(!platform::fileExists(dir.file("a.vexta.record.json")));
    }

    void whereTheRecordsPlaceIsTakenTheDocumentStaysAsItWas() {
        const support::TempDir dir;
        dir.write("a.vexta", "old document");
        std::filesystem::create_directory(dir.file("a.vexta.record.json"));
        const platform::Status written =
            ui::writeResultFiles(dir.file("a.vexta"), {"document", "record"});
        QVERIFY(!written);
        QVERIFY(written.error().message.find("a.vexta.record.json") != std::string::npos);
        QCOMPARE(support::readFile(dir.file("a.vexta")), std::string("old document"));
        QCOMPARE(filesIn(dir), std::ptrdiff_t(2));
    }

    void whereTheDocumentCannotBeWrittenThereIsNoRecord() {
        const support::TempDir dir;
        QVERIFY(!ui::writeResultFiles(dir.file("gone/a.vexta"), {"document", "record"}));
        QCOMPARE(filesIn(dir), std::ptrdiff_t(0));
    }

private:
    static std::ptrdiff_t filesIn(const support::TempDir& dir) {
        const std::filesystem::directory_iterator first(dir.path());
        return std::distance(begin(first), end(first));
    }
};

WINDOW_TEST(ResultFilesTest, support::NoApplication)
#include "result_files_test.moc"
