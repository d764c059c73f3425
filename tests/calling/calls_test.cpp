// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The thresholds behind the somatic calls below, for a background of 0.001 and rates of 0.001 and
// 0.05: 5000 reads are negative up to 16 (normal search at 0.005) and positive from 13 (exact
// search, mean 5), 20000 reads are negative up to 83 and positive from 33. A background of 0.01
// makes 5000 reads positive from 71, so that 17 to 70 are undecided.
#include <clocale>
#include <cstdio>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "calling/domain_builder.h"
#include "calling/result_calc.h"
#include "settings/settings_table.h"

namespace calling {
namespace {

using archive::Text;
using catalogue::Mutation;
using settings::SettingValue;

class Calls : public testing::Test {
protected:
    Calls() {
        settings.setValue(settings::key::kND1Threshold, std::string("500"));
        settings.setValue(settings::key::kND2Threshold, std::string("10"));
        settings.setValue(settings::key::kCalculateFalsePositiveRate, false);
    }

    void call(const DomainRef& domain) { calculator.calculateResult(*domain); }

    /// The call of a somatic mutation with `match` of `total` informative reads.
    MutationRef calledSomatic(MutationRef mutant, std::int64_t total) {
        auto somatic = domain("SomaticDNA", "KIT", {mutation("wt", total - mutant->match), mutant});
        somatic->totalNumberOfNormalReads = total - mutant->match;
        call(somatic);
        return mutant;
    }

    Text calledAlleleType(std::int64_t wildType, std::int64_t mutant) {
        auto bim = domain("Germline", "BIM", {mutation("wt", wildType), mutation("del", mutant)});
        call(bim);
        return (*bim->mutationMutAr)[0]->posNegDetectedOrAlleleType;
    }

    settings::MemorySettingsStore settings;
    ResultCalc calculator{settings};
};

void expectTexts(const Mutation& mutation, const char* call, const char* ratio,
                 const char* comment) {
    EXPECT_EQ(mutation.posNegDetectedOrAlleleType, Text(call));
    EXPECT_EQ(mutation.mutantCellRatio, Text(ratio));
    EXPECT_EQ(mutation.comment, Text(comment));
}

void holdTexts(Mutation& mutation) {
    mutation.posNegDetectedOrAlleleType = "call before";
    mutation.mutantCellRatio = "ratio before";
    mutation.comment = "comment before";
}

void expectHeldTexts(const Mutation& mutation) {
    expectTexts(mutation, "call before", "ratio before", "comment before");
}

/// A mutation that holds texts of an earlier call.
MutationRef heldMutation(const char* name, std::int64_t match) {
    auto result = mutation(name, match);
    holdTexts(*result);
    return result;
}

// --- Settings

TEST_F(Calls, RepairThresholdsStoredAsZero) {
    settings.setValue(settings::key::kND1Threshold, std::int64_t{0});
    settings.setValue(settings::key::kND2Threshold, std::int64_t{0});
    EXPECT_EQ(calledSomatic(mutation("V600E", 99), 99)->posNegDetectedOrAlleleType, "ND *1");
    EXPECT_EQ(settings.value(settings::key::kND1Threshold), SettingValue(std::int64_t{100}));
    EXPECT_EQ(settings.value(settings::key::kND2Threshold), SettingValue(std::int64_t{10}));
    EXPECT_EQ(calledSomatic(mutation("V600E", 100), 100)->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, UseTheRepairedThresholdInTheCallThatRepairsIt) {
    settings.setValue(settings::key::kND1Threshold, std::string("-3"));
    EXPECT_EQ(calledSomatic(mutation("V600E", 100), 100)->posNegDetectedOrAlleleType, "Positive");
    settings.setValue(settings::key::kND1Threshold, std::string("none"));
    EXPECT_EQ(calledSomatic(mutation("V600E", 99), 99)->posNegDetectedOrAlleleType, "ND *1");
}

TEST_F(Calls, RepairMissingThresholds) {
    settings::MemorySettingsStore empty;
    ResultCalc(empty).calculateResult(*domain("control", "c", {}));
    EXPECT_EQ(empty.value(settings::key::kND1Threshold), SettingValue(std::int64_t{100}));
    EXPECT_EQ(empty.value(settings::key::kND2Threshold), SettingValue(std::int64_t{10}));
    EXPECT_FALSE(empty.value(settings::key::kCalculateFalsePositiveRate).has_value());
}

TEST_F(Calls, UseTheRepairedThresholdWhereNoneIsStored) {
    for (const auto& [total, expected] : {std::pair{99, "ND *1"}, std::pair{100, "Positive"}}) {
        settings::MemorySettingsStore empty;
        auto mutant = mutation("V600E", total);
        ResultCalc(empty).calculateResult(
            *domain("SomaticDNA", "KIT", {mutation("wt", 0), mutant}));
        EXPECT_EQ(mutant->posNegDetectedOrAlleleType, Text(expected)) << total;
    }
}

TEST_F(Calls, LeaveUsableThresholdsAsStored) {
    settings.setValue(settings::key::kND1Threshold, std::string("1"));
    call(domain("control", "c", {}));
    EXPECT_EQ(settings.value(settings::key::kND1Threshold), SettingValue(std::string("1")));
    EXPECT_EQ(settings.value(settings::key::kND2Threshold), SettingValue(std::string("10")));
}

TEST_F(Calls, TellTheReadThresholdWithoutRepairingIt) {
    EXPECT_EQ(ResultCalc::readThreshold(settings), 500);
    settings.setValue(settings::key::kND1Threshold, std::string("0"));
    EXPECT_EQ(ResultCalc::readThreshold(settings), 100);
    EXPECT_EQ(settings.value(settings::key::kND1Threshold), SettingValue(std::string("0")));
}

// --- Allele typing

TEST_F(Calls, TypeNoAllelesBelowAHundredReads) {
    EXPECT_EQ(calledAlleleType(99, 99), "Not Determined");
    EXPECT_EQ(calledAlleleType(0, 0), "Not Determined");
}

TEST_F(Calls, TypeWildTypeWhereMutantReadsAreBelowOnePerCent) {
    EXPECT_EQ(calledAlleleType(100, 0), "wt/wt");
    EXPECT_EQ(calledAlleleType(1000, 9), "wt/wt");
}

TEST_F(Calls, TypeMixedFromOnePerCentOn) {
    EXPECT_EQ(calledAlleleType(100, 1), "wt/mut");
    EXPECT_EQ(calledAlleleType(1000, 10), "wt/mut");
}

TEST_F(Calls, TypeMixedUpToTenMutantReadsForOne) {
    EXPECT_EQ(calledAlleleType(10, 100), "wt/mut");
    EXPECT_EQ(calledAlleleType(99, 100), "wt/mut");
}

TEST_F(Calls, TypeMutantAboveTenMutantReadsForOne) {
    EXPECT_EQ(calledAlleleType(9, 100), "mut/mut");
    EXPECT_EQ(calledAlleleType(0, 100), "mut/mut");
}

TEST_F(Calls, WriteTheAlleleTypeIntoTheFirstMutationOnly) {
    auto bim = domain("Germline", "BIM", {heldMutation("wt", 200), heldMutation("del", 200)});
    call(bim);
    expectTexts(*(*bim->mutationMutAr)[0], "wt/mut", "", "");
    expectHeldTexts(*(*bim->mutationMutAr)[1]);
}

TEST_F(Calls, LeaveAnAlleleTypingWithOneMutationUntouched) {
    auto bim = domain("Germline", "BIM", {heldMutation("wt", 200)});
    call(bim);
    expectHeldTexts(*(*bim->mutationMutAr)[0]);
}

TEST_F(Calls, LeaveOtherGermlineDomainsUntouched) {
    for (const char* name : {"bim", "BIM2", ""}) {
        auto other = domain("Germline", name, {heldMutation("wt", 200), heldMutation("del", 9)});
        call(other);
        expectHeldTexts(*(*other->mutationMutAr)[0]);
    }
}

TEST_F(Calls, LeaveTypesWithoutARuleUntouched) {
    for (const char* type :
         {"control", "germline", "somaticDNA", "SomaticDNA ", "fusion_rna", ""}) {
        auto other = domain(type, "BIM", {heldMutation("wt", 900), heldMutation("control", 900)});
        call(other);
        expectHeldTexts(*(*other->mutationMutAr)[0]);
        expectHeldTexts(*(*other->mutationMutAr)[1]);
    }
}

TEST_F(Calls, AcceptDomainsWithoutAnyText) {
    catalogue::MutDomain null;
    calculator.calculateResult(null);
    for (const char* type : {"Germline", "SomaticDNA", "germline_mRNA", "fusion_RNA"}) {
        null.type = type;
        calculator.calculateResult(null);
        EXPECT_FALSE(null.mutationMutAr.has_value());
        call(domain(type, "BIM", {}));
    }
}

// --- Somatic mutations

TEST_F(Calls, WriteNothingForASomaticDomainWithASingleMutation) {
    auto somatic = domain("SomaticDNA", "KIT", {heldMutation("wt", 900)});
    call(somatic);
    expectHeldTexts(*(*somatic->mutationMutAr)[0]);
}

TEST_F(Calls, LeaveTheNormalReferenceUncalled) {
    auto somatic = domain("SomaticDNA", "KIT", {heldMutation("wt", 0), mutation("D816V", 900)});
    call(somatic);
    expectHeldTexts(*(*somatic->mutationMutAr)[0]);
    EXPECT_EQ((*somatic->mutationMutAr)[1]->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, NeedTheThresholdOfInformativeReads) {
    auto few = heldMutation("V600E", 100);
    calledSomatic(few, 499);
    expectTexts(*few, "ND *1", "", "");
    EXPECT_EQ(calledSomatic(mutation("V600E", 100), 500)->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, CountOnlyTheMutationsOwnReadsWithTheNormalOnes) {
    auto somatic = domain("SomaticDNA", "KIT",
                          {mutation("wt", 0), mutation("D816V", 300), mutation("N822K", 299)});
    somatic->totalNumberOfNormalReads = 200;
    call(somatic);
    EXPECT_EQ((*somatic->mutationMutAr)[1]->posNegDetectedOrAlleleType, "Positive");
    EXPECT_EQ((*somatic->mutationMutAr)[2]->posNegDetectedOrAlleleType, "ND *1");
}

TEST_F(Calls, AreNegativeUpToTheFalseNegativeThreshold) {
    auto mutant = heldMutation("V600E", 16);
    calledSomatic(mutant, 5000);
    expectTexts(*mutant, "Negative", "", "");
    EXPECT_EQ(calledSomatic(mutation("V600E", 17), 5000)->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, AreNegativeWhereBothThresholdsAreMet) {
    // 13 reads already reach the false-positive threshold.
    EXPECT_EQ(calledSomatic(mutation("V600E", 13), 5000)->posNegDetectedOrAlleleType, "Negative");
}

TEST_F(Calls, AreUndecidedBetweenTheThresholds) {
    for (const std::int64_t match : {17, 70}) {
        auto undecided = heldMutation("V600E", match);
        undecided->referenceFrequencyOfTheMutantReads = 0.01;
        undecided->minimumRequiredNumberOfInformativeReads = 5001;
        calledSomatic(undecided, 5000);
        expectTexts(*undecided, "Not Determined", "", "");
    }
    auto positive = mutation("V600E", 71);
    positive->referenceFrequencyOfTheMutantReads = 0.01;
    EXPECT_EQ(calledSomatic(positive, 5000)->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, KeepEarlierTextsWhereUndecidedWithReadsEnough) {
    auto undecided = heldMutation("V600E", 30);
    undecided->referenceFrequencyOfTheMutantReads = 0.01;
    undecided->minimumRequiredNumberOfInformativeReads = 5000;
    calledSomatic(undecided, 5000);
    expectHeldTexts(*undecided);
}

TEST_F(Calls, KeepTheTextsOfAnEarlierCallWhereUndecidedNow) {
    auto mutant = mutation("V600E", 71);
    mutant->referenceFrequencyOfTheMutantReads = 0.01;
    calledSomatic(mutant, 5000);
    expectTexts(*mutant, "Positive", "2.8%", "");
    mutant->match = 70;
    calledSomatic(mutant, 5000);
    expectTexts(*mutant, "Positive", "2.8%", "");
}

TEST_F(Calls, KeepNoNegativeCallInADeepRun) {
    // From 296564 reads on the start of the false-negative search underflows, so no count of
    // mutant reads is negative any more; below the false-positive threshold it stays undecided.
    EXPECT_EQ(calledSomatic(mutation("V600E", 0), 296'563)->posNegDetectedOrAlleleType, "Negative");
    EXPECT_EQ(calledSomatic(mutation("V600E", 0), 296'564)->posNegDetectedOrAlleleType, "");
}

TEST_F(Calls, GiveTwiceTheFractionOfMutantReadsAsRatio) {
    EXPECT_EQ(calledSomatic(mutation("V600E", 300), 1000)->mutantCellRatio, "60.0%");
    EXPECT_EQ(calledSomatic(mutation("V600E", 499), 1000)->mutantCellRatio, "99.8%");
    EXPECT_EQ(calledSomatic(mutation("V600E", 123), 10'000)->mutantCellRatio, "2.5%");
}

TEST_F(Calls, CapTheRatioAtAHundredPerCent) {
    EXPECT_EQ(calledSomatic(mutation("V600E", 500), 1000)->mutantCellRatio, "100.0%");
    EXPECT_EQ(calledSomatic(mutation("V600E", 600), 1000)->mutantCellRatio, "100.0%");
    EXPECT_EQ(calledSomatic(mutation("V600E", 1000), 1000)->mutantCellRatio, "100.0%");
}

TEST_F(Calls, CommentAPositiveOnlyOnRequest) {
    EXPECT_EQ(calledSomatic(mutation("V600E", 300), 1000)->comment, "");
    settings.setValue(settings::key::kCalculateFalsePositiveRate, true);
    EXPECT_EQ(calledSomatic(mutation("V600E", 300), 1000)->comment, "0.0000000001");
}

TEST_F(Calls, CommentAPositiveWithItsChanceProbability) {
    settings.setValue(settings::key::kCalculateFalsePositiveRate, true);
    // P(X > 8) for 1000 reads at 0.001 is 1.0936095204800178e-06.
    auto mutant = calledSomatic(mutation("V600E", 8), 1000);
    expectTexts(*mutant, "Positive", "1.6%", "0.0000010936");
}

TEST_F(Calls, CommentNoNegative) {
    settings.setValue(settings::key::kCalculateFalsePositiveRate, true);
    EXPECT_EQ(calledSomatic(mutation("V600E", 1), 1000)->comment, "");
}

TEST_F(Calls, WriteNumbersTheSameUnderACommaLocale) {
    struct GermanNumbers {
        GermanNumbers() : set(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {}
        ~GermanNumbers() { std::setlocale(LC_ALL, "C"); }
        bool set;
    } locale;
    ASSERT_TRUE(locale.set) << "the locale de_DE.UTF-8 is not installed";
    char probe[8];
    std::snprintf(probe, sizeof probe, "%.1f", 0.5);
    ASSERT_STREQ(probe, "0,5");

    settings.setValue(settings::key::kCalculateFalsePositiveRate, true);
    expectTexts(*calledSomatic(mutation("V600E", 8), 1000), "Positive", "1.6%", "0.0000010936");
}

// --- Transcripts

TEST_F(Calls, DetectTheFirstTranscriptOnly) {
    auto seen = domain("germline_mRNA", "OAZ1", {heldMutation("OAZ1", 1), heldMutation("x", 5)});
    call(seen);
    expectTexts(*(*seen->mutationMutAr)[0], "Detected", "", "");
    expectHeldTexts(*(*seen->mutationMutAr)[1]);

    auto unseen = domain("germline_mRNA", "OAZ1", {heldMutation("OAZ1", 0)});
    call(unseen);
    expectTexts(*(*unseen->mutationMutAr)[0], "NotDetected", "", "");
}

// --- Fusion panels

TEST_F(Calls, FusionsWithoutAControlIncludeTheFirstMutation) {
    auto panel = domain("fusion_RNA", "ALK", {heldMutation("EML4", 0), heldMutation("KIF5B", 2)});
    call(panel);
    expectTexts(*(*panel->mutationMutAr)[0], "Negative", "ratio before", "comment before");
    expectTexts(*(*panel->mutationMutAr)[1], "Positive", "ratio before", "comment before");
    (*panel->mutationMutAr)[0]->match = 1;
    call(panel);
    EXPECT_EQ((*panel->mutationMutAr)[0]->posNegDetectedOrAlleleType, "Positive");
}

TEST_F(Calls, ASilentControlLeavesEachFusionToItsOwnCount) {
    auto panel = domain(
        "fusion_RNA", "ALK",
        {heldMutation("internal control", 0), heldMutation("EML4", 3), heldMutation("KIF5B", 0)});
    call(panel);
    expectTexts(*(*panel->mutationMutAr)[0], "NotDetected", "ratio before", "comment before");
    expectTexts(*(*panel->mutationMutAr)[1], "Positive", "ratio before", "comment before");
    expectTexts(*(*panel->mutationMutAr)[2], "Negative", "ratio before", "");
}

TEST_F(Calls, AWorkingControlWithoutFusionAnnouncesCopiesInTheLastComment) {
    auto panel =
        domain("fusion_RNA", "ALK",
               {heldMutation("ALKcontrol", 7), heldMutation("EML4", 0), heldMutation("KIF5B", 0)});
    call(panel);
    expectTexts(*(*panel->mutationMutAr)[0], "Detected", "ratio before", "comment before");
    expectTexts(*(*panel->mutationMutAr)[1], "Negative", "ratio before", "comment before");
    expectTexts(*(*panel->mutationMutAr)[2], "Negative", "ratio before", "copies");
}

TEST_F(Calls, AFusionBesideAWorkingControlClearsTheLastComment) {
    auto panel = domain("fusion_RNA", "ALK",
                        {mutation("control", 7), mutation("EML4", 1), heldMutation("KIF5B", 0)});
    call(panel);
    expectTexts(*(*panel->mutationMutAr)[2], "Negative", "ratio before", "");
}

TEST_F(Calls, AControlAloneCarriesTheLastCommentItself) {
    auto seen = domain("fusion_RNA", "ALK", {heldMutation("control", 7)});
    call(seen);
    expectTexts(*(*seen->mutationMutAr)[0], "Detected", "ratio before", "copies");
    auto unseen = domain("fusion_RNA", "ALK", {heldMutation("control", 0)});
    call(unseen);
    expectTexts(*(*unseen->mutationMutAr)[0], "NotDetected", "ratio before", "");
}

TEST_F(Calls, TheControlIsNamedInLowerCase) {
    auto panel = domain("fusion_RNA", "ALK", {mutation("Control", 7)});
    call(panel);
    EXPECT_EQ((*panel->mutationMutAr)[0]->posNegDetectedOrAlleleType, "Positive");
}

} // namespace
} // namespace calling
