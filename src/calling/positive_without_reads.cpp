// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Whether a mutation's rates let the calling rules find it in a patient who shows no mutant read.
//
// With no mutant read the call is positive if both threshold searches end at their start: the
// false-negative one below 0, the false-positive one at 0 or below. As the total n rises, each
// search changes at two totals only: where the normal approximation takes over from the exact sum,
// and where that approximation's distribution function at 0 reads underflows to 0.5. Between these
// totals the lower tail at 0 or 1 reads only falls, in both searches. So if a positive call is
// possible anywhere between two of them, it is possible at the first. It is enough to test the read
// threshold and the totals at which a search changes. Tested by positive_without_reads_test.cpp.
#include <algorithm>
#include <array>

#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "calling/total_search.h"

namespace calling {
namespace {

/// Totals tried from each start on: frequencies beyond 1 alternate in sign between even and odd
/// totals, and neighbours differ by rounding.
constexpr std::int64_t kTotalsTriedInARow = 4;

bool isPositiveWithoutMutantReads(const catalogue::Mutation& mutation, std::int64_t total) {
    const SomaticThresholds thresholds = somaticThresholds(mutation, total);
    return thresholds.falseNegative < 0 && thresholds.falsePositive <= 0;
}

} // namespace

bool ResultCalc::callsPositiveWithoutMutantReads(const catalogue::Mutation& mutation,
                                                 std::int64_t readThreshold) {
    if (readThreshold > kMostReads) {
        return false;
    }
    const double background = mutation.referenceFrequencyOfTheMutantReads;
    const std::array starts{readThreshold,
                            firstTotalWhere(usesNormalApproximation, kFrequencyOfTrulyMutantReads),
                            firstTotalWhere(startsInUnderflow, kFrequencyOfTrulyMutantReads),
                            firstTotalWhere(usesNormalApproximation, background),
                            firstTotalWhere(startsInUnderflow, background)};
    return std::any_of(starts.begin(), starts.end(), [&](std::int64_t start) {
        const std::int64_t first = std::max({start, readThreshold, std::int64_t{1}});
        for (std::int64_t total = first; total - first < kTotalsTriedInARow; ++total) {
            if (isPositiveWithoutMutantReads(mutation, total)) {
                return true;
            }
        }
        return false;
    });
}

} // namespace calling
