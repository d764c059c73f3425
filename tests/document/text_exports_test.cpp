// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/text_exports.h"

#include <gtest/gtest.h>

namespace {

using Patient = std::shared_ptr<run::SummaryForEachPatient>;

const std::string kLine = "----------------------------\n";
const std::string kSectionHeads = "Patient#\tArea\tAllele Type\n"
                                  "Patient#\tArea\tDiagnosis\tMutantCellRatio\tFalsePositiveRate\n"
                                  "Patient#\tArea\tAlleleType\n"
                                  "Patient#\tGene\tDiagnosis\tNumberOfReads\tComment\n"
                                  "Patient#\tGene\tDiagnosis\tNumberOfReads\tComment\n";
const std::string kSummaryHead =
    "File\tMutation\tMutantCellPercent or Read#\tND *1\tOAZ-1 reads\tBIM type\n";

void addDomain(const Patient& patient, const char* type, const char* name, std::int64_t normal,
               std::int64_t mutant) {
    auto domain = std::make_shared<catalogue::MutDomain>();
    domain->type = type;
    domain->name = name;
    domain->totalNumberOfNormalReads = normal;
    domain->totalNumberOfMutantReads = mutant;
    auto mutation = std::make_shared<catalogue::Mutation>();
    mutation->name = std::string(name) + "_wt";
    mutation->match = normal;
    domain->mutationMutAr.emplace();
    domain->mutationMutAr->append(mutation);
    patient->mutDomains->append(domain);
}

Patient patientWithDomains() {
    catalogue::MutDomains none;
    none.emplace();
    const Patient patient = run::SummaryForEachPatient::initWithMutDomains(none);
    patient->file1 = "a_R1_001.fastq";
    patient->file2 = "a_R2_001.fastq";
    patient->fastqFileDir = "/data/run7";
    patient->patientNo = "1";
    patient->totalNumberOfReads = 30;
    patient->readsMapped = 20;
    patient->readsFailedToBeMapped = 10;
    addDomain(patient, "Germline", "BIM", 3, 4);
    addDomain(patient, "SomaticDNA", "EGFR", 5, 6);
    addDomain(patient, "germline_RNA", "OAZ1", 8, 0);
    addDomain(patient, "fusion_mRNA", "ALK", 7, 5);
    addDomain(patient, "control", "C", 9, 9);
    addDomain(patient, "germline_mRNA", "X", 1, 1);
    addDomain(patient, "fusion_RNA", "Y", 1, 1);
    return patient;
}

void addSomatic(const Patient& patient, const char* area, const char* diagnosis,
                const char* ratio) {
    auto row = std::make_shared<calling::ReportSomaticDNA>();
    row->areaSearched = area;
    row->diagnosis = diagnosis;
    row->mutantCellRatio = ratio;
    row->comment = "c";
    patient->somaticDNAResultMutAr->append(row);
}

void addAlleles(const Patient& patient, const char* area, const char* type) {
    auto row = std::make_shared<calling::ReportGermlineDNA>();
    row->areaSearched = area;
    row->allelicType = type;
    patient->germlineDNAResultMutAr->append(row);
}

template <class Row>
std::shared_ptr<Row> transcript(const char* gene, const char* diagnosis, const char* reads) {
    auto row = std::make_shared<Row>();
    row->gene = gene;
    row->diagnosis = diagnosis;
    row->numberOfReads = reads;
    return row;
}

run::PatientList listOf(std::vector<Patient> patients) {
    return archive::RecordList<run::SummaryForEachPatient>::of(std::move(patients));
}

TEST(FullReport, WithoutASelectionHoldsHeadsOnly) {
    EXPECT_EQ(document::fullReport(listOf({patientWithDomains()}), {}),
              "Patient #\tBIM wt\tBIM mut\tEGFR norm\tEGFR mut\tOAZ1\tALK\t\n" + kLine +
                  kSectionHeads);
}

TEST(FullReport, OfAnEmptyListHoldsHeadsWithoutColumns) {
    EXPECT_EQ(document::fullReport(listOf({}), {}), "Patient #\t\n" + kLine + kSectionHeads);
    EXPECT_EQ(document::fullReport(std::nullopt, {0}), "Patient #\t\n" + kLine + kSectionHeads);
}

TEST(FullReport, WritesCountsThenTheTableThenTheRows) {
    const Patient patient = patientWithDomains();
    addAlleles(patient, "BIM", "wt/wt");
    addSomatic(patient, "L858R", "Positive", "12.5%");
    addSomatic(patient, "T790M", "Negative", "");
    patient->germlineRNAResultMutAr->append(
        transcript<calling::ReportGermlineRNA>("OAZ1", "RNA not degraded", "8"));
    EXPECT_EQ(document::fullReport(listOf({patientWithDomains(), patient}), {1}),
              "a_R1_001.fastq\na_R2_001.fastq\nTotalNumberOfReads\t30\nReadsMapped\t20\n"
              "ReadsFailedToBeMapped\t10\n\nBIM_wt\t3\nEGFR_wt\t5\nOAZ1_wt\t8\nALK_wt\t7\nC_wt\t9\n"
              "X_wt\t1\nY_wt\t1\n" +
                  kLine +
                  "Patient #\tBIM wt\tBIM mut\tEGFR norm\tEGFR mut\tOAZ1\tALK\t\n"
                  "1\t3\t4\t5\t6\t8\t12\t\n" +
                  kLine +
                  "Patient#\tArea\tAllele Type\n1\tBIM\twt/wt\n"
                  "Patient#\tArea\tDiagnosis\tMutantCellRatio\tFalsePositiveRate\n"
                  "1\tL858R\tPositive\t12.5%\tc\n\tT790M\tNegative\t\tc\n"
                  "Patient#\tArea\tAlleleType\n1\tBIM\twt/wt\n"
                  "Patient#\tGene\tDiagnosis\tNumberOfReads\tComment\n"
                  "1\tOAZ1\tRNA not degraded\t8\t\n"
                  "Patient#\tGene\tDiagnosis\tNumberOfReads\tComment\n1");
}

TEST(FullReport, AddsNoColumnForAControlDomain) {
    const std::string text = document::fullReport(listOf({patientWithDomains()}), {});
    EXPECT_EQ(text.substr(0, text.find('\n')),
              "Patient #\tBIM wt\tBIM mut\tEGFR norm\tEGFR mut\tOAZ1\tALK\t");
}

TEST(FullReport, ShowsAFusionDomainsNormalAndMutantReadsAsOneNumber) {
    const std::string text = document::fullReport(listOf({patientWithDomains()}), {0});
    EXPECT_NE(text.find("\t8\t12\t\n"), std::string::npos);
}

TEST(FullReport, LeavesOutSelectedRowsBeyondTheList) {
    const auto patients = listOf({patientWithDomains()});
    EXPECT_EQ(document::fullReport(patients, {0, 2}), document::fullReport(patients, {0}));
}

TEST(SummaryTable, JoinsDnaAndRnaPositivesInOneList) {
    const Patient patient = patientWithDomains();
    addAlleles(patient, "BIM", "wt/mut");
    addSomatic(patient, "A1", "Positive", "12.5%");
    addSomatic(patient, "B1", "ND *1", "");
    addSomatic(patient, "A2", "Positive", "3.0%");
    addSomatic(patient, "B2", "ND *1", "");
    patient->germlineRNAResultMutAr->append(
        transcript<calling::ReportGermlineRNA>("OAZ1", "RNA degraded", "8"));
    patient->somaticRNAResultMutAr->append(
        transcript<calling::ReportSomaticRNA>("G", "Positive", "40"));
    EXPECT_EQ(document::summaryTable(listOf({patient})),
              kSummaryHead +
                  "run7/a_R1_001.fastq\tA1, A2, G\t12.5%, 3.0%, 40\tB1, B2\t8\twt/mut\n");
}

TEST(SummaryTable, SaysNegativeWithoutPositivesAndLeavesMissingRowsEmpty) {
    EXPECT_EQ(document::summaryTable(listOf({patientWithDomains()})),
              kSummaryHead + "run7/a_R1_001.fastq\tNegative\t\t\t\t\n");
}

TEST(SummaryTable, NamesADirectoryThatIsWrittenWithASlashAtItsEnd) {
    const Patient patient = patientWithDomains();
    patient->fastqFileDir = "/data/run7/";
    EXPECT_EQ(document::summaryTable(listOf({patient})),
              kSummaryHead + "run7/a_R1_001.fastq\tNegative\t\t\t\t\n");
}

TEST(SummaryTable, OfAnEmptyListIsTheHeadLine) {
    EXPECT_EQ(document::summaryTable(listOf({})), kSummaryHead);
}

TEST(TextExports, ReadAbsentTextsAsEmpty) {
    const auto plain = std::make_shared<run::SummaryForEachPatient>();
    EXPECT_EQ(document::summaryTable(listOf({plain})), kSummaryHead + "/\tNegative\t\t\t\t\n");
    EXPECT_NE(document::fullReport(listOf({plain}), {0}).find("\n\nTotalNumberOfReads\t0\n"),
              std::string::npos);
}

} // namespace
