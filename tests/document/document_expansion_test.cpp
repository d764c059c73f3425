// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Records may be shared, so a small file can stand for more than any memory holds. What a document
// expands to is bounded when it is opened; whatever an analysis can save is not.
#include "document/result_document.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "archive/keyed_archive.h"
#include "document_test.h"
#include "random_document.h"

namespace {

using archive::RecordList;
using catalogue::Mutation;
using catalogue::MutDomain;
using document::decodeResultDocument;
using document::encodeResultDocument;
using document::kRecordsOfAnyDocument;
using run::SummaryForEachPatient;
using testing::HasSubstr;

constexpr document::Expansion kNoLimit = {static_cast<std::size_t>(-1),
                                          static_cast<std::size_t>(-1)};

/// A list in which one record stands `count` times.
template <class Record>
RecordList<Record> repeated(const std::shared_ptr<Record>& record, std::size_t count) {
    return RecordList<Record>::of(std::vector<std::shared_ptr<Record>>(count, record));
}

/// Patients, domains and mutations that are one record each.
run::PatientList sharing(std::size_t patients, std::size_t domains, std::size_t mutations,
                         const std::string& mutationName = "m") {
    auto mutation = std::make_shared<Mutation>();
    mutation->name = mutationName;
    auto domain = std::make_shared<MutDomain>();
    domain->mutationMutAr = repeated(mutation, mutations);
    auto patient = std::make_shared<SummaryForEachPatient>();
    patient->mutDomains = repeated(domain, domains);
    return repeated(patient, patients);
}

std::string encoded(const run::PatientList& patients) {
    auto bytes = encodeResultDocument({patients, 0});
    EXPECT_TRUE(bytes.ok());
    return std::move(bytes).value();
}

/// The reason why it does not open; empty when it does.
std::string refusalOf(const std::string& bytes) {
    const auto opened = decodeResultDocument(bytes);
    return opened ? "" : opened.error().message;
}

std::size_t objectsOf(const std::string& bytes) {
    return archive::readKeyedArchive(bytes).value().objects.size();
}

class DocumentExpansion : public document::VextaDocumentTest {};

TEST_F(DocumentExpansion, ASmallFileThatStandsForBillionsOfMutationsIsRefusedByItsNameAndNumbers) {
    const std::string bytes = encoded(sharing(1800, 1800, 1800));
    ASSERT_LT(bytes.size(), 7000U) << "the records are stored once";
    const std::string path = own.write("hostile.vexta", bytes);
    EXPECT_FALSE(document->readFromURL(path, document::kResultDocumentType));
    ASSERT_EQ(alerts.shown.size(), 1U);
    const std::size_t most = 10 * objectsOf(bytes) + kRecordsOfAnyDocument;
    EXPECT_THAT(alerts.shown[0], HasSubstr(path + ": "));
    EXPECT_THAT(alerts.shown[0], HasSubstr("more than " + std::to_string(most) + " patients"));
    EXPECT_THAT(alerts.shown[0], HasSubstr(std::to_string(objectsOf(bytes)) + " objects"));
    EXPECT_FALSE(document->canMakeSummaryTable());
}

TEST_F(DocumentExpansion, TenRecordsForEachObjectAndAHundredThousandOpenAndOneMoreDoesNot) {
    const std::size_t objects = objectsOf(encoded(sharing(1, 0, 0)));
    const std::size_t most = 10 * objects + 100'000;
    EXPECT_EQ(refusalOf(encoded(sharing(most, 0, 0))), "");
    EXPECT_NE(refusalOf(encoded(sharing(most + 1, 0, 0))), "");
}

TEST_F(DocumentExpansion, CountsRowsOfEveryTableAndFollowsNoRowToItsDomain) {
    run::PatientList patients = sharing(3, 2, 5);
    auto domain = std::make_shared<MutDomain>();
    domain->name = "four";
    domain->mutationMutAr = repeated(std::make_shared<Mutation>(), 1000);
    const auto row = [&domain](auto made) {
        made->mutDomain = domain;
        return made;
    };
    auto& patient = *(*patients)[0];
    patient.germlineDNAResultMutAr =
        repeated(row(std::make_shared<calling::ReportGermlineDNA>()), 7);
    patient.somaticDNAResultMutAr =
        repeated(row(std::make_shared<calling::ReportSomaticDNA>()), 11);
    patient.germlineRNAResultMutAr =
        repeated(row(std::make_shared<calling::ReportGermlineRNA>()), 13);
    patient.somaticRNAResultMutAr =
        repeated(row(std::make_shared<calling::ReportSomaticRNA>()), 17);
    const document::Expansion found = document::expansionOf(patients, kNoLimit);
    EXPECT_EQ(found.records, 3U * (1 + 2 * (1 + 5) + 7 + 11 + 13 + 17));
    EXPECT_EQ(found.textBytes, 3U * (2 * 5 * 1 + 4 * (7 + 11 + 13 + 17)))
        << "the mutations' \"m\" and the row's domain by its name";
}

TEST_F(DocumentExpansion, IsCountedNoFurtherThanItsLimit) {
    // 10^18 mutations: whoever walked them all would not come back.
    const auto patients = sharing(1'000'000, 1'000'000, 1'000'000);
    EXPECT_EQ(document::expansionOf(patients, {5000, kNoLimit.textBytes}).records, 5001U);
    EXPECT_EQ(document::expansionOf(patients, {kNoLimit.records, 700}).textBytes, 701U);
}

TEST_F(DocumentExpansion, ALongTextThatStandsInEveryRowIsRefused) {
    // 90,000 records are few enough, 90,000 times 100 kB are not.
    const std::string bytes = encoded(sharing(1, 300, 300, std::string(100'000, 'm')));
    EXPECT_THAT(refusalOf(bytes), HasSubstr("bytes of text"));
    EXPECT_EQ(refusalOf(encoded(sharing(1, 300, 300))), "");
}

TEST_F(DocumentExpansion, RecordsOfTheirOwnThatShareOneLongTextAreRefused) {
    std::vector<std::shared_ptr<Mutation>> mutations(250);
    const std::string text(20'000, 'A');
    for (auto& mutation : mutations) {
        mutation = std::make_shared<Mutation>();
        mutation->name = mutation->seq = mutation->coreSeq = mutation->comment = text;
    }
    run::PatientList patients = sharing(1, 1, 1);
    (*(*(*patients)[0]->mutDomains)[0]).mutationMutAr = RecordList<Mutation>::of(mutations);
    EXPECT_THAT(refusalOf(encoded(patients)), HasSubstr("repeat each other"));
}

// --- What an analysis can save

/// A patient as a run of a catalogue of one domain gives it.
std::shared_ptr<SummaryForEachPatient> patientOf(const catalogue::MutDomains& catalogue) {
    auto patient = SummaryForEachPatient::initWithMutDomains(catalogue);
    for (const auto& domain : *patient->mutDomains) {
        for (const auto& mutation : *domain->mutationMutAr) {
            mutation->posNegDetectedOrAlleleType = "Positive";
            auto row = std::make_shared<calling::ReportSomaticDNA>();
            row->mutDomain = domain;
            row->areaSearched = mutation->name;
            row->diagnosis = "Positive";
            patient->somaticDNAResultMutAr->append(row);
        }
    }
    return patient;
}

catalogue::MutDomains catalogueOf(std::size_t entries, const Mutation& like) {
    auto domain = std::make_shared<MutDomain>();
    domain->mutationMutAr.emplace();
    for (std::size_t i = 0; i < entries; ++i) {
        domain->mutationMutAr->append(like.copyWithZone());
    }
    return repeated(domain, 1);
}

TEST_F(DocumentExpansion, ADocumentOfATenThousandEntryCatalogueOpens) {
    Mutation mutation;
    mutation.name = "EGFR_L858R";
    const auto patient = patientOf(catalogueOf(10'000, mutation));
    const auto opened = decodeResultDocument(encoded(repeated(patient, 1)));
    ASSERT_TRUE(opened.ok()) << opened.error().message;
    const auto found = document::expansionOf(opened.value().summaryForEachPatientMutAr, kNoLimit);
    EXPECT_EQ(found.records, 1U + 1 + 10'000 + 10'000);
}

TEST_F(DocumentExpansion, ADocumentOfManyPatientsWithoutAnythingInThemOpens) {
    std::vector<std::shared_ptr<SummaryForEachPatient>> patients(10'000);
    for (auto& patient : patients) {
        patient = SummaryForEachPatient::initWithMutDomains(catalogue::MutDomains(std::in_place));
    }
    EXPECT_EQ(refusalOf(encoded(RecordList<SummaryForEachPatient>::of(patients))), "");
}

TEST_F(DocumentExpansion, ADocumentOfTheLongestTextsThatACatalogueGivesOpens) {
    // A token that a header lacks keeps the last one's text, so each field can be as long as a
    // line; a byte that is no UTF-8 is saved as three.
    Mutation mutation;
    for (archive::Text* text :
         {&mutation.name, &mutation.seq, &mutation.coreSeq, &mutation.before10bp,
          &mutation.after10bp, &mutation.strandRequiredToRead}) {
        *text = std::string(999, '\xFF');
    }
    const auto patient = patientOf(catalogueOf(1500, mutation));
    EXPECT_EQ(refusalOf(encoded(repeated(patient, 1))), "");
}

TEST_F(DocumentExpansion, WhateverRecordsADocumentHoldsItOpensFarBelowTheLimit) {
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
        const auto made = document::RandomDocument(seed).make();
        EXPECT_EQ(refusalOf(encoded(made.summaryForEachPatientMutAr)), "") << seed;
    }
}

} // namespace
