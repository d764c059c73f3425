// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/summary_for_each_patient.h"

#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/archive_round_trip.h"
#include "support/record_printer.h"

using archive::RecordList;
using calling::ReportGermlineDNA;
using calling::ReportGermlineRNA;
using calling::ReportSomaticDNA;
using calling::ReportSomaticRNA;
using catalogue::Mutation;
using catalogue::MutDomain;
using catalogue::MutDomains;
using run::SummaryForEachPatient;
using support::archivedAndBack;
using support::keysOf;
using support::printed;
using testing::ElementsAre;

namespace {

std::shared_ptr<Mutation> mutation(const char* name) {
    auto made = std::make_shared<Mutation>();
    made->name = name;
    made->referenceFrequencyOfTheMutantReads = 0.001;
    made->minimumRequiredNumberOfInformativeReads = 30;
    made->seq = "AACCGGTT";
    made->coreSeq = "CCGG";
    return made;
}

MutDomains catalogueOfOneDomain() {
    auto domain = std::make_shared<MutDomain>();
    domain->name = "BRAF";
    domain->type = "SomaticDNA";
    domain->mutationMutAr = RecordList<Mutation>::of({mutation("wt"), mutation("V600E")});
    return RecordList<MutDomain>::of({std::move(domain)});
}

const std::shared_ptr<Mutation>& firstMutation(const MutDomains& domains) {
    return (*(*domains)[0]->mutationMutAr)[0];
}

template <class Row>
std::shared_ptr<Row> rowOf(const std::shared_ptr<MutDomain>& domain) {
    auto row = std::make_shared<Row>();
    row->mutDomain = domain;
    row->patientNo = "7";
    return row;
}

/// As after a run: a row in every list, each of the catalogue's one domain.
std::shared_ptr<SummaryForEachPatient> finishedSummary() {
    auto summary = SummaryForEachPatient::initWithMutDomains(catalogueOfOneDomain());
    summary->file1 = "x_S7_R1_001.fastq";
    summary->file2 = "x_S7_R2_001.fastq";
    summary->fastqFileDir = "/data";
    summary->patientNo = "7";
    summary->totalNumberOfReads = 3000;
    summary->readsFailedToBeMapped = 1000;
    summary->readsMapped = 2000;
    const auto& domain = (*summary->mutDomains)[0];
    firstMutation(summary->mutDomains)->match = 12;
    summary->germlineDNAResultMutAr->append(rowOf<ReportGermlineDNA>(domain));
    summary->somaticDNAResultMutAr->append(rowOf<ReportSomaticDNA>(domain));
    summary->germlineRNAResultMutAr->append(rowOf<ReportGermlineRNA>(domain));
    summary->somaticRNAResultMutAr->append(rowOf<ReportSomaticRNA>(domain));
    return summary;
}

/// Adds a record to each of the lists, which throws where one is fixed.
void growEveryList(SummaryForEachPatient& summary) {
    summary.mutDomains->append(std::make_shared<MutDomain>());
    summary.germlineDNAResultMutAr->append(std::make_shared<ReportGermlineDNA>());
    summary.somaticDNAResultMutAr->append(std::make_shared<ReportSomaticDNA>());
    summary.germlineRNAResultMutAr->append(std::make_shared<ReportGermlineRNA>());
    summary.somaticRNAResultMutAr->append(std::make_shared<ReportSomaticRNA>());
}

constexpr const char* kFreshSummary =
    "SummaryForEachPatient{file1=\"\" file2=\"\" fastqFileDir=\"\" patientNo=\"\" "
    "totalNumberOfReads=0 readsFailedToBeMapped=0 readsMapped=0 mutDomains=growable[] "
    "germlineDNAResultMutAr=growable[] somaticDNAResultMutAr=growable[] "
    "germlineRNAResultMutAr=growable[] somaticRNAResultMutAr=growable[] }";

} // namespace

TEST(PatientSummary, OfAnEmptyCatalogueIsEmptyAndArchivesAsSuch) {
    const auto summary = SummaryForEachPatient::initWithMutDomains(RecordList<MutDomain>());
    EXPECT_EQ(printed(summary), kFreshSummary);
    EXPECT_EQ(printed(archivedAndBack(summary)), kFreshSummary);
}

TEST(PatientSummary, ArchivesEmptyTextsAndNoReadsWhenFresh) {
    const auto back =
        archivedAndBack(SummaryForEachPatient::initWithMutDomains(catalogueOfOneDomain()));
    EXPECT_EQ(back->file1, "");
    EXPECT_EQ(back->file2, "");
    EXPECT_EQ(back->fastqFileDir, "");
    EXPECT_EQ(back->patientNo, "");
    EXPECT_EQ(back->totalNumberOfReads, 0);
    EXPECT_EQ(back->readsFailedToBeMapped, 0);
    EXPECT_EQ(back->readsMapped, 0);
}

TEST(PatientSummary, ListsItsFieldsInArchiveOrder) {
    EXPECT_EQ(SummaryForEachPatient::kClassName, "SummaryForEachPatient");
    EXPECT_THAT(keysOf(SummaryForEachPatient()),
                ElementsAre("file1", "file2", "fastqFileDir", "patientNo", "totalNumberOfReads",
                            "readsFailedToBeMapped", "readsMapped", "mutDomains",
                            "germlineDNAResultMutAr", "somaticDNAResultMutAr",
                            "germlineRNAResultMutAr", "somaticRNAResultMutAr"));
}

TEST(PatientSummary, TakesACatalogueOfItsOwnWithEveryValueKept) {
    const MutDomains source = catalogueOfOneDomain();
    const auto summary = SummaryForEachPatient::initWithMutDomains(source);
    EXPECT_EQ(printed(summary->mutDomains), printed(source));
    EXPECT_NE((*summary->mutDomains)[0], (*source)[0]);
    const auto& own = firstMutation(summary->mutDomains);
    EXPECT_NE(own, firstMutation(source));
    EXPECT_EQ(own->referenceFrequencyOfTheMutantReads, 0.001);
    EXPECT_EQ(own->seqC(), own->seq->c_str());
    EXPECT_EQ(own->coreSeqC(), own->coreSeq->c_str());
}

TEST(PatientSummary, CountsWithoutTouchingTheCatalogueOrAnyOtherSummary) {
    const MutDomains source = catalogueOfOneDomain();
    const auto summary = SummaryForEachPatient::initWithMutDomains(source);
    const auto other = SummaryForEachPatient::initWithMutDomains(source);
    const auto copy = summary->copyWithZone();
    const auto copyOfCopy = copy->copyWithZone();
    firstMutation(summary->mutDomains)->match = 9;
    EXPECT_EQ(firstMutation(source)->match, 0);
    EXPECT_EQ(firstMutation(other->mutDomains)->match, 0);
    EXPECT_EQ(firstMutation(copy->mutDomains)->match, 0);
    EXPECT_EQ(firstMutation(copyOfCopy->mutDomains)->match, 0);
}

TEST(PatientSummary, GivesACopyEveryValueAndNoRecord) {
    const auto summary = finishedSummary();
    const auto copy = summary->copyWithZone();
    EXPECT_NE(copy, summary);
    EXPECT_EQ(printed(copy), printed(summary));
    EXPECT_NE((*copy->mutDomains)[0], (*summary->mutDomains)[0]);
    EXPECT_NE((*copy->germlineDNAResultMutAr)[0], (*summary->germlineDNAResultMutAr)[0]);
    EXPECT_NE((*copy->somaticDNAResultMutAr)[0], (*summary->somaticDNAResultMutAr)[0]);
    EXPECT_NE((*copy->germlineRNAResultMutAr)[0], (*summary->germlineRNAResultMutAr)[0]);
    EXPECT_NE((*copy->somaticRNAResultMutAr)[0], (*summary->somaticRNAResultMutAr)[0]);
}

TEST(PatientSummary, GivesACopysMutationsTheirOwnFrequencies) {
    const auto summary = finishedSummary();
    EXPECT_EQ(
        firstMutation(summary->copyWithZone()->mutDomains)->referenceFrequencyOfTheMutantReads,
        0.001);
    // Unlike the copy of a single mutation.
    EXPECT_EQ(
        firstMutation(summary->mutDomains)->copyWithZone()->referenceFrequencyOfTheMutantReads,
        30.0);
}

TEST(PatientSummary, CopiesEachListOnItsOwn) {
    const auto summary = finishedSummary();
    ASSERT_EQ((*summary->somaticDNAResultMutAr)[0]->mutDomain, (*summary->mutDomains)[0]);
    const auto copy = summary->copyWithZone();
    const auto& inRow = (*copy->somaticDNAResultMutAr)[0]->mutDomain;
    EXPECT_NE(inRow, (*summary->mutDomains)[0]);
    EXPECT_NE(inRow, (*copy->mutDomains)[0]);
    EXPECT_EQ(printed(inRow), printed((*copy->mutDomains)[0]));
}

TEST(PatientSummary, KeepsItsRowsDomainsInItsCatalogueThroughAnArchive) {
    const auto back = archivedAndBack(finishedSummary());
    EXPECT_EQ(printed(back), printed(finishedSummary()));
    const auto& domain = (*back->mutDomains)[0];
    EXPECT_EQ((*back->germlineDNAResultMutAr)[0]->mutDomain, domain);
    EXPECT_EQ((*back->somaticDNAResultMutAr)[0]->mutDomain, domain);
    EXPECT_EQ((*back->germlineRNAResultMutAr)[0]->mutDomain, domain);
    EXPECT_EQ((*back->somaticRNAResultMutAr)[0]->mutDomain, domain);
}

TEST(PatientSummary, HasListsThatGrow) {
    const auto fixed = RecordList<MutDomain>::fixedCopyOf(*catalogueOfOneDomain());
    const auto summary = SummaryForEachPatient::initWithMutDomains(fixed);
    const auto copy = summary->copyWithZone();
    const auto back = archivedAndBack(summary);
    for (const auto& any : {summary, copy, back}) {
        growEveryList(*any);
        EXPECT_EQ(any->mutDomains->size(), 2U);
        EXPECT_EQ(any->somaticRNAResultMutAr->size(), 1U);
    }
}

TEST(PatientSummary, KeepsNullsInACopyAndAnArchive) {
    const auto plain = std::make_shared<SummaryForEachPatient>();
    EXPECT_EQ(printed(plain->copyWithZone()), printed(plain));
    EXPECT_EQ(printed(archivedAndBack(plain)), printed(plain));
    EXPECT_FALSE(archivedAndBack(plain)->mutDomains.has_value());
    EXPECT_FALSE(archivedAndBack(plain)->file1.has_value());
}

TEST(PatientSummary, WritesTheTextsThatPatientsShareOnce) {
    // A run of many patients has one catalogue text in the archive, not one for each of them.
    const MutDomains source = catalogueOfOneDomain();
    archive::KeyedArchiver one;
    static_cast<void>(one.encode(run::PatientList(RecordList<SummaryForEachPatient>::of(
        {SummaryForEachPatient::initWithMutDomains(source)}))));
    archive::KeyedArchiver two;
    static_cast<void>(two.encode(run::PatientList(RecordList<SummaryForEachPatient>::of(
        {SummaryForEachPatient::initWithMutDomains(source),
         SummaryForEachPatient::initWithMutDomains(source)}))));
    // The second adds itself, five lists of its own, the domain's list, the domain, two mutations.
    EXPECT_EQ(two.takeGraph({}).objects.size() - one.takeGraph({}).objects.size(), 10U);
}
