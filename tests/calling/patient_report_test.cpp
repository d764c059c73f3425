// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <clocale>
#include <cstdio>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "calling/domain_builder.h"
#include "calling/result_calc.h"
#include "settings/settings_table.h"

namespace calling {
namespace {

using archive::Text;
using testing::_;
using testing::ElementsAre;
using Texts = std::vector<Text>;

class PatientReport : public testing::Test {
protected:
    PatientReport() {
        settings.setValue(settings::key::kCopyNumberOfInternalControl, std::string("100000"));
        rows.germlineDNAResultMutAr.emplace();
        rows.somaticDNAResultMutAr.emplace();
        rows.germlineRNAResultMutAr.emplace();
        rows.somaticRNAResultMutAr.emplace();
    }

    void report(std::vector<DomainRef> domains) {
        calculator.summarizeResultForPatient(
            "7", archive::RecordList<catalogue::MutDomain>::of(std::move(domains)), rows);
    }

    settings::MemorySettingsStore settings;
    ResultCalc calculator{settings};
    PatientRows rows;
};

/// A mutation as calling leaves it.
MutationRef called(const char* name, const char* call, const char* comment = "",
                   const char* ratio = "") {
    auto result = mutation(name, 0);
    result->posNegDetectedOrAlleleType = call;
    result->mutantCellRatio = ratio;
    result->comment = comment;
    return result;
}

/// A fusion or control with its count and its call.
MutationRef counted(const char* name, std::int64_t match, const char* call) {
    auto result = mutation(name, match);
    result->posNegDetectedOrAlleleType = call;
    return result;
}

DomainRef bim(const char* alleleType) {
    return domain("Germline", "BIM", {called("wt", alleleType), called("del", "")});
}

DomainRef somatic(std::vector<MutationRef> mutants) {
    mutants.insert(mutants.begin(), called("wt", ""));
    return domain("SomaticDNA", "BRAF", std::move(mutants));
}

Texts texts(const ReportGermlineDNA& row) {
    return {row.patientNo, row.areaSearched, row.allelicType};
}

Texts texts(const ReportSomaticDNA& row) {
    return {row.patientNo, row.areaSearched, row.diagnosis, row.mutantCellRatio, row.comment};
}

template <class RNARow>
Texts texts(const RNARow& row) {
    return {row.patientNo, row.gene, row.diagnosis, row.numberOfReads, row.comment};
}

/// The texts of every row, in the order of the row's fields.
template <class Row>
std::vector<Texts> table(const archive::ListOf<Row>& list) {
    std::vector<Texts> result;
    for (const auto& row : archive::orEmpty(list)) {
        result.push_back(texts(*row));
    }
    return result;
}

// --- Any row

TEST_F(PatientReport, OfAnEmptyCatalogueChangesNothing) {
    report({bim("wt/wt")});
    calculator.summarizeResultForPatient("7", std::nullopt, rows);
    report({});
    EXPECT_EQ(rows.germlineDNAResultMutAr->size(), 1U);
    EXPECT_TRUE(rows.somaticDNAResultMutAr->empty());
    EXPECT_TRUE(rows.germlineRNAResultMutAr->empty());
    EXPECT_TRUE(rows.somaticRNAResultMutAr->empty());
}

TEST_F(PatientReport, NumbersTheFirstDNARowOfEitherKind) {
    report({somatic({called("V600E", "Negative")}), bim("wt/wt")});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "BRAF", "Negative", "", ""}));
    EXPECT_THAT(table(rows.germlineDNAResultMutAr), ElementsAre(Texts{"", "BIM", "wt/wt"}));
}

TEST_F(PatientReport, NumbersOnlyTheFirstOfSeveralRows) {
    report({bim("wt/mut"), somatic({called("V600E", "Positive"), called("V600K", "Positive")}),
            somatic({})});
    EXPECT_EQ((*rows.germlineDNAResultMutAr)[0]->patientNo, "7");
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(ElementsAre("", _, _, _, _), ElementsAre("", _, _, _, _),
                            ElementsAre("", _, _, _, _)));
}

TEST_F(PatientReport, NumbersTheFirstSomaticRNARowByItself) {
    report({bim("wt/wt"), domain("germline_mRNA", "RNA", {counted("OAZ1", 5, "Detected")}),
            domain("fusion_RNA", "ALK", {counted("EML4", 3, "Positive")}),
            domain("fusion_RNA", "RET", {counted("KIF5B", 4, "Positive")})});
    EXPECT_EQ((*rows.germlineDNAResultMutAr)[0]->patientNo, "7");
    EXPECT_EQ((*rows.germlineRNAResultMutAr)[0]->patientNo, "");
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->patientNo, "7");
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[1]->patientNo, "");
}

TEST_F(PatientReport, ReplacedRowsUseUpThePatientNumber) {
    report({bim("wt/wt"), bim("mut/mut"), somatic({})});
    EXPECT_THAT(table(rows.germlineDNAResultMutAr), ElementsAre(Texts{"", "BIM", "mut/mut"}));
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->patientNo, "");
}

TEST_F(PatientReport, SharesTheDomainOfEachRow) {
    const auto germline = bim("wt/wt");
    const auto dna = somatic({called("V600E", "Positive")});
    const auto negativeDNA = somatic({});
    const auto rna = domain("germline_mRNA", "RNA", {mutation("OAZ1", 1)});
    const auto fusion = domain("fusion_RNA", "ALK", {counted("EML4", 3, "Positive")});
    const auto noFusion = domain("fusion_RNA", "RET", {counted("KIF5B", 0, "Negative")});
    report({germline, dna, negativeDNA, rna, fusion, noFusion});
    EXPECT_EQ((*rows.germlineDNAResultMutAr)[0]->mutDomain, germline);
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->mutDomain, dna);
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[1]->mutDomain, negativeDNA);
    EXPECT_EQ((*rows.germlineRNAResultMutAr)[0]->mutDomain, rna);
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->mutDomain, fusion);
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[1]->mutDomain, noFusion);
}

TEST_F(PatientReport, MadeTwiceAppendsSomaticRowsAndReplacesGermlineRows) {
    const std::vector<DomainRef> domains{
        bim("wt/wt"), somatic({}), domain("germline_mRNA", "RNA", {mutation("OAZ1", 1)}),
        domain("fusion_RNA", "ALK", {counted("EML4", 3, "Positive")})};
    report(domains);
    report(domains);
    EXPECT_EQ(rows.germlineDNAResultMutAr->size(), 1U);
    EXPECT_EQ(rows.germlineRNAResultMutAr->size(), 1U);
    EXPECT_EQ(rows.somaticDNAResultMutAr->size(), 2U);
    EXPECT_EQ(rows.somaticRNAResultMutAr->size(), 2U);
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[1]->patientNo, "7");
}

TEST_F(PatientReport, BeginsListsThatAreNotThere) {
    rows = PatientRows{};
    report({somatic({}), domain("fusion_RNA", "ALK", {counted("EML4", 3, "Positive")})});
    EXPECT_FALSE(rows.germlineDNAResultMutAr.has_value());
    EXPECT_EQ(archive::orEmpty(rows.somaticDNAResultMutAr).size(), 1U);
    EXPECT_EQ(archive::orEmpty(rows.somaticRNAResultMutAr).size(), 1U);
}

TEST_F(PatientReport, MakesNoRowOfAFaultyCatalogue) {
    const auto null = std::make_shared<catalogue::MutDomain>();
    const auto nullGermline = std::make_shared<catalogue::MutDomain>();
    nullGermline->type = "Germline";
    report({null, nullGermline, domain("Germline", "BIM", {}),
            domain("Germline", "BIM", {called("wt", "wt/wt")}), domain("germline_mRNA", "RNA", {}),
            domain("fusion_RNA", "ALK", {})});
    EXPECT_TRUE(rows.germlineDNAResultMutAr->empty());
    EXPECT_TRUE(rows.germlineRNAResultMutAr->empty());
    EXPECT_TRUE(rows.somaticRNAResultMutAr->empty());
}

TEST_F(PatientReport, MakesNoRowOfATypeWithoutARule) {
    report({domain("control", "BIM", {counted("OAZ1", 5, "Positive")}),
            domain("Germline", "EGFR", {called("wt", "wt/wt"), called("del", "")}),
            domain("somaticDNA", "BRAF", {called("wt", ""), called("V600E", "Positive")})});
    EXPECT_TRUE(rows.germlineDNAResultMutAr->empty());
    EXPECT_TRUE(rows.somaticDNAResultMutAr->empty());
    EXPECT_TRUE(rows.somaticRNAResultMutAr->empty());
}

// --- Germline DNA

TEST_F(PatientReport, KeepsOnlyTheLastAlleleTyping) {
    report({bim("wt/wt"), bim("wt/mut")});
    EXPECT_THAT(table(rows.germlineDNAResultMutAr), ElementsAre(Texts{"", "BIM", "wt/mut"}));
}

// --- Somatic DNA

TEST_F(PatientReport, MakesOneRowPerPositiveMutationInMutationOrder) {
    report({somatic({called("V600E", "Positive", "0.0000000001", "60.0%"),
                     called("V600R", "ND *1", ""), called("V600K", "Positive", "", "2.4%")})});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "V600E", "Positive", "60.0%", "0.0000000001"},
                            Texts{"", "V600K", "Positive", "2.4%", ""}));
}

TEST_F(PatientReport, MakesOneSummaryRowWithoutAPositiveMutation) {
    report({somatic({called("V600E", "Negative"), called("V600K", "Negative")})});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "BRAF", "Negative", "", ""}));
}

TEST_F(PatientReport, IgnoresAPositiveNormalReference) {
    report({domain("SomaticDNA", "BRAF", {called("wt", "Positive"), called("V600E", "Negative")})});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "BRAF", "Negative", "", ""}));
}

TEST_F(PatientReport, CallsADomainWithFewerThanTwoMutationsNegative) {
    report(
        {domain("SomaticDNA", "BRAF", {}), domain("SomaticDNA", "KRAS", {called("wt", "ND *1")})});
    EXPECT_THAT(
        table(rows.somaticDNAResultMutAr),
        ElementsAre(Texts{"7", "BRAF", "Negative", "", ""}, Texts{"", "KRAS", "Negative", "", ""}));
}

TEST_F(PatientReport, CommentsANegativeDomainWithItsLargestChanceProbability) {
    report({somatic({called("V600E", "Negative", "0.0000001000"),
                     called("V600K", "Negative", "0.0000020000"),
                     called("V600R", "Negative", "0.0000005000")})});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "BRAF", "Negative", "", "0.0000020000"}));
}

TEST_F(PatientReport, TakesTheFirstOfEqualChanceProbabilities) {
    report({somatic({called("a", "Negative", " 0.50"), called("b", "Negative", "0.5")})});
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->comment, " 0.50");
}

TEST_F(PatientReport, DropsTheChanceProbabilityOfADomainThatWasNotDetermined) {
    report({somatic({called("V600E", "Negative", "0.0000020000"), called("V600K", "ND *1")})});
    EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                ElementsAre(Texts{"7", "BRAF", "ND *1", "", ""}));
}

TEST_F(PatientReport, TranslatesEveryCallThatDecidesADomain) {
    const struct {
        const char* call;
        const char* diagnosis;
    } cases[] = {{"NDNegative", "NDNegative"},
                 {"ND *0", "Too few reads"},
                 {"ND *1", "ND *1"},
                 {"ND *2", "ND *2"},
                 {"Not Determined", "Negative"},
                 {"Negative", "Negative"},
                 {"", "Negative"},
                 {"ND *3", "Negative"},
                 {"nd *1", "Negative"}};
    for (const auto& [call, diagnosis] : cases) {
        rows.somaticDNAResultMutAr.emplace();
        report({somatic({called("V600E", call)})});
        EXPECT_THAT(table(rows.somaticDNAResultMutAr),
                    ElementsAre(Texts{"7", "BRAF", diagnosis, "", ""}))
            << call;
    }
}

TEST_F(PatientReport, LetsTheFirstDecidingMutationDecide) {
    report({somatic({called("a", "Negative"), called("b", "ND *2"), called("c", "ND *0"),
                     called("d", "NDNegative")})});
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->diagnosis, "ND *2");
}

TEST_F(PatientReport, ReadsTheCommentOfADecidingMutationForNothing) {
    report({somatic({called("a", "ND *1", "0.9")})});
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->comment, "");
}

TEST_F(PatientReport, ReadsCommentsThatAreNoNumbersAsZero) {
    for (const char* comment : {"", "copies", "nan", "inf", "-0.5", "0x1p4", ".", "-", "e5", ","}) {
        rows.somaticDNAResultMutAr.emplace();
        report({somatic({called("a", "Negative", comment)})});
        EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->comment, "") << comment;
    }
}

TEST_F(PatientReport, ReadsTheNumberThatACommentBeginsWith) {
    for (const char* comment : {"0.5x", "\t\n 1e-9 of all", "+.25", "1e400", "2.", "1e", "1,5"}) {
        rows.somaticDNAResultMutAr.emplace();
        report({somatic({called("a", "Negative", comment), called("b", "Negative", "1e-10")})});
        EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->comment, comment);
    }
}

TEST_F(PatientReport, ReadsAbsentTextsAsEmpty) {
    auto null = std::make_shared<catalogue::Mutation>();
    null->posNegDetectedOrAlleleType.reset();
    null->comment.reset();
    report({somatic({null}), domain("fusion_RNA", "ALK", {null})});
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->diagnosis, "Negative");
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->diagnosis, "Not Detected");
}

TEST_F(PatientReport, ReadsChanceProbabilitiesTheSameUnderACommaLocale) {
    struct GermanNumbers {
        GermanNumbers() : set(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {}
        ~GermanNumbers() { std::setlocale(LC_ALL, "C"); }
        bool set;
    } locale;
    ASSERT_TRUE(locale.set) << "the locale de_DE.UTF-8 is not installed";
    char probe[8];
    std::snprintf(probe, sizeof probe, "%.1f", 0.5);
    ASSERT_STREQ(probe, "0,5");

    report({somatic({called("a", "Negative", "0.0000020000"), called("b", "Negative", "0.1")}),
            domain("fusion_RNA", "ALK", {counted("control", 1234567, "Detected")})});
    EXPECT_EQ((*rows.somaticDNAResultMutAr)[0]->comment, "0.1");
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->numberOfReads, "1234567");
}

// --- Germline RNA

TEST_F(PatientReport, TellsWhetherTheRNAIsDegraded) {
    report({domain("germline_mRNA", "RNA", {mutation("OAZ1", 1234), mutation("x", 5)})});
    EXPECT_THAT(table(rows.germlineRNAResultMutAr),
                ElementsAre(Texts{"", "RNA", "RNA not degraded", "1234", ""}));
    report({domain("germline_mRNA", "RNA", {mutation("OAZ1", 0)})});
    EXPECT_THAT(table(rows.germlineRNAResultMutAr),
                ElementsAre(Texts{"", "RNA", "RNA degraded", "0", ""}));
}

TEST_F(PatientReport, LeavesGermlineRNARowsAsTheyWereWithoutTheQualityControl) {
    report({domain("germline_mRNA", "RNA", {mutation("OAZ1", 3)})});
    report({domain("germline_mRNA", "other", {mutation("OAZ11", 5), mutation("OAZ1", 5)})});
    EXPECT_THAT(table(rows.germlineRNAResultMutAr),
                ElementsAre(Texts{"", "RNA", "RNA not degraded", "3", ""}));
}

// --- Somatic RNA

TEST_F(PatientReport, MakesOneRowPerPositiveFusionFromTheFirstMutationOn) {
    report({domain("fusion_RNA", "ALK",
                   {counted("EML4", 3, "Positive"), counted("TFG", 0, "Negative"),
                    counted("KIF5B", 12, "Positive")})});
    EXPECT_THAT(table(rows.somaticRNAResultMutAr),
                ElementsAre(Texts{"7", "EML4", "Positive", "3", ""},
                            Texts{"", "KIF5B", "Positive", "12", ""}));
}

TEST_F(PatientReport, SummarizesAPanelByItsFirstMutation) {
    const struct {
        const char* name;
        std::int64_t match;
        Texts expected;
    } cases[] = {
        {"OAZ1", 42, {"7", "ALK", "RNA not degraded", "42", ""}},
        {"OAZ1", 0, {"7", "ALK", "RNA degraded", "0", ""}},
        {"the control", 100, {"7", "ALK", "Negative", "100", "<4500 copies"}},
        {"the control", 0, {"7", "ALK", "Control Not Working", "", ""}},
        {"OAZ1 control", 100, {"7", "ALK", "Negative", "100", "<4500 copies"}},
        {"Control", 42, {"7", "ALK", "Not Detected", "0", ""}},
        {"EML4", 0, {"7", "ALK", "Not Detected", "0", ""}},
        {"EML4", 42, {"7", "ALK", "Not Detected", "0", ""}},
    };
    for (const auto& [name, match, expected] : cases) {
        rows.somaticRNAResultMutAr.emplace();
        report({domain("fusion_RNA", "ALK",
                       {counted(name, match, "Detected"), counted("TFG", 0, "Negative")})});
        EXPECT_THAT(table(rows.somaticRNAResultMutAr), ElementsAre(expected)) << name << match;
    }
}

TEST_F(PatientReport, LimitsDetectionByTheReadsOfTheControl) {
    // (1 - 0.01^(1 / reads)) 100000, truncated
    const struct {
        std::int64_t reads;
        const char* limit;
    } cases[] = {{1, "<99000 copies"},  {2, "<90000 copies"},  {10, "<36904 copies"},
                 {100, "<4500 copies"}, {1000, "<459 copies"}, {1'000'000'000, "<0 copies"}};
    for (const auto& [reads, limit] : cases) {
        rows.somaticRNAResultMutAr.emplace();
        report({domain("fusion_RNA", "ALK", {counted("control", reads, "Detected")})});
        EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->comment, limit);
    }
}

TEST_F(PatientReport, ReadsTheCopiesOfTheControlWhenItNeedsThem) {
    const struct {
        settings::SettingValue copies;
        const char* limit;
    } cases[] = {{std::int64_t{1000}, "<45 copies"},
                 {std::string("200000"), "<9001 copies"},
                 {std::string(""), "<0 copies"},
                 {std::string("-1000"), "<-45 copies"}};
    for (const auto& [copies, limit] : cases) {
        rows.somaticRNAResultMutAr.emplace();
        settings.setValue(settings::key::kCopyNumberOfInternalControl, copies);
        report({domain("fusion_RNA", "ALK", {counted("control", 100, "Detected")})});
        EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->comment, limit);
    }
}

TEST_F(PatientReport, ReadsMissingCopiesOfTheControlAsNone) {
    settings::MemorySettingsStore empty;
    ResultCalc(empty).summarizeResultForPatient(
        "7",
        archive::RecordList<catalogue::MutDomain>::of(
            {domain("fusion_RNA", "ALK", {counted("control", 100, "Detected")})}),
        rows);
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->comment, "<0 copies");
}

TEST_F(PatientReport, KeepsTheLimitWithinAnInteger) {
    settings.setValue(settings::key::kCopyNumberOfInternalControl,
                      std::int64_t{9'223'372'036'854'775'807});
    report({domain("fusion_RNA", "ALK", {counted("control", -1, "Detected")})});
    // 1 - exp(4.6) is -99, and -99 times 2^63 is beyond the least integer.
    EXPECT_EQ((*rows.somaticRNAResultMutAr)[0]->comment, "<-9223372036854775808 copies");
}

} // namespace
} // namespace calling
