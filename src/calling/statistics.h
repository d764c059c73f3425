// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>

#include "calling/result_calc.h"
#include "catalogue/mut_domain.h"
#include "platform/numbers.h"

namespace calling {

/// The normal distribution that stands in for Binomial(n, f) where both are close: mean n f,
/// variance n f (1 - f).
class NormalApproximation {
public:
    NormalApproximation(std::int64_t n, double f)
        : m_mean(static_cast<double>(n) * f), m_variance((1.0 - f) * m_mean),
          m_applies(n > 0 && m_mean > kLeastMoment && m_variance > kLeastMoment),
          m_standardDeviation(std::sqrt(m_variance)) {}

    /// Whether it may be used: mean and variance above 5. Never for NaN or a frequency outside
    /// (0, 1). Nor for n < 1, as a safeguard: a negative n with a negative frequency would have
    /// moments above 5 too. No result of a run depends on that.
    bool applies() const noexcept { return m_applies; }
    double mean() const noexcept { return m_mean; }
    double standardDeviation() const noexcept { return m_standardDeviation; }

    /// The argument of the standard normal distribution for `k` reads; no continuity correction.
    double standardised(std::int64_t k) const noexcept {
        return (static_cast<double>(k) - m_mean) / m_standardDeviation;
    }

private:
    static constexpr double kLeastMoment = 5.0;

    double m_mean;
    double m_variance;
    bool m_applies;
    double m_standardDeviation;
};

/// The frequency of mutant reads that a real somatic mutation is expected to show at least.
inline constexpr double kFrequencyOfTrulyMutantReads = 0.005;

/// The numbers of mutant reads that decide a somatic call: negative up to the first, else positive
/// from the second on, else undecided.
struct SomaticThresholds {
    std::int64_t falseNegative;
    std::int64_t falsePositive;
};

/// The thresholds of the mutation at `total` informative reads (normal plus mutant).
inline SomaticThresholds somaticThresholds(const catalogue::Mutation& mutation,
                                           std::int64_t total) {
    return {platform::truncated(ResultCalc::noMutantReadsAtFalseNegativeThresholdForTotalNoReads(
                total, kFrequencyOfTrulyMutantReads, mutation.allowableFalseNegativeRate)),
            platform::truncated(ResultCalc::noMutantReadsAtFalsePositiveThresholdForTotalNoReads(
                total, mutation.referenceFrequencyOfTheMutantReads,
                mutation.allowableFalsePositiveRate))};
}

} // namespace calling
