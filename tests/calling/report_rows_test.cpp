// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "calling/report_rows.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/archive_round_trip.h"
#include "support/record_printer.h"

using calling::ReportGermlineDNA;
using calling::ReportGermlineRNA;
using calling::ReportSomaticDNA;
using calling::ReportSomaticRNA;
using catalogue::MutDomain;
using support::archivedAndBack;
using support::archivedWithoutKey;
using support::keysOf;
using support::printed;
using testing::ElementsAre;

namespace {

/// Gives each text of a row a value of its own: the name of its key.
struct FillWithKeys {
    void operator()(std::string_view key, archive::Text& text) { text = std::string(key); }
    void operator()(std::string_view /*key*/, std::shared_ptr<MutDomain>& domain) {
        domain = std::make_shared<MutDomain>();
        domain->name = "BRAF";
        domain->type = "SomaticDNA";
    }
};

template <class Row>
std::shared_ptr<Row> filled() {
    auto row = std::make_shared<Row>();
    FillWithKeys fill;
    Row::visitFields(*row, fill);
    return row;
}

template <class Row>
class ReportRow : public testing::Test {};

using Rows =
    testing::Types<ReportGermlineDNA, ReportSomaticDNA, ReportGermlineRNA, ReportSomaticRNA>;
TYPED_TEST_SUITE(ReportRow, Rows);

/// Whether a row holds nothing at all.
struct NullCheck {
    bool allNull = true;

    template <class Field>
    void operator()(std::string_view /*key*/, const Field& field) {
        allNull = allNull && !field;
    }
};

} // namespace

TYPED_TEST(ReportRow, StartsWithNullInEveryField) {
    NullCheck check;
    TypeParam::visitFields(std::as_const(*std::make_shared<TypeParam>()), check);
    EXPECT_TRUE(check.allNull);
}

TYPED_TEST(ReportRow, ArchivesEveryTextAndItsDomain) {
    const auto row = filled<TypeParam>();
    const auto back = archivedAndBack(row);
    EXPECT_EQ(printed(back), printed(row));
    EXPECT_NE(back->mutDomain, row->mutDomain);
    EXPECT_EQ(back->mutDomain->name, "BRAF");
    EXPECT_EQ(back->mutDomain->type, "SomaticDNA");
}

TYPED_TEST(ReportRow, ArchivesNullsAsNulls) {
    const auto row = std::make_shared<TypeParam>();
    EXPECT_EQ(printed(archivedAndBack(row)), printed(row));
}

TYPED_TEST(ReportRow, DecodesAMissingKeyAsNullAndTheOthersAsTheyAre) {
    for (const std::string& key : keysOf(TypeParam())) {
        const auto back = archivedWithoutKey(filled<TypeParam>(), key);
        const std::string text = printed(back);
        EXPECT_THAT(text, testing::HasSubstr(key + "=null"));
        const bool isDomain = key == "mutDomain";
        EXPECT_EQ(back->mutDomain == nullptr, isDomain);
        EXPECT_EQ(back->patientNo.has_value(), key != "patientNo");
    }
}

TYPED_TEST(ReportRow, SharesItsDomainWithOtherRowsThroughAnArchive) {
    auto first = filled<TypeParam>();
    auto second = filled<TypeParam>();
    second->mutDomain = first->mutDomain;
    const archive::ListOf<TypeParam> rows =
        archive::RecordList<TypeParam>::of({first, second, filled<TypeParam>()});
    const auto back = archivedAndBack(rows);
    EXPECT_EQ((*back)[0]->mutDomain, (*back)[1]->mutDomain);
    EXPECT_NE((*back)[0]->mutDomain, (*back)[2]->mutDomain);
}

TEST(ReportRows, DecodeWithoutACommentToANullComment) {
    EXPECT_EQ(archivedWithoutKey(filled<ReportSomaticDNA>(), "comment")->comment, std::nullopt);
    EXPECT_EQ(archivedWithoutKey(filled<ReportGermlineRNA>(), "comment")->comment, std::nullopt);
    EXPECT_EQ(archivedWithoutKey(filled<ReportSomaticRNA>(), "comment")->comment, std::nullopt);
}

TEST(ReportRows, HaveTheirClassNamesAndKeysInArchiveOrder) {
    EXPECT_EQ(ReportGermlineDNA::kClassName, "ReportGermlineDNA");
    EXPECT_EQ(ReportSomaticDNA::kClassName, "ReportSomaticDNA");
    EXPECT_EQ(ReportGermlineRNA::kClassName, "ReportGermlineRNA");
    EXPECT_EQ(ReportSomaticRNA::kClassName, "ReportSomaticRNA");
    EXPECT_THAT(keysOf(ReportGermlineDNA()),
                ElementsAre("mutDomain", "patientNo", "areaSearched", "allelicType"));
    EXPECT_THAT(keysOf(ReportSomaticDNA()), ElementsAre("mutDomain", "patientNo", "areaSearched",
                                                        "diagnosis", "mutantCellRatio", "comment"));
    const auto keysOfRNA =
        ElementsAre("mutDomain", "patientNo", "gene", "diagnosis", "numberOfReads", "comment");
    EXPECT_THAT(keysOf(ReportGermlineRNA()), keysOfRNA);
    EXPECT_THAT(keysOf(ReportSomaticRNA()), keysOfRNA);
}

TEST(ReportRows, KeepEachFieldUnderItsOwnKey) {
    const auto dna = filled<ReportSomaticDNA>();
    EXPECT_EQ(dna->patientNo, "patientNo");
    EXPECT_EQ(dna->areaSearched, "areaSearched");
    EXPECT_EQ(dna->diagnosis, "diagnosis");
    EXPECT_EQ(dna->mutantCellRatio, "mutantCellRatio");
    EXPECT_EQ(dna->comment, "comment");
    const auto typing = filled<ReportGermlineDNA>();
    EXPECT_EQ(typing->patientNo, "patientNo");
    EXPECT_EQ(typing->areaSearched, "areaSearched");
    EXPECT_EQ(typing->allelicType, "allelicType");
    const auto control = filled<ReportGermlineRNA>();
    EXPECT_EQ(control->gene, "gene");
    EXPECT_EQ(control->diagnosis, "diagnosis");
    EXPECT_EQ(control->numberOfReads, "numberOfReads");
    EXPECT_EQ(control->comment, "comment");
    const auto fusion = filled<ReportSomaticRNA>();
    EXPECT_EQ(fusion->gene, "gene");
    EXPECT_EQ(fusion->diagnosis, "diagnosis");
    EXPECT_EQ(fusion->numberOfReads, "numberOfReads");
    EXPECT_EQ(fusion->comment, "comment");
}
