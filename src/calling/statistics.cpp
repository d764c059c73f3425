// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Tails of the normal and the binomial distribution, and the two thresholds that they give.
//
// Calls must come out the same on every machine and in every release, so the order of the
// floating-point operations is part of the result: do not regroup them. Formulas, sources and
// worked numbers are in docs/statistics.md. A search starts near its answer and carries its sum
// along, so it costs about the square root of the reads. Tested by statistics_test.cpp;
// threshold_search_test.cpp holds every search equal to one that computes each probability from
// scratch.
#include "calling/statistics.h"

#include <algorithm>
#include <cmath>

#include "calling/result_calc.h"

namespace calling {
namespace {

/// sqrt(2 pi), rounded to a double.
constexpr double kSqrtOfTwoPi = 2.5066282746310002;
/// Denominator of the last term that the series of p_nor() tries: 3, 5, ... 199.
constexpr int kLastSeriesDenominator = 199;
/// A term past the mode below this ends a cumulative sum.
constexpr double kNegligibleTerm = 1e-10;

/// P(X = k) from P(X = k - 1); `odds` is p / (1 - p).
double nextBinomialTerm(double previous, std::int64_t k, std::int64_t n, double odds) {
    return odds * ((static_cast<double>(n - k + 1) / static_cast<double>(k)) * previous);
}

/// P(X <= k) for rising k. Term and sum are carried from one k to the next, which gives the very
/// bits of a sum begun anew for each k.
class CumulativeBinomial {
public:
    CumulativeBinomial(std::int64_t n, double p)
        : m_n(n), m_odds(p / (1.0 - p)), m_mode(static_cast<double>(n + 1) * p),
          m_term(std::pow(1.0 - p, static_cast<double>(n))) {}

    /// REQUIRES: `k` not below that of the call before.
    double upTo(std::int64_t k) {
        while (m_next <= k && !m_settled) {
            addNextTerm();
        }
        return m_sum;
    }

    /// Whether upTo() returns the same for every further k.
    bool settled() const noexcept { return m_settled; }

private:
    void addNextTerm() {
        if (m_next > 0) {
            m_term = nextBinomialTerm(m_term, m_next, m_n, m_odds);
        }
        // Deliberate: the term that ends the sum is not part of it.
        if (static_cast<double>(m_next) > m_mode && m_term < kNegligibleTerm) {
            m_settled = true;
            return;
        }
        m_sum += m_term;
        ++m_next;
        // Saves steps and changes no sum: after a zero only zeros follow (times infinite odds it
        // would be NaN), and a sum that is NaN stays so.
        m_settled = std::isnan(m_sum) || (m_term == 0.0 && std::isfinite(m_odds));
    }

    std::int64_t m_n;
    double m_odds;
    double m_mode;
    double m_term;
    double m_sum = 0.0;
    std::int64_t m_next = 0;
    bool m_settled = false;
};

/// The first count whose exact lower tail reaches `target`; n where none does, since the sum cannot
/// grow beyond it.
std::int64_t firstCountReachingExactly(double target, std::int64_t n, double f) {
    CumulativeBinomial cumulative(n, f);
    if (!(target > cumulative.upTo(0))) {
        return 0;
    }
    for (std::int64_t k = 1; k < n && !cumulative.settled(); ++k) {
        if (cumulative.upTo(k) >= target) {
            return k;
        }
    }
    return std::max(n, std::int64_t{0});
}

/// Where the search for `target` begins. The distribution function is at most 0.5 everywhere below
/// the mean, also where p_nor() underflows to 0.5, so a larger target passes these counts by.
std::int64_t firstCountWorthTrying(double target, const NormalApproximation& normal) {
    if (!(target > 0.5)) {
        return 1;
    }
    const double belowMean = normal.mean() - 2.0 * normal.standardDeviation();
    return std::max(static_cast<std::int64_t>(belowMean), std::int64_t{1});
}

/// The first count whose approximated lower tail reaches `target`, or is exactly 1 where none does.
std::int64_t firstCountReachingNormally(double target, const NormalApproximation& normal) {
    if (!(target > ResultCalc::p_nor(normal.standardised(0)))) {
        return 0;
    }
    for (std::int64_t k = firstCountWorthTrying(target, normal);; ++k) {
        const double lowerTail = ResultCalc::p_nor(normal.standardised(k));
        if (lowerTail >= target || lowerTail == 1.0) {
            return k;
        }
    }
}

} // namespace

double ResultCalc::p_nor(double x) {
    double term = std::exp(-0.5 * (x * x)) * x / kSqrtOfTwoPi;
    double sum = term;
    for (int i = 3; i <= kLastSeriesDenominator; i += 2) {
        term = term * ((x * x) / i);
        const double longerSum = sum + term;
        if (longerSum == sum) {
            return longerSum + 0.5;
        }
        sum = longerSum;
    }
    return x > 0.0 ? 1.0 : 0.0;
}

double ResultCalc::q_nor(double x) {
    return 1.0 - p_nor(x);
}

double ResultCalc::binomialValueAt(std::int64_t k, std::int64_t n, double p) {
    const double odds = p / (1.0 - p);
    double value = std::pow(1.0 - p, static_cast<double>(n));
    for (std::int64_t i = 1; i <= k; ++i) {
        value = nextBinomialTerm(value, i, n, odds);
    }
    return value;
}

double ResultCalc::cumBinomialToNumberOfReads(std::int64_t k, std::int64_t n, double p) {
    return k < 0 ? 0.0 : CumulativeBinomial(n, p).upTo(k);
}

double ResultCalc::noMutantReadsAtFalsePositiveThresholdForTotalNoReads(std::int64_t n, double f,
                                                                        double alpha) {
    const double target = 1.0 - alpha;
    const NormalApproximation normal(n, f);
    // Deliberate: one less than the first count that reaches the target here, that count itself in
    // the exact search. A mutation is positive from this value on.
    if (normal.applies()) {
        return static_cast<double>(firstCountReachingNormally(target, normal) - 1);
    }
    return static_cast<double>(firstCountReachingExactly(target, n, f));
}

double ResultCalc::noMutantReadsAtFalseNegativeThresholdForTotalNoReads(std::int64_t n, double f,
                                                                        double beta) {
    const NormalApproximation normal(n, f);
    const std::int64_t firstCount = normal.applies() ? firstCountReachingNormally(beta, normal)
                                                     : firstCountReachingExactly(beta, n, f);
    return static_cast<double>(firstCount - 1);
}

} // namespace calling
