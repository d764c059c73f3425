// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QFile>
#include <QMimeDatabase>
#include <QStringList>
#include <QtTest>

#include "ui/window_test.h"

/// What a desktop takes a file for, with our types among those that it knows: they are in the data
/// directory of this test's home.
class MimeTypesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void namesTellTheTypes_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("type");
        QTest::newRow("result") << "run.vexta"
                                << "application/x-vexta-result";
        QTest::newRow("reads") << "P_S1_L001_R1_001.fastq"
                               << "text/x-fastq";
        QTest::newRow("compressed") << "P_S1_L001_R1_001.fastq.gz"
                                    << "application/x-fastq-gzip";
    }
    void namesTellTheTypes() {
        QFETCH(QString, name);
        QTEST(QMimeDatabase().mimeTypeForFile(name, QMimeDatabase::MatchExtension).name(), "type");
    }

    void aResultIsKnownByItsContentAlone() {
        QCOMPARE(typeOf(bytesOf(QStringLiteral("full.vexta"))),
                 QStringLiteral("application/x-vexta-result"));
    }

    void anotherBinaryPropertyListIsNoResult() {
        QByteArray bytes = bytesOf(QStringLiteral("full.vexta"));
        bytes.replace("$archiver", "$archives");
        QVERIFY(typeOf(bytes) != QStringLiteral("application/x-vexta-result"));
    }

    void compressedReadsOpenWithWhatOpensArchivesAsWell() {
        const QMimeType type =
            QMimeDatabase().mimeTypeForName(QStringLiteral("application/x-fastq-gzip"));
        QVERIFY(type.inherits(QStringLiteral("application/gzip")));
    }

    void theDesktopEntryOpensEachType() {
        QFile entry(QStringLiteral(VEXTA_SOURCE_DIR "/packaging/vexta-desktop.desktop"));
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QByteArray text = entry.readAll();
        for (const char* type :
             {"application/x-vexta-result", "text/x-fastq", "application/x-fastq-gzip"}) {
            QVERIFY2(text.contains(QByteArray(type) + ";"), type);
        }
    }

private:
    static QByteArray bytesOf(const QString& document) {
        QFile file(QStringLiteral(VEXTA_SOURCE_DIR "/fuzz/corpus/result_document/") + document);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QString typeOf(const QByteArray& bytes) {
        return QMimeDatabase().mimeTypeForData(bytes).name();
    }
};

WINDOW_TEST(MimeTypesTest, QCoreApplication)
#include "mime_types_test.moc"
