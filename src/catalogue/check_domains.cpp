// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about domains: what later stages make of their words and of the entries that they hold.
#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/check_rules.h"
#include "catalogue/domain_words.h"

namespace catalogue::rules {
namespace {

using LineOfName = std::unordered_map<std::string_view, std::size_t>;

void checkHeader(const CheckedDomain& domain, Findings& findings) {
    const DomainSource& source = *domain.source;
    const std::string start = about(domain.record());
    if (source.tokensScanned < 1) {
        findings.error(source.headerLine, "the domain has no name");
    }
    if (source.tokensScanned < 2) {
        findings.error(source.headerLine, start + "it has no type");
    }
    if (!source.flagWord.empty() && !domain.record().canStopSearchIfMatched) {
        findings.warning(source.headerLine, start + "the flag word \"" + source.flagWord +
                                                "\" is not StopSearchIfMatched and has no effect");
    }
    const std::string_view rest = source.textAfterTokens;
    if (const std::size_t begin = rest.find_first_not_of(kBlanks); begin != rest.npos) {
        findings.warning(source.headerLine, start + "what follows the third word is ignored: \"" +
                                                std::string(rest.substr(begin)) + "\"");
    }
}

void checkType(const CheckedDomain& domain, Findings& findings) {
    const std::string_view type = archive::orEmpty(domain.record().type);
    const std::size_t line = domain.source->headerLine;
    const std::string start = about(domain.record()) + "the type \"" + std::string(type) + "\" ";
    if (type == words::kGermlineMRNA || type == words::kFusionRNA) {
        findings.warning(line, start + "is called but has no column in the count table");
    } else if (type == words::kCountedGermlineRNA || type == words::kCountedFusionMRNA) {
        findings.warning(line, start + "has a column in the count table but is never called");
    } else if (type == words::kGermline && !words::isAlleleTyping(domain.record())) {
        findings.warning(line, start + "is called in a domain named BIM only");
    } else if (type != words::kGermline && type != words::kSomaticDNA && type != words::kControl &&
               !type.empty()) {
        findings.warning(line, start + "is unknown: its pairs are counted but never called");
    }
}

/// Why a domain of its type cannot do with so few mutations; empty when it can.
std::string lackOf(const CheckedDomain& domain) {
    const std::string_view type = archive::orEmpty(domain.record().type);
    const std::size_t count = domain.mutations.size();
    if (words::isAlleleTyping(domain.record()) && count < 2) {
        return "allele typing needs a wild-type and a mutant entry";
    }
    if (type == words::kSomaticDNA && count < 2) {
        return "without a wild-type and a mutant entry it would be reported Negative";
    }
    if ((type == words::kGermlineMRNA || type == words::kFusionRNA) && count < 1) {
        return "its result rests on its first entry";
    }
    return {};
}

void checkNumberOfEntries(const CheckedDomain& domain, Findings& findings) {
    const std::size_t line = domain.source->headerLine;
    const std::string lack = lackOf(domain);
    if (!lack.empty()) {
        findings.error(line, about(domain.record()) + "catalogue fault, it holds " +
                                 std::to_string(domain.mutations.size()) + " mutation(s): " + lack);
    } else if (domain.mutations.empty()) {
        findings.warning(line, about(domain.record()) + "it holds no mutation");
    }
}

/// Names of mutations within one domain.
void checkMutationNames(const CheckedDomain& domain, Findings& findings) {
    LineOfName firstLine;
    for (const MutationSource* source : domain.mutations) {
        const auto [found, isNew] =
            firstLine.emplace(archive::orEmpty(source->mutation->name), source->headerLine);
        if (!isNew) {
            findings.error(source->headerLine, about(*source->mutation) +
                                                   "the name stands in this domain already (line " +
                                                   std::to_string(found->second) + ")");
        }
    }
}

/// Whether a positive call of the entry makes a report row, which shows the entry's name only.
bool hasRowUnderItsName(const CheckedDomain& domain, std::size_t entry) {
    const std::string_view type = archive::orEmpty(domain.record().type);
    const bool isFirstOfControl =
        entry == 0 && words::namesInternalControl(domain.mutations[entry]->mutation->name);
    return (type == words::kSomaticDNA && entry > 0) ||
           (type == words::kFusionRNA && !isFirstOfControl);
}

/// Names of mutations of different domains that a report cannot tell apart.
void checkNamesAcrossDomains(const std::vector<CheckedDomain>& domains, Findings& findings) {
    std::unordered_map<std::string_view, const MutationSource*> firstWithName;
    for (const CheckedDomain& domain : domains) {
        for (std::size_t i = 0; i < domain.mutations.size(); ++i) {
            const MutationSource& source = *domain.mutations[i];
            if (!hasRowUnderItsName(domain, i)) {
                continue;
            }
            const auto [found, isNew] =
                firstWithName.emplace(archive::orEmpty(source.mutation->name), &source);
            if (!isNew && found->second->domain != source.domain) {
                findings.warning(source.headerLine, about(*source.mutation) +
                                                        "the name stands in another domain too "
                                                        "(line " +
                                                        std::to_string(found->second->headerLine) +
                                                        "); a report row does not tell them apart");
            }
        }
    }
}

const Mutation* firstMutation(const CheckedDomain& domain) {
    return domain.mutations.empty() ? nullptr : domain.mutations.front()->mutation.get();
}

bool showsRNAQuality(const CheckedDomain& domain) {
    const Mutation* first = firstMutation(domain);
    return domain.record().type == words::kGermlineMRNA && first != nullptr &&
           first->name == words::kRNAQualityControl;
}

void checkInternalControl(const CheckedDomain& domain, Findings& findings) {
    const Mutation* first = firstMutation(domain);
    if (domain.record().type != words::kFusionRNA || first == nullptr ||
        words::namesInternalControl(first->name)) {
        return;
    }
    // The report knows this transcript, but the calling takes it for a fusion.
    const bool isTranscript = first->name == words::kRNAQualityControl;
    findings.warning(
        domain.source->headerLine,
        about(domain.record()) +
            (isTranscript
                 ? "its first entry OAZ1 tells of degraded RNA where nothing is found, but "
                   "as it is no internal control (\"control\" in its name) its own reads are "
                   "reported as a positive fusion"
                 : "its first entry is no internal control (\"control\" in its name), so a "
                   "failed reaction looks like a negative one"));
}

} // namespace

void checkDomain(const CheckedDomain& domain, Findings& findings) {
    checkHeader(domain, findings);
    checkType(domain, findings);
    checkNumberOfEntries(domain, findings);
}

void checkNames(const std::vector<CheckedDomain>& domains, Findings& findings) {
    LineOfName firstLine;
    for (const CheckedDomain& domain : domains) {
        const auto [found, isNew] =
            firstLine.emplace(archive::orEmpty(domain.record().name), domain.source->headerLine);
        if (!isNew) {
            findings.error(domain.source->headerLine,
                           about(domain.record()) + "a domain of this name stands in line " +
                               std::to_string(found->second) + " already");
        }
        checkMutationNames(domain, findings);
    }
    checkNamesAcrossDomains(domains, findings);
}

void checkControls(const std::vector<CheckedDomain>& domains, Findings& findings) {
    for (const CheckedDomain& domain : domains) {
        checkInternalControl(domain, findings);
    }
    if (!domains.empty() && std::none_of(domains.begin(), domains.end(), showsRNAQuality)) {
        findings.warning(0, "no germline_mRNA domain begins with OAZ1, so no report tells whether "
                            "the RNA is degraded");
    }
}

} // namespace catalogue::rules
