// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace catalogue {

/// What the check of a definition file looks for. docs/formats/definition-file.md lists the rules
/// in this order, by the identifiers of their texts.
enum class Rule : std::uint8_t {
    // The file (catalogue_check.cpp)
    noDomain,
    lineTooLong,
    endMarkerMissing,
    headerIgnored,
    entryFaulty,
    noRNAQualityControl,
    // An entry by itself (check_mutations.cpp)
    entryBeforeAnyDomain,
    fieldsMissing,
    fieldCarriedOver,
    minimumMalformed,
    textAfterFields,
    sequenceMissing,
    sequenceLineTooLong,
    strandWordUnknown,
    rateOutOfRange,
    positiveWithoutMutantReads,
    // Domains (check_domains.cpp)
    domainWithoutName,
    domainWithoutType,
    flagWordUnknown,
    textAfterDomain,
    typeUnknown,
    typeCalledNotCounted,
    typeCountedNotCalled,
    germlineNotCalled,
    tooFewEntries,
    domainEmpty,
    domainNameTwice,
    entryNameTwice,
    rowNameTwice,
    internalControlMissing,
    transcriptCalledAsFusion,
    // Cores (check_cores.cpp)
    coreEmpty,
    coreBeyondAnyRead,
    coreLetterUnmatchable,
    coreNeverCounted,
    coreTwice,
    coreShadowed,
    coreInTwoDomains,
    // Rates (check_mutations.cpp)
    backgroundTooHigh,
    negativeOutOfReach,
    // What a core is made of (check_core_bases.cpp)
    coreLongerThanRead,
    coreSeldomReached,
    coreShort,
    coreLowComplexity,
    coreHomopolymer,
    flankRepeated,
    // Wild type and mutants (check_wild_types.cpp)
    wildTypeNotFirst,
    wildTypeTwice,
    firstEntryNamedAsMutant,
    firstEntryUnlikeOthers,
    flanksDiffer,
    strandWordDiffers,
    mutantIsWildType,
    variantTwice,
    nearerToAnotherWildType,
    // Strands (check_strands.cpp)
    coreIsWildTypeReversed,
    coreOnOtherStrand,
    sequenceOnOtherStrand,
    domainStrandWordDiffers,
    // Targets of two domains that one pair can hold (check_near_cores.cpp, check_stop_flags.cpp)
    coreInsideAnother,
    coreNearAnother,
    coreReversedInAnother,
    stopFlagHidesDomain,
    kCount,
};

/// A finding about a definition file. With an error the file does not mean what it says; a warning
/// marks what a laboratory may have intended.
struct Finding {
    enum class Severity { warning, error };
    Severity severity = Severity::error;
    /// 1-based; 0 for a finding about the file as a whole.
    std::size_t line = 0;
    std::string message;
    Rule rule = Rule::noDomain;
};

/// What is the same for every finding of a rule.
struct RuleText {
    Rule rule;
    /// The name of the rule for scripts: never change it.
    std::string_view identifier;
    Finding::Severity severity;
    /// What happens in a run if the file stays as it is.
    std::string_view explanation;
    /// What to do about it.
    std::string_view advice;
};

/// The texts of the rule, which is not kCount.
const RuleText& textOf(Rule rule);
/// Those of every rule, in their order.
std::span<const RuleText> allRuleTexts();

} // namespace catalogue
