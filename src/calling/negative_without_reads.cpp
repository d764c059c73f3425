// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How many reads a mutation's rates take before the calling rules call a patient negative who shows
// no mutant read.
//
// No mutant read is negative where the false-negative search does not end at its start: where the
// lower tail at 0 reads of a real mutation's distribution is below the allowed rate. As the total
// n rises that tail falls, but for two totals: where the normal approximation takes over from the
// exact sum, and where its distribution function at 0 reads underflows to 0.5. Between these totals
// the first one with a tail below the rate is found by bisection. Tested by
// negative_without_reads_test.cpp.
#include <algorithm>
#include <array>
#include <optional>

#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "calling/total_search.h"

namespace calling {
namespace {

/// P(no mutant read) for a real mutation, as the false-negative search computes it.
double tailAtZero(std::int64_t total) {
    const NormalApproximation normal(total, kFrequencyOfTrulyMutantReads);
    return normal.applies()
               ? ResultCalc::p_nor(normal.standardised(0))
               : ResultCalc::cumBinomialToNumberOfReads(0, total, kFrequencyOfTrulyMutantReads);
}

/// Where the tail does not fall: the beginnings of the stretches in which it does.
const std::array<std::int64_t, 4>& stretches() {
    static const std::array<std::int64_t, 4> beginnings{
        1, firstTotalWhere(usesNormalApproximation, kFrequencyOfTrulyMutantReads),
        firstTotalWhere(startsInUnderflow, kFrequencyOfTrulyMutantReads), kMostReads};
    return beginnings;
}

} // namespace

std::optional<std::int64_t> ResultCalc::readsForNegative(const catalogue::Mutation& mutation,
                                                         std::int64_t from) {
    const double rate = mutation.allowableFalseNegativeRate;
    for (std::size_t i = 0; i + 1 < stretches().size(); ++i) {
        const std::int64_t begin = std::max(from, stretches()[i]);
        const std::int64_t end = stretches()[i + 1];
        const std::int64_t first = firstTotalWhere(
            begin, end, [rate](std::int64_t total) { return rate > tailAtZero(total); });
        if (first < end) {
            return first;
        }
    }
    return std::nullopt;
}

} // namespace calling
