// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QtTest>

#include "ui/record_builder.h"
#include "ui/tables/table_models.h"
#include "ui/window_test.h"

using support::PatientBuilder;

namespace {

QString text(const char* words) {
    return QString::fromUtf8(words);
}

ui::TableColumns columns(const QStringList& identifiers) {
    return {identifiers, identifiers};
}

run::PatientList listOf(const std::vector<std::shared_ptr<run::SummaryForEachPatient>>& patients) {
    return archive::RecordList<run::SummaryForEachPatient>::of(patients);
}

} // namespace

/// The tables' models: what stands where, by the columns' identifiers.
class TableModelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPatientsNumberStandsInEveryColumn() {
        ui::PatientsTableModel model(columns({text("0"), text("7"), text("x")}), nullptr);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.reload(listOf({PatientBuilder("12").patient}));
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(model.index(0, column).data().toString(), text("12"));
        }
    }

    void appendedPatientsComeInAsNewRows() {
        ui::PatientsTableModel model(columns({text("0")}), nullptr);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        const auto first = PatientBuilder("1").patient;
        const auto second = PatientBuilder("2").patient;
        QVERIFY(model.reload(listOf({first})));
        const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QVERIFY(model.reload(listOf({first, second})));
        QVERIFY(!model.reload(listOf({first, second})));
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(resets.count(), 0);
        QVERIFY(model.reload(listOf({second})));
        QCOMPARE(resets.count(), 1);
        QVERIFY(model.reload(std::nullopt));
        QCOMPARE(model.rowCount(), 0);
    }

    void aPatientsTooltipNamesTheSampleAndWhatNeedsAttention() {
        ui::PatientsTableModel model(columns({text("0")}), nullptr);
        PatientBuilder named("12");
        named.patient->file1 = "/runs/pat_<b>Suzuki_S12_L001_R1_001.fastq";
        PatientBuilder nameless("13");
        nameless.counts(0, 0).patient->file1 = "reads_R1_001.fastq";
        model.reload(listOf({named.patient, nameless.patient}));
        const QString tip = model.index(0, 0).data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(text("Patient 12, sample pat_&lt;b&gt;Suzuki")), qPrintable(tip));
        QVERIFY2(tip.contains(text("No results")), qPrintable(tip));
        const QString none = text("No read pair is mapped: nothing is assessable");
        const QModelIndex empty = model.index(1, 0);
        QVERIFY(empty.data(Qt::ToolTipRole).toString().contains(none));
        QCOMPARE(empty.data(Qt::AccessibleDescriptionRole).toString(), none);
        QCOMPARE(empty.data(Qt::AccessibleTextRole).toString(), text("Patient 13. ") + none);
        QCOMPARE(empty.data(ui::kShapeRole).toInt(), static_cast<int>(ui::CallShape::hollowSquare));
    }

    void aPatientThatIsMissingInAListIsAnEmptyRow() {
        ui::PatientsTableModel model(columns({text("0")}), nullptr);
        model.reload(listOf({nullptr, PatientBuilder("2").patient}));
        QCOMPARE(model.index(0, 0).data().toString(), QString());
        QCOMPARE(model.index(1, 0).data().toString(), text("2"));
    }

    void resultColumnsAreToldApartByTheirIdentifiers() {
        PatientBuilder built("1");
        built.germlineDNA("BIM", "wt/mut").somaticDNA("KRAS", "Positive", "6.4%", "0.01");
        built.germlineRNA("OAZ1", "RNA degraded", "3", "low").somaticRNA("ALK", "Positive", "12");
        const auto cells = [&built](ui::ResultTable table) {
            // In another order than they are numbered, and with one that nobody knows.
            ui::ResultTableModel model(
                table, columns({text("3"), text("1"), text("0"), text("2"), text("4")}), nullptr);
            const QAbstractItemModelTester tester(
                &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
            model.reload(built.patient.get());
            QStringList texts;
            for (int column = 0; column < model.columnCount(); ++column) {
                texts.append(model.index(0, column).data().toString());
            }
            return texts.join(QLatin1Char('|'));
        };
        QCOMPARE(cells(ui::ResultTable::germlineDNA), text("|wt/mut|BIM||"));
        QCOMPARE(cells(ui::ResultTable::somaticDNA), text("|Positive|KRAS|6.4%|"));
        QCOMPARE(cells(ui::ResultTable::germlineRNA), text("low|RNA degraded|OAZ1|3|"));
        QCOMPARE(cells(ui::ResultTable::somaticRNA), text("|Positive|ALK|12|"));
    }

    void aCellThatIsNotThereShowsNothing() {
        PatientBuilder built("1");
        built.somaticDNA("KRAS", "Positive");
        ui::ResultTableModel model(ui::ResultTable::somaticDNA, columns({text("0")}), nullptr);
        model.reload(built.patient.get());
        QCOMPARE(model.cellText(0, text("0")), text("KRAS"));
        QCOMPARE(model.cellText(1, text("0")), QString());
        QCOMPARE(model.cellText(-1, text("0")), QString());
        QCOMPARE(model.cellText(0, text("9")), QString());
        QVERIFY(!model.data(QModelIndex(), Qt::DisplayRole).isValid());
    }

    void nothingCanBeEdited() {
        ui::ResultTableModel model(ui::ResultTable::somaticDNA, columns({text("0")}), nullptr);
        model.reload(PatientBuilder("1").somaticDNA("KRAS", "Positive").patient.get());
        QVERIFY(!model.flags(model.index(0, 0)).testFlag(Qt::ItemIsEditable));
    }

    void theFirstCellOfARowReadsAsTheWholeRow() {
        ui::ResultTableModel model(ui::ResultTable::somaticDNA, columns({text("0"), text("1")}),
                                   nullptr);
        model.reload(PatientBuilder("1").somaticDNA("KRAS G12D", "Positive", "6.4%").patient.get());
        QCOMPARE(model.index(0, 0).data(Qt::AccessibleTextRole).toString(),
                 text("KRAS G12D, Positive, 6.4%"));
        QCOMPARE(model.index(0, 1).data(Qt::AccessibleTextRole).toString(), text("Positive"));
    }

    void aNameFromAFileIsNoMarkupInATooltip() {
        ui::ResultTableModel model(ui::ResultTable::somaticDNA, columns({text("0")}), nullptr);
        model.reload(PatientBuilder("1").somaticDNA("<b>KRAS</b>", "Positive").patient.get());
        const QString tip = model.index(0, 0).data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(text("&lt;b&gt;KRAS")), qPrintable(tip));
    }

    void thePopoversCountsAndBarsAreThoseOfTheDomain() {
        ui::MutationsTableModel model(columns({text("0"), text("1"), text("bar"), text("2")}),
                                      nullptr);
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        model.reload(
            support::countedDomain("KRAS", "SomaticDNA", {{"wt", 200}, {"G12D", 50}, {"G12C", 0}})
                .get());
        QCOMPARE(model.rowCount(), 3);
        QCOMPARE(model.cellText(1, text("0")), text("G12D"));
        QCOMPARE(model.cellText(1, text("1")), text("50"));
        QCOMPARE(model.cellText(1, text("bar")), QString());
        QCOMPARE(model.cellText(1, text("2")), QString());
        QCOMPARE(model.index(0, 2).data(ui::kBarRole).toDouble(), 1.0);
        QCOMPARE(model.index(1, 2).data(ui::kBarRole).toDouble(), 0.25);
        QCOMPARE(model.index(2, 2).data(ui::kBarRole).toDouble(), 0.0);
        QCOMPARE(model.index(1, 2).data(Qt::AccessibleTextRole).toString(),
                 text("G12D, 50 read pairs"));
    }

    void theWildTypeAndTheControlAreReferencesATranscriptIsNot() {
        ui::MutationsTableModel model(columns({text("0")}), nullptr);
        const auto firstIsReference = [&model](const char* type, const char* name) {
            model.reload(support::countedDomain("D", type, {{name, 1}, {"b", 1}}).get());
            return model.index(0, 0).data(ui::kReferenceRole).toBool() &&
                   !model.index(1, 0).data(ui::kReferenceRole).toBool();
        };
        QVERIFY(firstIsReference("Germline", "BIM"));
        QVERIFY(firstIsReference("SomaticDNA", "wt"));
        QVERIFY(firstIsReference("fusion_RNA", "internal_control"));
        QVERIFY(!firstIsReference("fusion_RNA", "EML4-ALK"));
        QVERIFY(!firstIsReference("germline_mRNA", "OAZ1"));
    }

    void withoutADomainThePopoversTableIsEmpty() {
        ui::MutationsTableModel model(columns({text("0")}), nullptr);
        model.reload(support::countedDomain("D", "control", {{"a", 1}}).get());
        model.reload(nullptr);
        QCOMPARE(model.rowCount(), 0);
        const catalogue::MutDomain bare;
        model.reload(&bare);
        QCOMPARE(model.rowCount(), 0);
    }
};

WINDOW_TEST(TableModelsTest, QApplication)
#include "table_models_test.moc"
