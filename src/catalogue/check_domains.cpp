// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about domains: what their words and entries do later, where a laboratory may not expect it.
// A type that is called may have no column in an export, a domain with one entry is reported
// negative, and two entries of one name cannot be told apart in a report. Tested by
// catalogue_check_test.cpp.
#include <algorithm>
#include <cstddef>
#include <optional>
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
        findings.add(Rule::domainWithoutName, source.headerLine, "the domain has no name");
    }
    if (source.tokensScanned < 2) {
        findings.add(Rule::domainWithoutType, source.headerLine, start + "it has no type");
    }
    if (!source.flagWord.empty() && !domain.record().canStopSearchIfMatched) {
        findings.add(Rule::flagWordUnknown, source.headerLine,
                     start + "the flag word \"" + source.flagWord +
                         "\" is not StopSearchIfMatched and has no effect");
    }
    const std::string_view rest = source.textAfterTokens;
    if (const std::size_t begin = rest.find_first_not_of(kBlanks); begin != rest.npos) {
        findings.add(Rule::textAfterDomain, source.headerLine,
                     start + "what follows the third word is ignored: \"" +
                         std::string(rest.substr(begin)) + "\"");
    }
}

/// What the type does that a laboratory may not expect; nullopt where there is nothing of the kind.
std::optional<Rule> surpriseOfType(const MutDomain& domain) {
    switch (typeOf(domain)) {
    case DomainType::germlineMRNA:
    case DomainType::fusionRNA:
        return Rule::typeCalledNotCounted;
    case DomainType::countedGermlineRNA:
    case DomainType::countedFusionMRNA:
        return Rule::typeCountedNotCalled;
    case DomainType::germline:
        return isAlleleTyping(domain) ? std::nullopt : std::optional(Rule::germlineNotCalled);
    case DomainType::somaticDNA:
    case DomainType::control:
        return std::nullopt;
    case DomainType::unknown:
        break;
    }
    // A header without a type is reported as such.
    return archive::orEmpty(domain.type).empty() ? std::nullopt : std::optional(Rule::typeUnknown);
}

std::string effectOfType(Rule surprise) {
    switch (surprise) {
    case Rule::typeCalledNotCounted:
        return "is called but has no column in the count table";
    case Rule::typeCountedNotCalled:
        return "has a column in the count table but is never called";
    case Rule::germlineNotCalled:
        return "is called in a domain named BIM only";
    default:
        return "is unknown: its pairs are counted but never called";
    }
}

void checkType(const CheckedDomain& domain, Findings& findings) {
    if (const std::optional<Rule> surprise = surpriseOfType(domain.record())) {
        findings.add(*surprise, domain.source->headerLine,
                     about(domain.record()) + "the type \"" +
                         archive::stringOrEmpty(domain.record().type) + "\" " +
                         effectOfType(*surprise));
    }
}

/// Why a domain of its type cannot do with so few mutations; empty when it can.
std::string lackOf(const CheckedDomain& domain) {
    const DomainType type = typeOf(domain.record());
    const std::size_t count = domain.mutations.size();
    if (isAlleleTyping(domain.record()) && count < 2) {
        return "allele typing needs a wild-type and a mutant entry";
    }
    if (type == DomainType::somaticDNA && count < 2) {
        return "without a wild-type and a mutant entry it would be reported Negative";
    }
    if ((type == DomainType::germlineMRNA || type == DomainType::fusionRNA) && count < 1) {
        return "its result rests on its first entry";
    }
    return {};
}

void checkNumberOfEntries(const CheckedDomain& domain, Findings& findings) {
    const std::size_t line = domain.source->headerLine;
    const std::string lack = lackOf(domain);
    if (!lack.empty()) {
        findings.add(Rule::tooFewEntries, line,
                     about(domain.record()) + "catalogue fault, it holds " +
                         std::to_string(domain.mutations.size()) + " mutation(s): " + lack);
    } else if (domain.mutations.empty()) {
        findings.add(Rule::domainEmpty, line, about(domain.record()) + "it holds no mutation");
    }
}

/// Names of mutations within one domain.
void checkMutationNames(const CheckedDomain& domain, Findings& findings) {
    LineOfName firstLine;
    for (const MutationSource* source : domain.mutations) {
        const auto [found, isNew] =
            firstLine.emplace(archive::orEmpty(source->mutation->name), source->headerLine);
        if (!isNew) {
            findings.add(Rule::entryNameTwice, source->headerLine,
                         about(*source->mutation) +
                             "the name stands in this domain already (line " +
                             std::to_string(found->second) + ")");
        }
    }
}

/// Whether a positive call of the entry makes a report row, which shows the entry's name only.
bool hasRowUnderItsName(const CheckedDomain& domain, std::size_t entry) {
    const DomainType type = typeOf(domain.record());
    const bool isControl = entry == 0 && isInternalControl(*domain.mutations[entry]->mutation);
    return (type == DomainType::somaticDNA && entry > 0) ||
           (type == DomainType::fusionRNA && !isControl);
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
                findings.add(Rule::rowNameTwice, source.headerLine,
                             about(*source.mutation) +
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
    return typeOf(domain.record()) == DomainType::germlineMRNA && first != nullptr &&
           isRNAQualityControl(*first);
}

void checkInternalControl(const CheckedDomain& domain, Findings& findings) {
    const Mutation* first = firstMutation(domain);
    if (typeOf(domain.record()) != DomainType::fusionRNA || first == nullptr ||
        isInternalControl(*first)) {
        return;
    }
    // The report knows this transcript, but the calling takes it for a fusion.
    const bool isTranscript = isRNAQualityControl(*first);
    findings.add(
        isTranscript ? Rule::transcriptCalledAsFusion : Rule::internalControlMissing,
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
            findings.add(Rule::domainNameTwice, domain.source->headerLine,
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
        findings.add(Rule::noRNAQualityControl, 0,
                     "no germline_mRNA domain begins with OAZ1, so no report tells whether "
                     "the RNA is degraded");
    }
}

} // namespace catalogue::rules
