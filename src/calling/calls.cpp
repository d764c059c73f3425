// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "calling/call_words.h"
#include "calling/result_calc.h"
#include "calling/somatic_thresholds.h"
#include "catalogue/domain_words.h"
#include "platform/c_locale.h"
#include "settings/settings_table.h"

namespace calling {
namespace {

namespace domain_words = catalogue::words;

using catalogue::Mutation;
using catalogue::MutDomain;
using Mutations = archive::RecordList<Mutation>;

/// Fewer reads than this on both alleles are too few for allele typing.
constexpr std::int64_t kLeastReadsOfAnAllele = 100;

struct SomaticSettings {
    std::int64_t readThreshold;
    bool calculateFalsePositiveRate;
};

void setCall(Mutation& mutation, const char* call, std::string ratio = "",
             std::string comment = "") {
    mutation.posNegDetectedOrAlleleType = call;
    mutation.mutantCellRatio = std::move(ratio);
    mutation.comment = std::move(comment);
}

const char* alleleType(std::int64_t wildTypeReads, std::int64_t mutantReads) {
    if (wildTypeReads < kLeastReadsOfAnAllele && mutantReads < kLeastReadsOfAnAllele) {
        return "Not Determined";
    }
    if (mutantReads * 100 < wildTypeReads) {
        return "wt/wt";
    }
    return mutantReads > wildTypeReads * 10 ? "mut/mut" : "wt/mut";
}

/// The first mutation counts the wild-type allele and carries the result, the second counts the
/// mutant allele.
void callAlleleType(const Mutations& mutations) {
    if (mutations.size() >= 2) {
        setCall(*mutations[0], alleleType(mutations[0]->match, mutations[1]->match));
    }
}

/// Per cent of cells: each mutant cell is taken to carry one mutant allele of two.
std::string mutantCellRatioText(std::int64_t mutantReads, std::int64_t total) {
    const double fraction = static_cast<double>(mutantReads) / static_cast<double>(total);
    return platform::formatted("%0.1f%%", std::min(100.0, (fraction * 100.0) * 2));
}

/// The chance of more mutant reads than these from background alone.
std::string chanceProbabilityText(const Mutation& mutation, std::int64_t total) {
    const double lowerTail = ResultCalc::cumBinomialToNumberOfReads(
        mutation.match, total, mutation.referenceFrequencyOfTheMutantReads);
    return platform::formatted("%0.10f", std::abs(1.0 - lowerTail));
}

void callSomaticMutation(Mutation& mutation, std::int64_t normalReads,
                         const SomaticSettings& settings) {
    const std::int64_t total = normalReads + mutation.match;
    if (total < settings.readThreshold) {
        setCall(mutation, words::kTooFewReadsForCall);
        return;
    }
    const SomaticThresholds thresholds = somaticThresholds(mutation, total);
    // Where the thresholds cross, a count that meets both is negative.
    if (mutation.match <= thresholds.falseNegative) {
        setCall(mutation, words::kNegative);
    } else if (mutation.match >= thresholds.falsePositive) {
        setCall(mutation, words::kPositive, mutantCellRatioText(mutation.match, total),
                settings.calculateFalsePositiveRate ? chanceProbabilityText(mutation, total) : "");
    } else if (total < mutation.minimumRequiredNumberOfInformativeReads) {
        setCall(mutation, "Not Determined");
    }
    // Deliberate: undecided with reads enough, the mutation keeps the texts that it held before.
}

/// The first mutation is the normal reference and gets no call.
void callSomaticMutations(const MutDomain& domain, const SomaticSettings& settings) {
    const Mutations& mutations = archive::orEmpty(domain.mutationMutAr);
    for (std::size_t i = 1; i < mutations.size(); ++i) {
        callSomaticMutation(*mutations[i], domain.totalNumberOfNormalReads, settings);
    }
}

const char* detection(const Mutation& mutation) {
    return mutation.match != 0 ? "Detected" : "NotDetected";
}

/// Only the first transcript, the quality control, is called.
void callTranscripts(const Mutations& mutations) {
    if (!mutations.empty()) {
        setCall(*mutations[0], detection(*mutations[0]));
    }
}

/// Calls the fusions from index `first` on. Returns whether any is positive.
bool callFusions(const Mutations& mutations, std::size_t first) {
    bool anyPositive = false;
    for (std::size_t i = first; i < mutations.size(); ++i) {
        const bool positive = mutations[i]->match != 0;
        mutations[i]->posNegDetectedOrAlleleType = positive ? words::kPositive : words::kNegative;
        anyPositive = anyPositive || positive;
    }
    return anyPositive;
}

/// A panel may begin with its internal control. Only a working control without any fusion tells
/// how many copies could have been missed, which the last entry's comment announces.
void callFusionPanel(const Mutations& mutations) {
    if (mutations.empty()) {
        return;
    }
    Mutation& first = *mutations[0];
    if (!domain_words::namesInternalControl(first.name)) {
        callFusions(mutations, 0);
        return;
    }
    first.posNegDetectedOrAlleleType = detection(first);
    const bool anyPositive = callFusions(mutations, 1);
    mutations.back()->comment = first.match != 0 && !anyPositive ? "copies" : "";
}

} // namespace

std::int64_t ResultCalc::readThreshold(const settings::SettingsStore& settings) {
    constexpr settings::Setting kSetting = settings::key::kND1Threshold;
    return kSetting.repaired(settings::integerSetting(settings, kSetting));
}

void ResultCalc::calculateResult(MutDomain& domain) {
    const std::int64_t nD1 = settings::repairInteger(m_settings, settings::key::kND1Threshold);
    // Deliberate: kept in order for the preferences; no rule uses the value.
    settings::repairInteger(m_settings, settings::key::kND2Threshold);
    const SomaticSettings settings{
        nD1, settings::booleanSetting(m_settings, settings::key::kCalculateFalsePositiveRate)};

    const std::string_view type = archive::orEmpty(domain.type);
    const Mutations& mutations = archive::orEmpty(domain.mutationMutAr);
    if (domain_words::isAlleleTyping(domain)) {
        callAlleleType(mutations);
    } else if (type == domain_words::kSomaticDNA) {
        callSomaticMutations(domain, settings);
    } else if (type == domain_words::kGermlineMRNA) {
        callTranscripts(mutations);
    } else if (type == domain_words::kFusionRNA) {
        callFusionPanel(mutations);
    }
}

} // namespace calling
