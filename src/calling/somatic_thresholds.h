// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "calling/result_calc.h"
#include "catalogue/mut_domain.h"
#include "platform/truncation.h"

namespace calling {

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
