// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>

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
    /// (0, 1). Nor for n < 1, a safeguard that no result of a run depends on: a negative n with
    /// a negative frequency would have moments above 5, too.
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

} // namespace calling
