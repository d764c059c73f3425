// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <utility>

#include <gtest/gtest.h>

#include "calling/domain_builder.h"
#include "calling/result_calc.h"

namespace calling {
namespace {

std::optional<std::int64_t> readsForNegative(double falseNegativeRate, std::int64_t from) {
    catalogue::Mutation mutation;
    mutation.allowableFalseNegativeRate = falseNegativeRate;
    return ResultCalc::readsForNegative(mutation, from);
}

/// Whether a mutation with this rate is called negative with `total` normal and no mutant reads.
bool isCalledNegative(double falseNegativeRate, std::int64_t total) {
    settings::MemorySettingsStore settings;
    settings.setValue("nD1Threshold", std::int64_t{1});
    auto mutant = mutation("x", 0);
    mutant->referenceFrequencyOfTheMutantReads = 0.001;
    mutant->allowableFalsePositiveRate = 0.0001;
    mutant->allowableFalseNegativeRate = falseNegativeRate;
    auto somatic = domain("SomaticDNA", "KIT", {mutation("wt", total), mutant});
    somatic->totalNumberOfNormalReads = total;
    ResultCalc(settings).calculateResult(*somatic);
    return std::exchange(mutant->posNegDetectedOrAlleleType, "") == "Negative";
}

TEST(NegativeWithoutReads, TakesAsManyReadsAsTheRateAsksFor) {
    // 0.995^597 is the last power not below 0.05.
    EXPECT_EQ(readsForNegative(0.05, 1), 598);
    EXPECT_EQ(readsForNegative(0.05, 500), 598);
    EXPECT_EQ(readsForNegative(0.05, 598), 598);
    EXPECT_EQ(readsForNegative(0.05, 1000), 1000);
    EXPECT_EQ(readsForNegative(0.999, 1), 1);
}

TEST(NegativeWithoutReads, TakesMoreWhereTheSearchTurnsNormal) {
    // 0.995^919 is the first power below 0.01; at 1006 reads the approximation says 0.0123.
    EXPECT_EQ(readsForNegative(0.01, 1), 919);
    EXPECT_EQ(readsForNegative(0.01, 1005), 1005);
    const auto again = readsForNegative(0.01, 1006);
    ASSERT_TRUE(again);
    EXPECT_GT(*again, 1006);
    EXPECT_TRUE(isCalledNegative(0.01, *again));
    EXPECT_FALSE(isCalledNegative(0.01, *again - 1));
}

TEST(NegativeWithoutReads, ComesAtNoDepthWhereTheTailUnderflows) {
    EXPECT_EQ(readsForNegative(0.05, 296'563), 296'563);
    EXPECT_EQ(readsForNegative(0.05, 296'564), std::nullopt);
    EXPECT_EQ(readsForNegative(0.6, 296'564), 296'564);
    EXPECT_EQ(readsForNegative(0.0, 1), std::nullopt);
    EXPECT_EQ(readsForNegative(std::numeric_limits<double>::quiet_NaN(), 1), std::nullopt);
    EXPECT_EQ(readsForNegative(0.05, std::numeric_limits<std::int64_t>::max()), std::nullopt);
}

TEST(NegativeWithoutReads, IsWhatTheCallingDoes) {
    std::mt19937_64 random(21);
    std::uniform_real_distribution<double> exponent(-9.0, -0.01);
    for (int i = 0; i < 60; ++i) {
        const double rate = std::pow(10.0, exponent(random));
        for (double from = 1.0; from < 4e5; from = std::ceil(from * 1.7)) {
            const auto reads = static_cast<std::int64_t>(from);
            const auto needed = readsForNegative(rate, reads);
            EXPECT_EQ(isCalledNegative(rate, reads), needed == reads) << rate << ", " << reads;
            if (needed && *needed > reads) {
                EXPECT_TRUE(isCalledNegative(rate, *needed)) << rate << ", " << *needed;
                EXPECT_FALSE(isCalledNegative(rate, *needed - 1)) << rate << ", " << *needed;
            }
        }
    }
}

} // namespace
} // namespace calling
