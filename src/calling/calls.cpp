// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The call of each mutation, by the type of its domain. Alleles are typed by the ratio of two
// counts; for transcripts and fusions any read will do. Somatic mutations need statistics, because
// a sequencer misreads bases: with too few reads there is no call, up to the false-negative
// threshold the call is negative, from the false-positive threshold on positive, and between them
// open (statistics.h).
//
// Costs one pass over the mutations. A somatic one adds two threshold searches, whose time grows
// with the square root of the reads. Rules and worked numbers: docs/statistics.md. Tested by
// calls_test.cpp.
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "calling/call.h"
#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "catalogue/domain_words.h"
#include "platform/numbers.h"
#include "settings/settings_table.h"

namespace calling {
namespace {

using catalogue::DomainType;
using catalogue::Mutation;
using catalogue::MutDomain;
using Mutations = archive::RecordList<Mutation>;

/// Fewer reads than this on both alleles are too few for allele typing.
constexpr std::int64_t kLeastReadsOfAnAllele = 100;

struct SomaticSettings {
    std::int64_t readThreshold;
    bool calculateFalsePositiveRate;
};

void setCall(Mutation& mutation, Call call, std::string ratio = "", std::string comment = "") {
    mutation.posNegDetectedOrAlleleType = wordOf(call);
    mutation.mutantCellRatio = std::move(ratio);
    mutation.comment = std::move(comment);
}

Call alleleType(std::int64_t wildTypeReads, std::int64_t mutantReads) {
    if (wildTypeReads < kLeastReadsOfAnAllele && mutantReads < kLeastReadsOfAnAllele) {
        return Call::notDetermined;
    }
    if (mutantReads * 100 < wildTypeReads) {
        return Call::homozygousWildType;
    }
    return mutantReads > wildTypeReads * 10 ? Call::homozygousMutant : Call::heterozygous;
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
        setCall(mutation, Call::nd1);
        return;
    }
    const SomaticThresholds thresholds = somaticThresholds(mutation, total);
    // Where the thresholds cross, a count that meets both is negative.
    if (mutation.match <= thresholds.falseNegative) {
        setCall(mutation, Call::negative);
    } else if (mutation.match >= thresholds.falsePositive) {
        setCall(mutation, Call::positive, mutantCellRatioText(mutation.match, total),
                settings.calculateFalsePositiveRate ? chanceProbabilityText(mutation, total) : "");
    } else if (total < mutation.minimumRequiredNumberOfInformativeReads) {
        setCall(mutation, Call::notDetermined);
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

Call detection(const Mutation& mutation) {
    return mutation.match != 0 ? Call::detected : Call::notDetected;
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
        mutations[i]->posNegDetectedOrAlleleType =
            wordOf(positive ? Call::positive : Call::negative);
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
    if (!catalogue::isInternalControl(first)) {
        callFusions(mutations, 0);
        return;
    }
    first.posNegDetectedOrAlleleType = wordOf(detection(first));
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

    const Mutations& mutations = archive::orEmpty(domain.mutationMutAr);
    switch (catalogue::typeOf(domain)) {
    case DomainType::germline:
        if (catalogue::isAlleleTyping(domain)) {
            callAlleleType(mutations);
        }
        break;
    case DomainType::somaticDNA:
        callSomaticMutations(domain, settings);
        break;
    case DomainType::germlineMRNA:
        callTranscripts(mutations);
        break;
    case DomainType::fusionRNA:
        callFusionPanel(mutations);
        break;
    default:
        break; // counted, never called
    }
}

} // namespace calling
