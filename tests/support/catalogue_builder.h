// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/mut_domain.h"

namespace support {

/// What matching looks at in a mutation.
struct Target {
    std::string strand;
    std::string core;
    bool wildCard = false;
};

inline std::shared_ptr<catalogue::MutDomain> domainOf(const std::vector<Target>& targets,
                                                      bool canStop = false) {
    auto domain = std::make_shared<catalogue::MutDomain>();
    domain->mutationMutAr.emplace();
    domain->canStopSearchIfMatched = canStop;
    for (const Target& target : targets) {
        auto mutation = std::make_shared<catalogue::Mutation>();
        mutation->strandRequiredToRead = target.strand;
        mutation->coreSeq = target.core;
        mutation->coreSeqContainsWildCard = target.wildCard;
        domain->mutationMutAr->append(std::move(mutation));
    }
    return domain;
}

inline catalogue::MutDomains
catalogueOf(std::vector<std::shared_ptr<catalogue::MutDomain>> domains) {
    return archive::RecordList<catalogue::MutDomain>::of(std::move(domains));
}

} // namespace support
