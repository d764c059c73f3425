// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QtTest>

#include "ui/record_builder.h"
#include "ui/tables/result_rows.h"
#include "ui/window_test.h"

using support::PatientBuilder;
using ui::CallShape;
using ui::ResultTable;
using ui::ResultTone;

Q_DECLARE_METATYPE(ui::ResultTone)
Q_DECLARE_METATYPE(ui::CallShape)

namespace {

QString text(const char* words) {
    return QString::fromUtf8(words);
}

ui::ResultCell cell(const QString& words) {
    return ui::cellOf(words.toStdString());
}

/// A row of these texts, the last cells empty.
ui::ResultRow row(const QStringList& texts) {
    ui::ResultRow made;
    for (int i = 0; i < texts.size(); ++i) {
        made[static_cast<std::size_t>(i)] = cell(texts[i]);
    }
    return made;
}

QStringList textsOf(const ui::ResultRow& row) {
    QStringList texts;
    for (const ui::ResultCell& cell : row) {
        texts.append(cell.text);
    }
    return texts;
}

std::vector<ui::ResultRow> rowsOf(ResultTable table, const PatientBuilder& built) {
    return ui::resultRows(table, built.patient.get());
}

} // namespace

/// What the rows of a patient show, without a window.
class ResultRowsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCellsToneFollowsItsText_data() {
        QTest::addColumn<QString>("word");
        QTest::addColumn<ResultTone>("tone");
        QTest::newRow("negative") << text("Negative") << ResultTone::clear;
        QTest::newRow("positive") << text("Positive") << ResultTone::finding;
        QTest::newRow("degraded") << text("RNA degraded") << ResultTone::finding;
        QTest::newRow("not degraded") << text("RNA not degraded") << ResultTone::clear;
        QTest::newRow("control") << text("Control Not Working") << ResultTone::controlFault;
        QTest::newRow("not detected") << text("Not Detected") << ResultTone::clear;
        QTest::newRow("undecided") << text("ND *1") << ResultTone::plain;
        QTest::newRow("other case") << text("positive") << ResultTone::plain;
        QTest::newRow("longer") << text("Positive ") << ResultTone::plain;
        QTest::newRow("empty") << QString() << ResultTone::plain;
    }
    void aCellsToneFollowsItsText() {
        QFETCH(QString, word);
        QFETCH(ResultTone, tone);
        for (const ResultTable table :
             {ResultTable::somaticDNA, ResultTable::germlineRNA, ResultTable::somaticRNA}) {
            QCOMPARE(ui::toneOfCell(table, cell(word)), tone);
        }
        QCOMPARE(ui::toneOfCell(ResultTable::germlineDNA, cell(word)), ResultTone::plain);
    }

    void controlNotWorkingIsOrangeInGermlineRNAAndBlackInGermlineDNA() {
        const ui::ResultCell words = cell(text("Control Not Working"));
        QCOMPARE(ui::toneOfCell(ResultTable::germlineRNA, words), ResultTone::controlFault);
        QCOMPARE(ui::toneOfCell(ResultTable::germlineDNA, words), ResultTone::plain);
    }

    void everyCallHasAShapeBesideItsColour_data() {
        QTest::addColumn<QString>("call");
        QTest::addColumn<CallShape>("somatic");
        QTest::addColumn<CallShape>("germline");
        QTest::newRow("positive") << text("Positive") << CallShape::triangle
                                  << CallShape::questionDiamond;
        QTest::newRow("negative") << text("Negative") << CallShape::circle
                                  << CallShape::questionDiamond;
        QTest::newRow("control") << text("Control Not Working") << CallShape::square
                                 << CallShape::questionDiamond;
        QTest::newRow("ND *1") << text("ND *1") << CallShape::questionDiamond
                               << CallShape::questionDiamond;
        QTest::newRow("wt/wt") << text("wt/wt") << CallShape::questionDiamond
                               << CallShape::hollowDiamond;
        QTest::newRow("wt/mut") << text("wt/mut") << CallShape::questionDiamond
                                << CallShape::halfDiamond;
        QTest::newRow("mut/mut") << text("mut/mut") << CallShape::questionDiamond
                                 << CallShape::filledDiamond;
        QTest::newRow("none") << QString() << CallShape::none << CallShape::none;
    }
    void everyCallHasAShapeBesideItsColour() {
        QFETCH(QString, call);
        QFETCH(CallShape, somatic);
        QFETCH(CallShape, germline);
        QCOMPARE(ui::shapeOfCell(ResultTable::somaticDNA, ui::kCallColumn, cell(call)), somatic);
        QCOMPARE(ui::shapeOfCell(ResultTable::germlineDNA, ui::kCallColumn, cell(call)), germline);
    }

    void aTonedWordOutsideTheCallColumnHasItsShapeToo() {
        QCOMPARE(ui::shapeOfCell(ResultTable::somaticDNA, 0, cell(text("Positive"))),
                 CallShape::triangle);
        QCOMPARE(ui::shapeOfCell(ResultTable::somaticDNA, 0, cell(text("KRAS"))), CallShape::none);
    }

    void anAbsentTextIsAnEmptyCellAndAnAbsentRowAnEmptyRow() {
        PatientBuilder built("1");
        built.patient->somaticDNAResultMutAr->append(std::make_shared<calling::ReportSomaticDNA>());
        built.patient->somaticDNAResultMutAr->append(nullptr);
        built.somaticDNA("KRAS", "Positive", "6.4%");
        const auto rows = rowsOf(ResultTable::somaticDNA, built);
        QCOMPARE(rows.size(), std::size_t(3));
        QCOMPARE(textsOf(rows[0]), QStringList({{}, {}, {}, {}}));
        QCOMPARE(textsOf(rows[1]), QStringList({{}, {}, {}, {}}));
        QCOMPARE(textsOf(rows[2]), QStringList({text("KRAS"), text("Positive"), text("6.4%"), {}}));
    }

    void aPatientWithoutAListHasNoRows() {
        const run::SummaryForEachPatient bare;
        for (const ResultTable table : ui::kResultTables) {
            QVERIFY(ui::resultRows(table, &bare).empty());
            QVERIFY(ui::resultRows(table, nullptr).empty());
        }
    }

    void aNoticeIsForFindingsAlone_data() {
        QTest::addColumn<int>("table");
        QTest::addColumn<QString>("call");
        QTest::addColumn<bool>("finding");
        const auto add = [](ResultTable table, const char* call, bool finding) {
            QTest::addRow("%d %s", static_cast<int>(table), call)
                << static_cast<int>(table) << text(call) << finding;
        };
        add(ResultTable::germlineDNA, "mut/mut", true);
        add(ResultTable::germlineDNA, "wt/mut", true);
        add(ResultTable::germlineDNA, "Not Determined", true);
        add(ResultTable::germlineDNA, "wt/wt", false);
        add(ResultTable::somaticDNA, "Positive", true);
        add(ResultTable::somaticDNA, "ND *1", false);
        add(ResultTable::somaticDNA, "Negative", false);
        add(ResultTable::germlineRNA, "RNA degraded", true);
        add(ResultTable::germlineRNA, "RNA not degraded", false);
        add(ResultTable::germlineRNA, "Positive", false);
        add(ResultTable::somaticRNA, "Positive", true);
        add(ResultTable::somaticRNA, "RNA degraded", false);
        add(ResultTable::somaticRNA, "Control Not Working", false);
    }
    void aNoticeIsForFindingsAlone() {
        QFETCH(int, table);
        QFETCH(QString, call);
        QFETCH(bool, finding);
        const ui::ResultRow quiet = row({text("A"), text("none")});
        const ui::ResultRow called = row({text("B"), call});
        QCOMPARE(ui::holdsFinding(static_cast<ResultTable>(table), {quiet, called}), finding);
        QVERIFY(!ui::holdsFinding(static_cast<ResultTable>(table), {}));
    }

    void theCommentLineIsForSomaticDNAWithACommentAlone() {
        PatientBuilder built("1");
        built.somaticDNA("KRAS", "Positive", "6.4%", "0.0000001000").somaticDNA("EGFR", "Negative");
        built.germlineRNA("OAZ1", "RNA not degraded", "9", "a comment");
        const auto* patient = built.patient.get();
        QCOMPARE(ui::rowDetails(ResultTable::somaticDNA, patient, 0).commentLine,
                 text("False positive rate = 0.0000001000"));
        QCOMPARE(ui::rowDetails(ResultTable::somaticDNA, patient, 1).commentLine, QString());
        QCOMPARE(ui::rowDetails(ResultTable::germlineRNA, patient, 0).commentLine, QString());
        QVERIFY(ui::rowDetails(ResultTable::germlineRNA, patient, 0).mutDomain != nullptr);
    }

    void aRowThatIsNotThereHasNoDetails() {
        PatientBuilder built("1");
        built.somaticDNA("KRAS", "Positive");
        for (const std::ptrdiff_t row : {std::ptrdiff_t(-1), std::ptrdiff_t(1)}) {
            QVERIFY(!ui::rowDetails(ResultTable::somaticDNA, built.patient.get(), row).mutDomain);
        }
        QVERIFY(!ui::rowDetails(ResultTable::somaticDNA, nullptr, 0).mutDomain);
    }

    void aRowReadsAsWords() {
        QCOMPARE(ui::rowWords(row({text("KRAS G12D"), text("Positive"), text("6.4%")})),
                 text("KRAS G12D, Positive, 6.4%"));
        QCOMPARE(ui::rowWords(row({text("OAZ1"), text("RNA degraded"), {}, text("late")})),
                 text("OAZ1, RNA degraded, late"));
    }

    void whatWeighsMostGivesThePatientsShapeAndAllIsSaid() {
        PatientBuilder built("3");
        built.germlineDNA("BIM", "wt/mut").somaticDNA("KRAS G12D", "Positive");
        built.somaticDNA("EGFR", "ND *1").somaticRNA("RET", "Control Not Working");
        const ui::PatientAttention attention = ui::attentionFor(*built.patient);
        QCOMPARE(attention.shape, CallShape::triangle);
        QCOMPARE(attention.tone, ResultTone::finding);
        QCOMPARE(attention.words, text("Positive: KRAS G12D\nControl not working: RET\n"
                                       "Not decided: EGFR\nGermline variant: BIM wt/mut"));
    }

    void aPatientWithoutAMappedPairHasABadgeOfItsOwnWhateverItsRowsSay() {
        PatientBuilder empty("3");
        empty.counts(0, 0).somaticDNA("KRAS", "Positive").germlineRNA("OAZ1", "RNA degraded");
        const ui::PatientAttention attention = ui::attentionFor(*empty.patient);
        QCOMPARE(attention.shape, CallShape::hollowSquare);
        QCOMPARE(attention.tone, ResultTone::muted);
        QCOMPARE(attention.words, text("No read pair is mapped: nothing is assessable"));
        PatientBuilder unmapped("4");
        unmapped.counts(106'954, 0).somaticDNA("KRAS", "ND *1");
        QCOMPARE(ui::attentionFor(*unmapped.patient).shape, CallShape::hollowSquare);
    }

    void aKindWithoutAnAssessableTargetIsNamedBesideTheOtherWords() {
        PatientBuilder built("3");
        built.somaticDNA("KRAS", "ND *1").germlineDNA("BIM", "wt/wt");
        built.patient->mutDomains = support::catalogueOf(
            {support::calledDomain("KRAS", "SomaticDNA", {"", "ND *1"}),
             support::calledDomain("EGFR", "SomaticDNA", {"", "ND *1", "ND *1"}),
             support::calledDomain("BIM", "Germline", {"wt/wt", ""})});
        QCOMPARE(ui::attentionFor(*built.patient).words,
                 text("Not decided: KRAS\nsomatic DNA: not assessable (2 of 2 targets ND *1)"));
        const auto why = [&](ResultTable table) {
            return ui::whyNotAssessable(table, built.patient.get());
        };
        QCOMPARE(why(ResultTable::somaticDNA), text("not assessable (2 of 2 targets ND *1)"));
        QCOMPARE(why(ResultTable::germlineDNA), QString());
        QCOMPARE(why(ResultTable::germlineRNA), QString());
        QCOMPARE(ui::whyNotAssessable(ResultTable::somaticDNA, nullptr), QString());
    }

    void aWordThatNoRuleWritesIsShownAsItStandsAndUndecided() {
        PatientBuilder built("3");
        built.somaticDNA("KRAS", "Weakly positive");
        const auto rows = rowsOf(ResultTable::somaticDNA, built);
        QCOMPARE(rows[0][ui::kCallColumn].text, text("Weakly positive"));
        QCOMPARE(ui::toneOfCell(ResultTable::somaticDNA, rows[0][ui::kCallColumn]),
                 ResultTone::plain);
        QCOMPARE(ui::attentionFor(*built.patient).words, text("Not decided: KRAS"));
    }

    void aCallThatIsShownHasItsToneThoughAByteOrderMarkStandsBeforeIt() {
        PatientBuilder built("3");
        built.somaticDNA("KRAS", "\xEF\xBB\xBF"
                                 "Positive");
        const auto rows = rowsOf(ResultTable::somaticDNA, built);
        QCOMPARE(rows[0][ui::kCallColumn].text, text("Positive"));
        QCOMPARE(ui::toneOfCell(ResultTable::somaticDNA, rows[0][ui::kCallColumn]),
                 ResultTone::finding);
        QCOMPARE(ui::attentionFor(*built.patient).words, text("Positive: KRAS"));
    }

    void aPatientWithNothingFoundIsACircle() {
        PatientBuilder built("3");
        built.germlineDNA("BIM", "wt/wt").somaticDNA("KRAS", "Negative");
        const ui::PatientAttention attention = ui::attentionFor(*built.patient);
        QCOMPARE(attention.shape, CallShape::circle);
        QCOMPARE(attention.tone, ResultTone::clear);
        QCOMPARE(ui::attentionFor(*PatientBuilder("4").patient).shape, CallShape::none);
    }
};

WINDOW_TEST(ResultRowsTest, support::NoApplication)
#include "result_rows_test.moc"
