// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

#include "calling/result_calc.h"

namespace calling {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

} // namespace calling

/// The statistics as one would write them down first: every probability by recursion, every sum
/// begun anew, every count tried. Slow, and the judge of the real ones.
namespace calling::literal {

inline double binomialValueAt(std::int64_t k, std::int64_t n, double p) {
    if (k == 0) {
        return std::pow(1.0 - p, static_cast<double>(n));
    }
    const double b = binomialValueAt(k - 1, n, p);
    return (p / (1.0 - p)) * ((static_cast<double>(n - k + 1) / static_cast<double>(k)) * b);
}

inline double cumBinomial(std::int64_t k, std::int64_t n, double p) {
    if (k < 0) {
        return 0.0;
    }
    double sum = 0.0;
    for (std::int64_t i = 0;; ++i) {
        const double v = binomialValueAt(i, n, p);
        if (static_cast<double>(i) > static_cast<double>(n + 1) * p && v < 1e-10) {
            return sum;
        }
        sum += v;
        if (i >= k) {
            return sum;
        }
    }
}

inline bool isNormal(std::int64_t n, double f) {
    const double mean = static_cast<double>(n) * f;
    return mean > 5.0 && (1.0 - f) * mean > 5.0;
}

inline double standardised(std::int64_t k, std::int64_t n, double f) {
    const double mean = static_cast<double>(n) * f;
    return (static_cast<double>(k) - mean) / std::sqrt((1.0 - f) * mean);
}

/// The search over the normal approximation; REQUIRES: isNormal(n, f).
inline double normalThreshold(std::int64_t n, double f, double target) {
    if (!(target > ResultCalc::p_nor(standardised(0, n, f)))) {
        return -1.0;
    }
    for (std::int64_t k = 1;; ++k) {
        const double value = ResultCalc::p_nor(standardised(k, n, f));
        if (value >= target || value == 1.0) {
            return static_cast<double>(k - 1);
        }
    }
}

/// The first count from 1 to n whose exact lower tail reaches the target, or n.
inline std::int64_t firstExactCount(std::int64_t n, double f, double target) {
    for (std::int64_t k = 1; k <= n; ++k) {
        if (cumBinomial(k, n, f) >= target) {
            return k;
        }
    }
    return n;
}

inline double falsePositiveThreshold(std::int64_t n, double f, double alpha) {
    const double target = 1.0 - alpha;
    if (isNormal(n, f)) {
        return normalThreshold(n, f, target);
    }
    if (!(target > cumBinomial(0, n, f))) {
        return 0.0;
    }
    return static_cast<double>(firstExactCount(n, f, target));
}

inline double falseNegativeThreshold(std::int64_t n, double f, double beta) {
    if (isNormal(n, f)) {
        return normalThreshold(n, f, beta);
    }
    if (!(beta > cumBinomial(0, n, f))) {
        return -1.0;
    }
    return static_cast<double>(firstExactCount(n, f, beta) - 1);
}

} // namespace calling::literal
