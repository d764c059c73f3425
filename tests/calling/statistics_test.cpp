// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Expected values without a source of their own were computed with 40 decimal digits (normal
// distribution) or with rational numbers (binomial distribution).
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "calling/literal_statistics.h"
#include "calling/result_calc.h"

namespace calling {
namespace {

constexpr auto falsePositiveThreshold =
    &ResultCalc::noMutantReadsAtFalsePositiveThresholdForTotalNoReads;
constexpr auto falseNegativeThreshold =
    &ResultCalc::noMutantReadsAtFalseNegativeThresholdForTotalNoReads;

TEST(NormalDistribution, IsExactlyOneHalfAtZero) {
    EXPECT_EQ(ResultCalc::p_nor(0.0), 0.5);
}

TEST(NormalDistribution, SettlesForAModerateArgument) {
    EXPECT_EQ(ResultCalc::p_nor(1.0), 0.8413447460685428);
}

TEST(NormalDistribution, AgreesWithTheTrueFunctionWhereTheSeriesSettles) {
    EXPECT_NEAR(ResultCalc::p_nor(0.5), 0.69146246127401310364, 1e-15);
    EXPECT_NEAR(ResultCalc::p_nor(2.0), 0.9772498680518207928, 2e-15);
    EXPECT_NEAR(ResultCalc::p_nor(-1.5), 0.066807201268858066004, 1e-15);
    EXPECT_NEAR(ResultCalc::p_nor(-3.0), 0.0013498980316300945267, 2e-15);
    EXPECT_NEAR(ResultCalc::p_nor(-5.0), 2.8665157187919391167e-7, 2e-15);
    EXPECT_NEAR(ResultCalc::p_nor(5.0), 0.99999971334842812081, 2e-15);
}

TEST(NormalDistribution, KeepsTheOrderOfItsOperations) {
    // Dividing x by sqrt(2 pi) first would give 9.201012747400705e-05 and 0.0035726009523997515.
    EXPECT_EQ(ResultCalc::p_nor(-3.74), 9.201012747384052e-05);
    EXPECT_EQ(ResultCalc::p_nor(-2.69), 0.0035726009523998625);
}

TEST(NormalDistribution, TriesTheTermOf199AndNoneBeyond) {
    // The series of -8.72 settles with the very last term, that of -8.73 with the next.
    EXPECT_EQ(ResultCalc::p_nor(-8.72), 1.6653345369377348e-16);
    EXPECT_EQ(ResultCalc::p_nor(-8.73), 0.0);
    EXPECT_EQ(ResultCalc::p_nor(8.72), 0.9999999999999998);
    EXPECT_EQ(ResultCalc::p_nor(8.73), 1.0);
}

TEST(NormalDistribution, IsExactlyOneOrZeroWhereTheSeriesDoesNotSettle) {
    for (const double x : {9.0, 10.0, 25.0, 38.0, 38.6}) {
        EXPECT_EQ(ResultCalc::p_nor(x), 1.0) << x;
        EXPECT_EQ(ResultCalc::p_nor(-x), 0.0) << x;
    }
}

TEST(NormalDistribution, IsOneHalfWhereTheFirstTermUnderflows) {
    for (const double x : {38.7, 40.0, 316.0, 1e9}) {
        EXPECT_EQ(ResultCalc::p_nor(x), 0.5) << x;
        EXPECT_EQ(ResultCalc::p_nor(-x), 0.5) << x;
    }
}

TEST(NormalDistribution, EndsForArgumentsThatAreNoNumbers) {
    EXPECT_EQ(ResultCalc::p_nor(kInfinity), 1.0);
    EXPECT_EQ(ResultCalc::p_nor(-kInfinity), 0.0);
    EXPECT_EQ(ResultCalc::p_nor(kNaN), 0.0);
}

TEST(NormalDistribution, UpperTailIsOneLessTheLowerOne) {
    for (const double x : {-10.0, -1.25, 0.0, 0.3, 1.0, 40.0}) {
        EXPECT_EQ(ResultCalc::q_nor(x), 1.0 - ResultCalc::p_nor(x)) << x;
    }
    EXPECT_NEAR(ResultCalc::q_nor(1.0), 0.15865525393145705, 1e-15);
}

TEST(BinomialValue, AtZeroIsThePowerOfTheComplement) {
    EXPECT_EQ(ResultCalc::binomialValueAt(0, 500, 0.005), std::pow(1.0 - 0.005, 500.0));
    EXPECT_EQ(ResultCalc::binomialValueAt(0, 0, 0.3), 1.0);
    EXPECT_EQ(ResultCalc::binomialValueAt(0, 7, 0.0), 1.0);
}

TEST(BinomialValue, AgreesWithTheTrueProbability) {
    // C(10, 3) 0.3^3 0.7^7
    EXPECT_NEAR(ResultCalc::binomialValueAt(3, 10, 0.3), 0.266827932, 1e-15);
    // 0.25^4
    EXPECT_NEAR(ResultCalc::binomialValueAt(4, 4, 0.25), 0.00390625, 1e-17);
}

TEST(BinomialValue, IsExactlyZeroOneBeyondTheNumberOfReads) {
    EXPECT_EQ(ResultCalc::binomialValueAt(11, 10, 0.3), 0.0);
    EXPECT_EQ(ResultCalc::binomialValueAt(1, 0, 0.3), 0.0);
}

TEST(BinomialValue, StaysZeroFurtherBeyondTheNumberOfReads) {
    EXPECT_EQ(ResultCalc::binomialValueAt(12, 10, 0.3), 0.0);
    EXPECT_EQ(ResultCalc::binomialValueAt(50, 10, 0.3), 0.0);
}

TEST(BinomialValue, NeedsNoStackForADeepCount) {
    // 0.5^400000 underflows, and nothing grows from zero.
    EXPECT_EQ(ResultCalc::binomialValueAt(200'000, 400'000, 0.5), 0.0);
    // 0.999995^400000 is about exp(-2), and the terms run out on the way.
    EXPECT_EQ(ResultCalc::binomialValueAt(200'000, 400'000, 0.000005), 0.0);
}

TEST(BinomialValue, AgreesWithTheTrueProbabilityInADeepRun) {
    // The power of the rounded 1 - p is off by up to n times the rounding.
    EXPECT_NEAR(ResultCalc::binomialValueAt(2, 400'000, 0.000005), 0.27067124315189716, 1e-11);
    EXPECT_NEAR(ResultCalc::binomialValueAt(600, 400'000, 0.0015), 0.016296715623019001, 1e-11);
}

TEST(CumulativeBinomial, IsZeroBelowZero) {
    EXPECT_EQ(ResultCalc::cumBinomialToNumberOfReads(-1, 10, 0.3), 0.0);
    EXPECT_EQ(
        ResultCalc::cumBinomialToNumberOfReads(std::numeric_limits<std::int64_t>::min(), 10, 0.3),
        0.0);
}

TEST(CumulativeBinomial, AgreesWithTheTrueSum) {
    EXPECT_NEAR(ResultCalc::cumBinomialToNumberOfReads(0, 100, 0.01), 0.3660323412732295, 1e-14);
    EXPECT_NEAR(ResultCalc::cumBinomialToNumberOfReads(2, 100, 0.01), 0.9206267977478196, 1e-14);
    EXPECT_NEAR(ResultCalc::cumBinomialToNumberOfReads(3, 100, 0.01), 0.9816259635553504, 1e-14);
    EXPECT_NEAR(ResultCalc::cumBinomialToNumberOfReads(200, 400, 0.5), 0.5199346509818965, 1e-12);
}

TEST(CumulativeBinomial, FarBeyondTheReadsStopsBeforeTheFirstNegligibleTermPastTheMode) {
    const std::int64_t n = 1000;
    const double p = 0.001;
    double expected = 0.0;
    std::int64_t terms = 0;
    for (double term = 1.0;; ++terms) {
        term = ResultCalc::binomialValueAt(terms, n, p);
        if (terms > 1 && term < 1e-10) {
            break;
        }
        expected += term;
    }
    ASSERT_LT(terms, 20);
    EXPECT_LT(expected, 1.0);
    EXPECT_EQ(ResultCalc::cumBinomialToNumberOfReads(5000, n, p), expected);
    EXPECT_EQ(ResultCalc::cumBinomialToNumberOfReads(terms, n, p), expected);
    EXPECT_EQ(ResultCalc::cumBinomialToNumberOfReads(terms - 1, n, p), expected);
    EXPECT_LT(ResultCalc::cumBinomialToNumberOfReads(terms - 2, n, p), expected);
}

TEST(CumulativeBinomial, KeepsNegligibleTermsBeforeTheMode) {
    // (1 - 0.5)^100 is far below 1e-10, and the sum must not stop there.
    EXPECT_NEAR(ResultCalc::cumBinomialToNumberOfReads(50, 100, 0.5), 0.5397946186935895, 1e-13);
}

TEST(CumulativeBinomial, IsZeroWhereTheProbabilityOfNoReadsUnderflows) {
    EXPECT_EQ(ResultCalc::cumBinomialToNumberOfReads(1100, 1'000'000, 0.001), 0.0);
}

TEST(CumulativeBinomial, EndsForAnyFrequencyAndCount) {
    // Beyond (0, 1) there is no true sum: the values are those of the plain loop.
    const std::pair<double, double> sums[] = {
        {0.0, 1.0},
        {1e-300, 1.0},
        {0.3, 0.9999999998979846},
        {1.5, -1.4318279189724934e+73},
        {2.0, -2.8614617848547153e+125},
        {-0.5, std::pow(1.5, 300.0)},
    };
    const std::int64_t most = std::numeric_limits<std::int64_t>::max() - 1;
    for (const auto& [p, sum] : sums) {
        EXPECT_DOUBLE_EQ(ResultCalc::cumBinomialToNumberOfReads(most, 300, p), sum) << p;
    }
    for (const double p : {1.0, kInfinity, -kInfinity, kNaN}) {
        EXPECT_TRUE(std::isnan(ResultCalc::cumBinomialToNumberOfReads(most, 300, p))) << p;
    }
}

TEST(FalsePositiveThreshold, OfTheExactSearchIsTheFirstCountThatReachesTheTarget) {
    // P(X <= 2) = 0.9206, P(X <= 3) = 0.9816
    EXPECT_EQ(falsePositiveThreshold(100, 0.01, 0.05), 3.0);
}

TEST(FalsePositiveThreshold, OfTheNormalSearchIsOneLessThanThatCount) {
    // mean 10, standard deviation 3.146: 16 is the first count at or above 0.95
    EXPECT_EQ(falsePositiveThreshold(1000, 0.01, 0.05), 15.0);
}

TEST(FalsePositiveThreshold, ChangesSearchWhereMeanAndVarianceBothExceedFive) {
    // At 1000 reads the mean is exactly 5, at 1001 only the mean exceeds 5, at 1006 both do. The
    // first count that reaches 0.95 is 9 throughout.
    EXPECT_EQ(falsePositiveThreshold(1000, 0.005, 0.05), 9.0);
    EXPECT_EQ(falsePositiveThreshold(1001, 0.005, 0.05), 9.0);
    EXPECT_EQ(falsePositiveThreshold(1005, 0.005, 0.05), 9.0);
    EXPECT_EQ(falsePositiveThreshold(1006, 0.005, 0.05), 8.0);
}

TEST(FalsePositiveThreshold, IsZeroOrMinusOneWhereNoReadsReachTheTarget) {
    // Exact: 0.99^100 = 0.366. Normal: the distribution function of -10 / 3.146 is 0.00074.
    EXPECT_EQ(falsePositiveThreshold(100, 0.01, 0.65), 0.0);
    EXPECT_EQ(falsePositiveThreshold(100, 0.01, 0.63), 1.0);
    EXPECT_EQ(falsePositiveThreshold(1000, 0.01, 0.9995), -1.0);
    EXPECT_EQ(falsePositiveThreshold(1000, 0.01, 0.9985), 0.0);
}

TEST(FalsePositiveThreshold, OfAnExactSearchWithoutEndIsTheNumberOfReads) {
    // The sum stops short of 1, so a rate of 0 asks for more than it ever reaches.
    EXPECT_EQ(falsePositiveThreshold(1000, 0.001, 0.0), 1000.0);
    EXPECT_EQ(falsePositiveThreshold(1000, 0.001, -0.5), 1000.0);
    EXPECT_EQ(falsePositiveThreshold(400'000'000'000, 1e-13, -0.5), 400'000'000'000.0);
    // Background in every read: no probability of 0 mutant reads to begin with.
    EXPECT_EQ(falsePositiveThreshold(400'000'000'000, 1.0, 0.05), 400'000'000'000.0);
}

TEST(FalsePositiveThreshold, OfANormalSearchWithoutEndIsWhereTheFunctionIsOne) {
    const double threshold = falsePositiveThreshold(1000, 0.01, -0.5);
    const double deviation = std::sqrt((1.0 - 0.01) * 10.0);
    EXPECT_EQ(ResultCalc::p_nor((threshold + 1.0 - 10.0) / deviation), 1.0);
    EXPECT_NE(ResultCalc::p_nor((threshold - 10.0) / deviation), 1.0);
}

TEST(FalsePositiveThreshold, PassesTheUnderflowAtTheStartOfADeepRun) {
    // mean 50000, standard deviation 158.1, the start is at -316: 1.645 deviations above the mean
    EXPECT_EQ(falsePositiveThreshold(100'000, 0.5, 0.05), 50'260.0);
    // At a target of 0.5 the underflow at the start reaches it.
    EXPECT_EQ(falsePositiveThreshold(100'000, 0.5, 0.5), -1.0);
}

TEST(FalseNegativeThreshold, IsTheLargestCountBelowTheRate) {
    EXPECT_EQ(falseNegativeThreshold(5000, 0.005, 0.05), 16.0);
    // Exact: P(X <= 1) = 0.0397, P(X <= 2) = 0.1238
    EXPECT_EQ(falseNegativeThreshold(1005, 0.005, 0.05), 1.0);
    EXPECT_EQ(falseNegativeThreshold(1006, 0.005, 0.05), 1.0);
}

TEST(FalseNegativeThreshold, IsMinusOneWhereNoReadsReachTheRate) {
    // 0.995^500 = 0.0816
    EXPECT_EQ(falseNegativeThreshold(500, 0.005, 0.05), -1.0);
    // 0.995^597 = 0.0502, 0.995^598 = 0.0499
    EXPECT_EQ(falseNegativeThreshold(597, 0.005, 0.05), -1.0);
    EXPECT_EQ(falseNegativeThreshold(598, 0.005, 0.05), 0.0);
    // Normal: the distribution function of -5.03 / 2.237 is 0.0123.
    EXPECT_EQ(falseNegativeThreshold(1006, 0.005, 0.012), -1.0);
    EXPECT_EQ(falseNegativeThreshold(1006, 0.005, 0.013), 0.0);
}

TEST(FalseNegativeThreshold, EqualityReachesTheRate) {
    const double atNone = ResultCalc::cumBinomialToNumberOfReads(0, 100, 0.01);
    EXPECT_EQ(falseNegativeThreshold(100, 0.01, atNone), -1.0);
    EXPECT_EQ(falseNegativeThreshold(100, 0.01, std::nextafter(atNone, 1.0)), 0.0);
    const double atOne = ResultCalc::cumBinomialToNumberOfReads(1, 100, 0.01);
    EXPECT_EQ(falseNegativeThreshold(100, 0.01, atOne), 0.0);
    EXPECT_EQ(falseNegativeThreshold(100, 0.01, std::nextafter(atOne, 1.0)), 1.0);
}

TEST(FalseNegativeThreshold, IsMinusOneWhereTheStartUnderflows) {
    // The first total at which exp(-0.5 x x) is 0 for x = -mean / deviation, |x| = 38.6.
    EXPECT_EQ(falseNegativeThreshold(296'563, 0.005, 0.05), 1419.0);
    EXPECT_EQ(falseNegativeThreshold(296'564, 0.005, 0.05), -1.0);
    EXPECT_EQ(falseNegativeThreshold(296'564, 0.005, 0.5), -1.0);
    EXPECT_EQ(falseNegativeThreshold(100'000, 0.5, 0.5), -1.0);
    EXPECT_GT(falseNegativeThreshold(296'564, 0.005, 0.51), 1400.0);
}

TEST(FalseNegativeThreshold, OfAnExactSearchWithoutEndIsOneLessThanTheNumberOfReads) {
    EXPECT_EQ(falseNegativeThreshold(500, 0.005, 1.5), 499.0);
    EXPECT_EQ(falseNegativeThreshold(1, 0.005, 1.5), 0.0);
}

TEST(Thresholds, EndWithoutReads) {
    for (const std::int64_t n : {std::int64_t{0}, std::int64_t{-7}, std::int64_t{-1'000'000'000}}) {
        for (const double f : {0.0, 0.3, 1.0, -0.5, -1e300, kInfinity, kNaN}) {
            for (const double rate : {0.05, -0.5, 1.5, kNaN}) {
                EXPECT_EQ(falsePositiveThreshold(n, f, rate), 0.0) << n << ' ' << f << ' ' << rate;
                EXPECT_EQ(falseNegativeThreshold(n, f, rate), -1.0) << n << ' ' << f << ' ' << rate;
            }
        }
    }
}

TEST(Thresholds, EndForRatesThatAreNoNumbers) {
    EXPECT_EQ(falsePositiveThreshold(100, 0.01, kNaN), 0.0);
    EXPECT_EQ(falsePositiveThreshold(1000, 0.01, kNaN), -1.0);
    EXPECT_EQ(falseNegativeThreshold(100, 0.01, kNaN), -1.0);
    EXPECT_EQ(falseNegativeThreshold(1000, 0.01, kNaN), -1.0);
    EXPECT_EQ(falsePositiveThreshold(1'000'000'000'000, kNaN, 0.05), 0.0);
    EXPECT_EQ(falseNegativeThreshold(1'000'000'000'000, kNaN, 0.05), -1.0);
}

} // namespace
} // namespace calling
