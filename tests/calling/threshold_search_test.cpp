// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Holds the statistics equal, bit for bit, to their literal form.
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "calling/literal_statistics.h"
#include "calling/result_calc.h"

namespace calling {
namespace {

constexpr unsigned kSeed = 20;

/// Equal bits; one NaN is as good as another.
bool isSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

/// Frequencies and rates: the sensible ones, the borders, and what no one should write.
std::vector<double> fractions(std::size_t randomOnes) {
    std::vector<double> result{0.0,   -0.0,  5e-324, 1e-300, 1e-17, 1e-12, 0.0001, 0.005,    0.01,
                               0.05,  0.3,   0.5,    0.95,   0.999, 1.0,   1.5,    2.0,      2.5,
                               1e300, -1e-9, -0.1,   -1.0,   -3.0,  kNaN,  1e-10,  kInfinity};
    result.push_back(1.0 - std::numeric_limits<double>::epsilon() / 2);
    result.push_back(-kInfinity);
    std::mt19937_64 random(kSeed);
    std::uniform_real_distribution<double> exponent(-6.0, 0.0);
    std::uniform_real_distribution<double> anywhere(0.0, 1.0);
    for (std::size_t i = 0; i < randomOnes; ++i) {
        result.push_back(std::pow(10.0, exponent(random)));
        result.push_back(anywhere(random));
    }
    return result;
}

TEST(BinomialValue, HasTheBitsOfTheRecursion) {
    for (const double p : fractions(40)) {
        for (std::int64_t n = -2; n <= 30; ++n) {
            for (std::int64_t k = 0; k <= 35; ++k) {
                ASSERT_TRUE(
                    isSame(ResultCalc::binomialValueAt(k, n, p), literal::binomialValueAt(k, n, p)))
                    << k << " of " << n << " at " << p;
            }
        }
    }
}

TEST(CumulativeBinomial, HasTheBitsOfASumBegunAnew) {
    for (const double p : fractions(40)) {
        for (std::int64_t n = -2; n <= 30; ++n) {
            for (std::int64_t k = -2; k <= 35; ++k) {
                ASSERT_TRUE(isSame(ResultCalc::cumBinomialToNumberOfReads(k, n, p),
                                   literal::cumBinomial(k, n, p)))
                    << k << " of " << n << " at " << p;
            }
        }
    }
}

TEST(CumulativeBinomial, HasTheBitsOfASumBegunAnewInADeepRun) {
    for (const double p : {0.0005, 0.001, 0.004, 0.0099}) {
        for (const std::int64_t n : {500, 1000, 5000, 20'000}) {
            for (std::int64_t k = 0; k <= 260; k += 13) {
                ASSERT_TRUE(isSame(ResultCalc::cumBinomialToNumberOfReads(k, n, p),
                                   literal::cumBinomial(k, n, p)))
                    << k << " of " << n << " at " << p;
            }
        }
    }
}

void expectLiteralThresholds(std::int64_t n, double f, double rate) {
    ASSERT_TRUE(isSame(ResultCalc::noMutantReadsAtFalsePositiveThresholdForTotalNoReads(n, f, rate),
                       literal::falsePositiveThreshold(n, f, rate)))
        << n << " reads, frequency " << f << ", rate " << rate;
    ASSERT_TRUE(isSame(ResultCalc::noMutantReadsAtFalseNegativeThresholdForTotalNoReads(n, f, rate),
                       literal::falseNegativeThreshold(n, f, rate)))
        << n << " reads, frequency " << f << ", rate " << rate;
}

TEST(Thresholds, EqualTheLiteralSearchOfSmallTotals) {
    const std::vector<double> rates = fractions(4);
    for (const double f : fractions(10)) {
        for (std::int64_t n = 0; n <= 24; ++n) {
            for (const double rate : rates) {
                ASSERT_NO_FATAL_FAILURE(expectLiteralThresholds(n, f, rate));
            }
        }
    }
}

TEST(Thresholds, EqualTheLiteralSearchAroundTheChangeOfSearch) {
    for (const double rate : {1e-6, 0.001, 0.05, 0.5, 0.7, 0.999}) {
        for (std::int64_t n = 990; n <= 1010; ++n) {
            ASSERT_NO_FATAL_FAILURE(expectLiteralThresholds(n, 0.005, rate));
        }
        for (std::int64_t n = 10; n <= 40; ++n) {
            ASSERT_NO_FATAL_FAILURE(expectLiteralThresholds(n, 0.5, rate));
        }
    }
}

TEST(Thresholds, EqualTheLiteralSearchOfDeepRuns) {
    const std::vector<double> rates{-0.1, 0.0,  1e-17, 1e-12, 1e-4, 0.05, 0.3, 0.4999999,
                                    0.5,  0.51, 0.7,   0.95,  0.98, 0.99, 1.0, 1.5};
    for (const double f : {0.0003, 0.001, 0.005, 0.02, 0.3, 0.5, 0.9}) {
        for (const std::int64_t n : {1200, 5000, 16'900, 60'000}) {
            for (const double rate : rates) {
                if (literal::isNormal(n, f)) {
                    ASSERT_NO_FATAL_FAILURE(expectLiteralThresholds(n, f, rate));
                }
            }
        }
    }
}

} // namespace
} // namespace calling
