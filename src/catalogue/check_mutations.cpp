// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about a mutation by itself: its two lines as they were scanned, and its rates. Tested by
// catalogue_check_test.cpp.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "catalogue/check_rules.h"
#include "catalogue/domain_words.h"
#include "platform/numbers.h"

namespace catalogue::rules {
namespace {

constexpr std::array<std::string_view, kMutationFields> kFieldNames = {
    "name",
    "left flank",
    "right flank",
    "strand word",
    "reference frequency",
    "false-positive rate",
    "false-negative rate",
    "minimum number of informative reads"};
constexpr int kTextFields = 4;

std::string_view textField(const Mutation& mutation, int field) {
    const std::array<const archive::Text*, kTextFields> texts = {
        &mutation.name, &mutation.before10bp, &mutation.after10bp, &mutation.strandRequiredToRead};
    return archive::orEmpty(*texts[static_cast<std::size_t>(field)]);
}

std::string nameOfField(int field) {
    return std::string(kFieldNames[static_cast<std::size_t>(field)]);
}

void checkMissingFields(const MutationSource& source, Findings& findings) {
    const int scanned = source.fieldsScanned;
    if (scanned == kMutationFields) {
        return;
    }
    const std::string start = about(*source.mutation);
    findings.add(Rule::fieldsMissing, source.headerLine,
                 start + "only " + std::to_string(scanned) +
                     " of 8 fields can be read; reading ended before the " + nameOfField(scanned) +
                     ", and every number from there on is 0");
    for (int field = scanned; field < kTextFields; ++field) {
        findings.add(Rule::fieldCarriedOver, source.headerLine,
                     start + "the " + nameOfField(field) + " is not given; \"" +
                         std::string(textField(*source.mutation, field)) +
                         "\" is carried over from what was read before");
    }
}

/// The scan takes what it can of the last number: 30.5 reads as 30.
void checkTextAfterFields(const MutationSource& source, Findings& findings) {
    const std::string_view text = source.textAfterFields;
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return;
    }
    const std::string start = about(*source.mutation);
    if (begin == 0) {
        findings.add(Rule::minimumMalformed, source.headerLine,
                     start +
                         "the minimum number of informative reads is malformed: it is read as " +
                         std::to_string(source.mutation->minimumRequiredNumberOfInformativeReads) +
                         ", without \"" + std::string(text) + "\"");
    } else {
        findings.add(Rule::textAfterFields, source.headerLine,
                     start + "what follows the eighth field is ignored: \"" +
                         std::string(text.substr(begin)) + "\"");
    }
}

void checkSequenceLine(const MutationSource& source, Findings& findings) {
    const std::size_t line = source.headerLine + 1;
    if (source.sequenceMissing) {
        findings.add(Rule::sequenceMissing, line,
                     about(*source.mutation) + "its sequence line holds no text; \"" +
                         archive::stringOrEmpty(source.mutation->seq) +
                         "\" is taken for its sequence");
    }
    if (source.sequenceCut) {
        findings.add(Rule::sequenceLineTooLong, line,
                     about(*source.mutation) +
                         "its sequence line is longer than 998 characters; what follows "
                         "the first 999 is read as a line of its own");
    }
}

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
    int field = kTextFields;
    for (const Rate& rate : ratesOf(*source.mutation)) {
        const bool wasRead = field++ < source.fieldsScanned;
        if (isProperRate(rate.value)) {
            continue;
        }
        allProper = false;
        // A rate that is missing or not finite is reported as such.
        if (wasRead && std::isfinite(rate.value)) {
            findings.add(Rule::rateOutOfRange, source.headerLine,
                         about(*source.mutation) + "its " + std::string(rate.name) + " " +
                             platform::formatted("%g", rate.value) +
                             " does not lie between 0 and 1");
        }
    }
    return allProper;
}

/// Far more pairs of one target than an ordinary run has of most.
constexpr std::int64_t kManyReads = 5000;

void checkNegativeCall(const MutationSource& source, const CheckOptions& options,
                       Findings& findings) {
    const Mutation& mutation = *source.mutation;
    const std::int64_t threshold = std::max<std::int64_t>(options.readThreshold, 1);
    const std::int64_t wanted =
        std::max(threshold, mutation.minimumRequiredNumberOfInformativeReads);
    const std::optional<std::int64_t> least = options.readsForNegative(mutation, threshold);
    const std::optional<std::int64_t> enough = options.readsForNegative(mutation, wanted);
    if (enough == wanted && *least <= kManyReads) {
        return;
    }
    const std::int64_t pairs = enough == wanted ? kManyReads : wanted;
    const std::optional<std::int64_t> needed = enough == wanted ? least : enough;
    findings.add(Rule::negativeOutOfReach, source.headerLine,
                 about(mutation) + "with these rates " + std::to_string(pairs) +
                     " informative pairs without a mutant one do not make it Negative; " +
                     (needed ? std::to_string(*needed) + " do" : "no number does"));
}

/// What the calling does with a patient who shows no mutant read.
void checkCallsWithoutMutantReads(const MutationSource& source, const CheckOptions& options,
                                  Findings& findings) {
    if (options.positiveWithoutMutantReads &&
        options.positiveWithoutMutantReads(*source.mutation)) {
        findings.add(Rule::positiveWithoutMutantReads, source.headerLine,
                     about(*source.mutation) +
                         "with these rates it can be called Positive without a mutant read at or "
                         "above the read threshold");
    }
    if (options.readsForNegative) {
        checkNegativeCall(source, options, findings);
    }
}

void checkBackground(const MutationSource& source, const CheckOptions& options,
                     Findings& findings) {
    const double background = source.mutation->referenceFrequencyOfTheMutantReads;
    if (options.frequencyOfTrulyMutantReads && background >= *options.frequencyOfTrulyMutantReads) {
        findings.add(Rule::backgroundTooHigh, source.headerLine,
                     about(*source.mutation) + "its background frequency " +
                         platform::formatted("%g", background) + " is not below the " +
                         platform::formatted("%g", *options.frequencyOfTrulyMutantReads) +
                         " of a real mutation");
    }
}

} // namespace

void checkIgnoredHeader(const IgnoredHeader& ignored, Findings& findings) {
    const bool isDomain = ignored.text.front() == '*';
    findings.add(Rule::headerIgnored, ignored.line,
                 std::string("the line is ignored: ") +
                     (ignored.afterByteOrderMark ? "a byte order mark stands" : "blanks stand") +
                     " before \"" + ignored.text + "\", so it begins no " +
                     (isDomain ? "domain" : "mutation"));
}

void checkLines(const MutationSource& source, Findings& findings) {
    if (!source.domain) {
        findings.add(Rule::entryBeforeAnyDomain, source.headerLine,
                     about(*source.mutation) + "it stands before any domain and is dropped");
    }
    checkMissingFields(source, findings);
    checkTextAfterFields(source, findings);
    checkSequenceLine(source, findings);
    if (!strandOf(*source.mutation)) {
        findings.add(Rule::strandWordUnknown, source.headerLine,
                     about(*source.mutation) + "the strand word \"" +
                         archive::stringOrEmpty(source.mutation->strandRequiredToRead) +
                         "\" is none of R1, R2 and R1R2; no read pair ever matches");
    }
}

void checkRates(const CheckedDomain& domain, const CheckOptions& options, Findings& findings) {
    const bool isCalledByRates = typeOf(domain.record()) == DomainType::somaticDNA;
    for (std::size_t i = 0; i < domain.mutations.size(); ++i) {
        const MutationSource& source = *domain.mutations[i];
        const bool allProper = checkRange(source, findings);
        // The first entry is the wild type, which gets no call.
        if (allProper && isCalledByRates && i > 0) {
            checkCallsWithoutMutantReads(source, options, findings);
            checkBackground(source, options, findings);
        }
    }
}

} // namespace catalogue::rules
