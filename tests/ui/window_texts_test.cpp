// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QtTest>

#include "settings/settings_table.h"
#include "ui/window/window_texts.h"
#include "ui/window_test.h"

using document::AnalysisOutcome;
using End = document::AnalysisOutcome::End;
using ui::RunRequest;

namespace {

QString lineFor(const AnalysisOutcome& outcome, const RunRequest& request) {
    return ui::outcomeLine(outcome, request).text;
}

const RunRequest kBatchOf12 = {true, 12, QStringLiteral("/data")};
const RunRequest kSingle = {false, 1, QStringLiteral("/data")};

} // namespace

class WindowTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aBatchEndsWithItsNumbers() {
        QCOMPARE(lineFor({End::finished, 12, 0}, kBatchOf12), QStringLiteral("12 analysed"));
        QCOMPARE(lineFor({End::finished, 12, 1}, kBatchOf12),
                 QStringLiteral("11 analysed, 1 failed; the error log (F8) says why"));
        QCOMPARE(lineFor({End::cancelled, 11, 1}, kBatchOf12),
                 QStringLiteral("10 analysed, 1 failed, 1 skipped; the error log (F8) says why"));
        QCOMPARE(lineFor({End::cancelled, 0, 0}, {true, 0, {}}),
                 QStringLiteral("Stopped before the first patient."));
    }

    void whereTheControlsStayOffTheLineNamesTheWayOut() {
        const QString wayOut = QStringLiteral("Close this document and open it again to analyse.");
        QVERIFY(lineFor({End::finished, 1, 1}, kSingle).endsWith(wayOut));
        QVERIFY(lineFor({End::noPatients, 0, 0}, kBatchOf12).endsWith(wayOut));
        QVERIFY(lineFor({End::noPatients, 0, 0}, kBatchOf12).contains(QStringLiteral("/data")));
        QVERIFY(!lineFor({End::unpaired, 0, 0}, kBatchOf12).contains(wayOut));
    }

    void aSuccessfulSingleRunNeedsNoLine() {
        QCOMPARE(lineFor({End::finished, 1, 0}, kSingle), QString());
    }

    void bothThresholdsAreShownWithWhatTheyMean() {
        settings::MemorySettingsStore settings;
        settings::key::writeFirstRunValues(settings);
        const QString text = ui::thresholdsText(settings);
        QVERIFY(text.contains(QStringLiteral("ND1 threshold: 500")));
        QVERIFY(text.contains(QStringLiteral("ND2 threshold: 10")));
        QVERIFY(text.contains(QStringLiteral("ND *1")));
        QVERIFY(!text.contains(QStringLiteral("below 1")));
    }

    void aThresholdThatCallingWillRepairIsAnnounced() {
        settings::MemorySettingsStore settings;
        settings.setValue(settings::key::kND1Threshold, std::string("0"));
        const QString text = ui::thresholdsText(settings);
        QVERIFY(text.contains(QStringLiteral("becomes 100 at the next call")));
        QVERIFY(text.contains(QStringLiteral("becomes 10 at the next call")));
    }

    void filesOfTheSameNameHaveTitlesOfTheirOwn() {
        QCOMPARE(ui::titleOfFile(QStringLiteral("/data/run 1/mine.vexta")),
                 QStringLiteral("mine.vexta - /data/run 1"));
        QCOMPARE(ui::titleOfFile(QStringLiteral("/data/mine.vexta")),
                 QStringLiteral("mine.vexta - /data"));
    }

    void theMarkOfUnsavedChangesInANameStaysPartOfTheName() {
        QCOMPARE(ui::titleOfFile(QStringLiteral("/data/a[*].vexta")),
                 QStringLiteral("a[*][*].vexta - /data"));
    }

    void theMappedShareIsOfAllReadPairs() {
        QCOMPARE(ui::mappedShare(640112, 812440), QStringLiteral("78.8 % of the read pairs"));
        QCOMPARE(ui::mappedShare(0, 0), QString());
    }
};

WINDOW_TEST(WindowTextsTest, support::NoApplication)
#include "window_texts_test.moc"
