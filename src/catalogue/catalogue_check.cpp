// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The order of the checks. The loader accepts every file, so the rules stand here and in the files
// beside: check_mutations.cpp (an entry by itself), check_domains.cpp (types, names, controls) and
// check_cores.cpp (what reads can hold, and which entry takes a pair); and, for files that are
// faultless line by line, check_wild_types.cpp, check_strands.cpp, check_near_cores.cpp,
// check_stop_flags.cpp and check_core_bases.cpp. A finding has a line, and all are sorted by it in
// the end, so the rules run in any order. Tested by catalogue_check_test.cpp with a file in
// tests/data/catalogue for each rule.
#include "catalogue/catalogue_check.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "catalogue/check_rules.h"
#include "catalogue/domain_words.h"

namespace catalogue {
namespace {

using rules::CheckedDomain;
using rules::Findings;

std::vector<CheckedDomain> domainsOf(const Catalogue& catalogue) {
    std::vector<CheckedDomain> domains;
    std::unordered_map<const MutDomain*, std::size_t> placeOf;
    for (const DomainSource& source : catalogue.domainSources) {
        placeOf.emplace(source.domain.get(), domains.size());
        domains.push_back({&source, {}});
    }
    for (const MutationSource& source : catalogue.mutationSources) {
        if (source.domain) {
            domains[placeOf.at(source.domain.get())].mutations.push_back(&source);
        }
    }
    return domains;
}

void checkFile(const Catalogue& catalogue, Findings& findings) {
    if (catalogue.domainSources.empty()) {
        findings.add(Rule::noDomain, 0, "the file holds no domain");
    }
    if (catalogue.overlongLine != 0) {
        findings.add(Rule::lineTooLong, catalogue.overlongLine,
                     "the line is longer than 998 characters; it and all that follows is not read");
    } else if (!catalogue.endMarkerSeen) {
        findings.add(Rule::endMarkerMissing, 0,
                     "the file has no line \"//EntryEnds\"; it may have been cut short");
    }
    for (const IgnoredHeader& ignored : catalogue.ignoredHeaders) {
        rules::checkIgnoredHeader(ignored, findings);
    }
    for (const CatalogueFault& fault : catalogue.faults) {
        findings.add(Rule::entryFaulty, fault.line, fault.reason);
    }
}

/// What only the sequences show: mistakes of which no line by itself shows a trace.
void checkSequences(const std::vector<CheckedDomain>& domains, const CheckOptions& options,
                    Findings& findings) {
    for (const CheckedDomain& domain : domains) {
        rules::checkCoreBases(domain, options.readLength, findings);
    }
    for (const CheckedDomain& domain : domains) {
        rules::checkWildType(domain, findings);
    }
    rules::checkDomainsOfMutants(domains, findings);
    rules::checkStrands(domains, findings);
    rules::checkNearCores(domains, findings);
    rules::checkStopFlags(domains, options.readLength, findings);
}

} // namespace

namespace rules {

std::vector<Finding> Findings::inLineOrder() && {
    std::stable_sort(m_found.begin(), m_found.end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    return std::move(m_found);
}

std::string about(const Mutation& mutation) {
    return "mutation " + archive::stringOrEmpty(mutation.name) + ": ";
}

std::string about(const MutDomain& domain) {
    return "domain " + archive::stringOrEmpty(domain.name) + ": ";
}

std::string nameAndLine(const MutationSource& source) {
    return archive::stringOrEmpty(source.mutation->name) + " (line " +
           std::to_string(source.headerLine) + ")";
}

bool hasWildType(const CheckedDomain& domain) {
    const DomainType type = typeOf(domain.record());
    return (type == DomainType::somaticDNA || type == DomainType::germline) &&
           domain.mutations.size() >= 2;
}

std::vector<Target> targetsOf(const std::vector<CheckedDomain>& domains) {
    std::vector<Target> targets;
    for (const CheckedDomain& domain : domains) {
        const std::size_t count = hasWildType(domain) ? 1 : domain.mutations.size();
        for (std::size_t i = 0; i < count; ++i) {
            targets.push_back({domain.mutations[i], &domain});
        }
    }
    return targets;
}

std::vector<std::string_view> sequencesOf(const std::vector<Target>& targets) {
    std::vector<std::string_view> sequences;
    sequences.reserve(targets.size());
    for (const Target& target : targets) {
        sequences.push_back(target.sequence());
    }
    return sequences;
}

} // namespace rules

std::vector<Finding> checkCatalogue(const Catalogue& catalogue, const CheckOptions& options) {
    Findings findings;
    const std::vector<CheckedDomain> domains = domainsOf(catalogue);
    checkFile(catalogue, findings);
    for (const MutationSource& source : catalogue.mutationSources) {
        rules::checkLines(source, findings);
        rules::checkCore(source, findings);
    }
    for (const CheckedDomain& domain : domains) {
        rules::checkDomain(domain, findings);
        rules::checkRates(domain, options, findings);
    }
    rules::checkNames(domains, findings);
    rules::checkCoresAgainstEachOther(domains, findings);
    rules::checkControls(domains, findings);
    checkSequences(domains, options, findings);
    return std::move(findings).inLineOrder();
}

} // namespace catalogue
