// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>
#include <random>
#include <utility>

#include <gtest/gtest.h>

#include "calling/domain_builder.h"
#include "calling/result_calc.h"

namespace calling {
namespace {

catalogue::Mutation& withRates(catalogue::Mutation& mutation, double background,
                               double falsePositive, double falseNegative) {
    mutation.referenceFrequencyOfTheMutantReads = background;
    mutation.allowableFalsePositiveRate = falsePositive;
    mutation.allowableFalseNegativeRate = falseNegative;
    return mutation;
}

bool canBePositive(double background, double falsePositive, double falseNegative,
                   std::int64_t readThreshold) {
    catalogue::Mutation mutation;
    return ResultCalc::callsPositiveWithoutMutantReads(
        withRates(mutation, background, falsePositive, falseNegative), readThreshold);
}

/// Whether the mutation is called positive with `total` normal and no mutant reads.
bool isCalledPositive(const MutationRef& mutant, std::int64_t total) {
    settings::MemorySettingsStore settings;
    settings.setValue("nD1Threshold", std::int64_t{1});
    auto somatic = domain("SomaticDNA", "KIT", {mutation("wt", total), mutant});
    somatic->totalNumberOfNormalReads = total;
    ResultCalc(settings).calculateResult(*somatic);
    return std::exchange(mutant->posNegDetectedOrAlleleType, "") == "Positive";
}

TEST(PositiveWithoutReads, CannotHappenWithTheRatesOfAWorkingCatalogue) {
    EXPECT_FALSE(canBePositive(0.001, 0.001, 0.05, 500));
    EXPECT_FALSE(canBePositive(0.0005, 0.01, 0.05, 100));
}

TEST(PositiveWithoutReads, HappensWithoutAnyBackground) {
    EXPECT_TRUE(canBePositive(0.0, 0.001, 0.05, 500));
}

TEST(PositiveWithoutReads, HappensOnlyWhereFewReadsStillFallShortOfTheFalseNegativeRate) {
    // 0.9998^598 = 0.8873 reaches 0.88, so background needs no read; but 0.995^597 is the last
    // power not below 0.05, and from 598 reads on a count of 0 is negative.
    EXPECT_TRUE(canBePositive(0.0002, 0.12, 0.05, 500));
    EXPECT_TRUE(canBePositive(0.0002, 0.12, 0.05, 597));
    EXPECT_FALSE(canBePositive(0.0002, 0.12, 0.05, 598));
}

TEST(PositiveWithoutReads, HappensInDeepRunsOfALowBackground) {
    // From 296564 reads on nothing is negative, and (1 - 1e-7)^296564 = 0.9708 reaches 0.95.
    EXPECT_TRUE(canBePositive(1e-7, 0.05, 0.05, 700));
    EXPECT_FALSE(canBePositive(1e-7, 0.02, 0.05, 700));
    // (1 - 1e-7)^512932 is the last power that reaches 0.95.
    EXPECT_TRUE(canBePositive(1e-7, 0.05, 0.05, 512'900));
    EXPECT_FALSE(canBePositive(1e-7, 0.05, 0.05, 512'950));
}

TEST(PositiveWithoutReads, HappensInDeepRunsWhereTheTargetIsOneHalf) {
    EXPECT_TRUE(canBePositive(0.01, 0.5, 0.05, 700));
    EXPECT_FALSE(canBePositive(0.01, 0.49, 0.05, 700));
}

TEST(PositiveWithoutReads, HappensWhereTheFalseNegativeSearchTurnsNormal) {
    // 0.995^900 = 0.0110 is below the rate already, but at 1006 reads the distribution function of
    // -2.249 is 0.0123, and 0.9995^1006 = 0.6046 reaches 0.58 but not 0.62.
    EXPECT_TRUE(canBePositive(0.0005, 0.42, 0.0122, 900));
    EXPECT_FALSE(canBePositive(0.0005, 0.38, 0.0122, 900));
}

TEST(PositiveWithoutReads, HappensWhereTheFalsePositiveSearchTurnsNormal) {
    // 0.95^100 = 0.0059 falls short of 0.02, but at 106 reads the distribution function of -1.916
    // is 0.0277 at one read. Above 134 reads 0.995^n is below 0.51, which makes a count of 0
    // negative.
    EXPECT_TRUE(canBePositive(0.05, 0.98, 0.51, 100));
    EXPECT_FALSE(canBePositive(0.05, 0.97, 0.51, 100));
    EXPECT_FALSE(canBePositive(0.05, 0.98, 0.51, 135));
}

TEST(PositiveWithoutReads, IsFoundWhereOneTotalAloneAllowsIt) {
    // Each time at the first total at which a search changes, and at none of its neighbours.
    // The false-negative search turns normal at 1006 reads: 0.012276, then 0.012240.
    EXPECT_TRUE(canBePositive(0.0005, 0.42, 0.01225, 900));
    EXPECT_TRUE(canBePositive(0.0005, 0.42, 0.01225, 1006));
    EXPECT_FALSE(canBePositive(0.0005, 0.42, 0.01225, 1007));
    // The false-positive search turns normal at 106 reads: 0.02766 at one read, then 0.02683.
    EXPECT_TRUE(canBePositive(0.05, 0.973, 0.51, 100));
    EXPECT_TRUE(canBePositive(0.05, 0.973, 0.51, 106));
    EXPECT_FALSE(canBePositive(0.05, 0.973, 0.51, 107));
    // From 296564 reads on nothing is negative; the background reaches its target up to there.
    const double rate = 1.0 - std::pow(1.0 - 1e-7, 296'564.5);
    EXPECT_TRUE(canBePositive(1e-7, rate, 0.05, 700));
    EXPECT_TRUE(canBePositive(1e-7, rate, 0.05, 296'564));
    EXPECT_FALSE(canBePositive(1e-7, rate, 0.05, 296'565));
}

TEST(PositiveWithoutReads, HappensForRatesThatAreNoRates) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(canBePositive(nan, 0.001, 0.05, 500));
    EXPECT_TRUE(canBePositive(0.001, 1.5, 0.05, 500));
    EXPECT_TRUE(canBePositive(-0.1, 0.001, 0.05, 500));
    EXPECT_FALSE(canBePositive(0.001, 0.001, 1.5, 500));
}

TEST(PositiveWithoutReads, CannotHappenAboveAnyNumberOfReads) {
    EXPECT_FALSE(canBePositive(0.0, 0.001, 0.05, std::numeric_limits<std::int64_t>::max()));
}

TEST(PositiveWithoutReads, IsFoundWhereverATrialFindsIt) {
    std::mt19937_64 random(20);
    std::uniform_real_distribution<double> exponent(-7.5, -0.01);
    int found = 0;
    for (int i = 0; i < 60; ++i) {
        auto mutant = mutation("x", 0);
        withRates(*mutant, std::pow(10.0, exponent(random)), std::pow(10.0, exponent(random) / 4),
                  std::pow(10.0, exponent(random) / 2));
        for (double total = 1.0; total < 1.3e6; total = std::ceil(total * 1.2)) {
            const auto reads = static_cast<std::int64_t>(total);
            if (isCalledPositive(mutant, reads)) {
                ++found;
                const auto threshold = static_cast<std::int64_t>(total / 1.1);
                ASSERT_TRUE(ResultCalc::callsPositiveWithoutMutantReads(*mutant, threshold))
                    << reads << " reads, background " << mutant->referenceFrequencyOfTheMutantReads
                    << ", rates " << mutant->allowableFalsePositiveRate << " and "
                    << mutant->allowableFalseNegativeRate;
            }
        }
    }
    EXPECT_GT(found, 100);
}

} // namespace
} // namespace calling
