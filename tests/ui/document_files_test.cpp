// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <QtTest>

#include "support/temp_dir.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/document_files.h"
#include "ui/window_test.h"

namespace {

std::string keyOf(const std::string& path) {
    return ui::documentFileAt(path).key;
}

} // namespace

class DocumentFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theExtensionVextaMeansASavedResult() {
        QCOMPARE(ui::documentTypeOf("/a/b.vexta"), std::string("VEXtAFile"));
        QCOMPARE(ui::documentTypeOf("/a/B.VEXTA"), std::string("VEXtAFile"));
        QCOMPARE(ui::documentTypeOf("/a/b_R1_001.fastq.gz"), std::string("FASTQ"));
        QCOMPARE(ui::documentTypeOf("/a/vexta"), std::string("FASTQ"));
    }

    void eitherFileOfAPairIsTheSameDocument() {
        const support::TempDir dir;
        const std::string read1 = dir.write("P_S1_L001_R1_001.fastq.gz", "");
        const std::string read2 = dir.write("P_S1_L001_R2_001.fastq", "");
        QCOMPARE(keyOf(read2), keyOf(read1));
        QVERIFY(!keyOf(read1).empty());
    }

    void aFileOfReadsComesWithItsMateAndASavedResultWithNone() {
        const support::TempDir dir;
        dir.write("P_S1_L001_R1_001.fastq.gz", "");
        const auto reads = ui::documentFileAt(dir.write("P_S1_L001_R2_001.fastq", ""));
        QVERIFY(reads.reads.paired);
        QCOMPARE(reads.reads.file1.value(), std::string("P_S1_L001_R1_001.fastq.gz"));
        QCOMPARE(reads.reads.file2.value(), std::string("P_S1_L001_R2_001.fastq"));
        QCOMPARE(reads.reads.directory, dir.path());
        const auto result = ui::documentFileAt(dir.file("P_S1_L001_R1_001.vexta"));
        QCOMPARE(result.type, std::string("VEXtAFile"));
        QVERIFY(!result.reads.file1);
    }

    void linksToTheFolderOrTheResultAreTheSameDocument() {
        const support::TempDir dir;
        std::filesystem::create_directory(dir.file("run"));
        const std::string read1 = dir.write("run/P_S1_L001_R1_001.fastq", "");
        dir.write("run/P_S1_L001_R2_001.fastq", "");
        const std::string result = dir.write("r.vexta", "");
        std::filesystem::create_directory_symlink(dir.file("run"), dir.file("link"));
        std::filesystem::create_symlink(result, dir.file("s.vexta"));
        QCOMPARE(keyOf(dir.file("link/P_S1_L001_R2_001.fastq")), keyOf(read1));
        QCOMPARE(keyOf(dir.file("s.vexta")), keyOf(result));
    }

    void twoPairsAreTwoDocuments() {
        const support::TempDir dir;
        for (const char* name :
             {"P_S1_R1_1.fastq", "P_S1_R2_1.fastq", "P_S2_R1_1.fastq", "P_S2_R2_1.fastq"}) {
            dir.write(name, "");
        }
        QVERIFY(keyOf(dir.file("P_S1_R1_1.fastq")) != keyOf(dir.file("P_S2_R1_1.fastq")));
    }

    void aFileWithoutAMateIsNoDocument() {
        const support::TempDir dir;
        QCOMPARE(keyOf(dir.write("P_S1_R1_1.fastq", "")), std::string());
        QCOMPARE(keyOf(dir.write("notes.txt", "")), std::string());
    }

    void aFolderStandsForTheFirstPairOfItsBatch() {
        const support::TempDir dir;
        for (const char* name :
             {"a_S10_L001_R1_001.fastq", "a_S10_L001_R2_001.fastq", "b_S2_L001_R1_001.fastq",
              "b_S2_L001_R2_001.fastq", "c_S1_L001_R2_001.fastq", "_d_S1_L001_R1_001.fastq"}) {
            dir.write(name, "");
        }
        QCOMPARE(ui::fileStandingFor(dir.path()), dir.file("b_S2_L001_R1_001.fastq"));
    }

    void aFolderWithoutABatchStandsForItsFirstPairByName() {
        const support::TempDir dir;
        for (const char* name : {"b_R1_x.fastq", "b_R2_x.fastq", "c_R1_x.fastq", "c_R2_x.fastq",
                                 "a_R1_x.fastq", "_a_R1_x.fastq", "_a_R2_x.fastq"}) {
            dir.write(name, "");
        }
        QCOMPARE(ui::fileStandingFor(dir.path()), dir.file("b_R1_x.fastq"));
    }

    void everythingElseStandsForItself() {
        const support::TempDir dir;
        const std::string file = dir.write("P_S1_R1_1.fastq", "");
        QCOMPARE(ui::fileStandingFor(file), file);
        QCOMPARE(ui::fileStandingFor(dir.path()), dir.path());
        QCOMPARE(ui::fileStandingFor(dir.file("gone")), dir.file("gone"));
    }

    void argumentsArePathsOrFileUrls() {
        QCOMPARE(ui::pathOfArgument(QStringLiteral("/a/b%20c")), QStringLiteral("/a/b%20c"));
        QCOMPARE(ui::pathOfArgument(QStringLiteral("file:///a/b%20c")), QStringLiteral("/a/b c"));
        QCOMPARE(ui::pathOfArgument(QStringLiteral("/a/b/")), QStringLiteral("/a/b"));
        QVERIFY(ui::pathOfArgument(QStringLiteral("x.vexta")).endsWith(QStringLiteral("/x.vexta")));
        QVERIFY(ui::pathOfArgument(QStringLiteral("x.vexta")).startsWith(QLatin1Char('/')));
    }

    void toolTipsShowMarkupAsItStands() {
        QCOMPARE(ui::plainToolTip(QStringLiteral("a & b")), QStringLiteral("a & b"));
        QCOMPARE(ui::plainToolTip(QStringLiteral("<b>a</b>")),
                 QStringLiteral("<qt>&lt;b&gt;a&lt;/b&gt;"));
    }
};

WINDOW_TEST(DocumentFilesTest, QApplication)
#include "document_files_test.moc"
