// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cmath>
#include <string_view>

#include "catalogue/check_rules.h"
#include "catalogue/domain_words.h"
#include "platform/c_locale.h"

namespace catalogue::rules {
namespace {

/// Fields before the first rate.
constexpr int kFieldsBeforeRates = 4;

struct Rate {
    std::string_view name;
    double value;
};

std::array<Rate, 3> ratesOf(const Mutation& mutation) {
    return {Rate{"reference frequency", mutation.referenceFrequencyOfTheMutantReads},
            Rate{"false-positive rate", mutation.allowableFalsePositiveRate},
            Rate{"false-negative rate", mutation.allowableFalseNegativeRate}};
}

bool isProperRate(double value) {
    return value > 0.0 && value < 1.0;
}

/// Reports the rates that were read but lie outside (0, 1). Returns whether all three are proper.
bool checkRange(const MutationSource& source, Findings& findings) {
    bool allProper = true;
    int field = kFieldsBeforeRates;
    for (const Rate& rate : ratesOf(*source.mutation)) {
        const bool wasRead = field++ < source.fieldsScanned;
        if (isProperRate(rate.value)) {
            continue;
        }
        allProper = false;
        // A rate that is missing or not finite is reported as such.
        if (wasRead && std::isfinite(rate.value)) {
            findings.error(source.headerLine, about(*source.mutation) + "its " +
                                                  std::string(rate.name) + " " +
                                                  platform::formatted("%g", rate.value) +
                                                  " does not lie between 0 and 1");
        }
    }
    return allProper;
}

} // namespace

void checkRates(const CheckedDomain& domain,
                const PositiveWithoutMutantReads& positiveWithoutMutantReads, Findings& findings) {
    const bool isCalledByRates = typeOf(domain.record()) == DomainType::somaticDNA;
    for (std::size_t i = 0; i < domain.mutations.size(); ++i) {
        const MutationSource& source = *domain.mutations[i];
        const bool allProper = checkRange(source, findings);
        // The first entry is the wild type, which gets no call.
        if (allProper && isCalledByRates && i > 0 && positiveWithoutMutantReads &&
            positiveWithoutMutantReads(*source.mutation)) {
            findings.warning(source.headerLine,
                             about(*source.mutation) +
                                 "with these rates it can be called Positive without a mutant read "
                                 "at or above the read threshold");
        }
    }
}

} // namespace catalogue::rules
