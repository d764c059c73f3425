// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A target, which is a domain, whose mutations all had too few reads has no positive row, and in a
// summary that looks like a negative result. So this counts the targets that nobody could judge,
// and names the kinds of which none could be judged. It reads calls and makes none. A transcript or
// a fusion has no least number of reads, so the RNA kinds are always assessable: their own words
// tell of a sample that is too poor. Tested by assessability_test.cpp.
#include "calling/assessability.h"

#include <algorithm>
#include <cstddef>

#include "calling/call.h"
#include "catalogue/domain_words.h"

namespace calling {
namespace {

using catalogue::DomainType;
using catalogue::MutDomain;

struct Kind {
    DomainType type;
    const char* name;
    Call call; ///< what says that reads were too few
    std::int64_t targets = 0;
    std::int64_t tooFew = 0;

    void add(bool hasTooFew) {
        ++targets;
        tooFew += hasTooFew ? 1 : 0;
    }
};

bool allAre(const MutDomain& domain, std::size_t first, std::size_t end, Call call) {
    const auto& mutations = archive::orEmpty(domain.mutationMutAr);
    return std::all_of(mutations.begin() + static_cast<std::ptrdiff_t>(first),
                       mutations.begin() + static_cast<std::ptrdiff_t>(end),
                       [call](const auto& mutation) {
                           return mutation && callOf(mutation->posNegDetectedOrAlleleType) == call;
                       });
}

} // namespace

std::string NotAssessable::reason() const {
    const std::string count = std::to_string(targets);
    return "not assessable (" + count + " of " + count + " targets " + call + ")";
}

std::string NotAssessable::text() const {
    return kind + ": " + reason();
}

Assessability assess(const catalogue::MutDomains& domains) {
    Kind alleles{DomainType::germline, "allele typing", Call::notDetermined};
    Kind somatic{DomainType::somaticDNA, "somatic DNA", Call::nd1};
    for (const auto& domain : archive::orEmpty(domains)) {
        if (!domain) {
            continue;
        }
        const std::size_t mutations = archive::orEmpty(domain->mutationMutAr).size();
        const DomainType type = typeOf(*domain);
        if (mutations < 2) {
            continue;
        }
        if (type == DomainType::somaticDNA) {
            somatic.add(allAre(*domain, 1, mutations, somatic.call));
        } else if (type == DomainType::germline &&
                   archive::orEmpty(domain->name) == catalogue::words::kAlleleTypingDomain) {
            // The first entry carries the domain's allele type.
            alleles.add(allAre(*domain, 0, 1, alleles.call));
        }
    }
    Assessability result;
    for (const Kind& kind : {alleles, somatic}) {
        result.targets += kind.targets;
        result.notAssessable += kind.tooFew;
        if (kind.targets > 0 && kind.tooFew == kind.targets) {
            result.kinds.push_back({kind.name, kind.targets, wordOf(kind.call), kind.type});
        }
    }
    return result;
}

} // namespace calling
