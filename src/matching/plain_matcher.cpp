// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of docs/matching.md, "Which mutations a pair supports", one function for each. The fast
// matcher must agree with this file pair by pair (matcher_agreement_test.cpp). So it stays plain,
// and slow: 20 to 25 us a pair with 100 entries. Tested by plain_matcher_test.cpp and, in whole
// runs, against a second writing of the rules by literal_rules_test.cpp.
#include "matching/matcher.h"

#include <string_view>

#include "catalogue/domain_words.h"
#include "matching/core_search.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

using catalogue::Mutation;
using catalogue::MutDomain;

std::string_view coreOf(const Mutation& mutation) {
    const char* core = mutation.coreSeqC();
    return core != nullptr ? std::string_view(core) : std::string_view();
}

bool readHoldsCore(std::string_view read, const Mutation& mutation, std::string_view quality) {
    const auto find = mutation.coreSeqContainsWildCard ? findCoreSeqWithWildCard : findCoreSeq;
    return find(read, coreOf(mutation), quality, kQualityThreshold).has_value();
}

bool bothReadsHoldCore(const reads::ReadPair& pair, const Mutation& mutation) {
    // Deliberate: if both reads must hold a wildcard core, read 1's quality gates it in read 2 as
    // well, where one would expect read 2's.
    const std::string_view quality2 =
        mutation.coreSeqContainsWildCard ? pair.quality1 : pair.quality2;
    return readHoldsCore(pair.read1, mutation, pair.quality1) &&
           readHoldsCore(pair.read2, mutation, quality2);
}

bool supports(const reads::ReadPair& pair, const Mutation& mutation) {
    const auto strand = catalogue::strandOf(mutation);
    if (strand == catalogue::Strand::both) {
        return bothReadsHoldCore(pair, mutation);
    }
    if (strand == catalogue::Strand::read1) {
        return readHoldsCore(pair.read1, mutation, pair.quality1);
    }
    if (strand == catalogue::Strand::read2) {
        return readHoldsCore(pair.read2, mutation, pair.quality2);
    }
    return false;
}

/// Counts the first mutation of the domain that the pair supports. `counts` begins with the
/// domain's first mutation.
bool countInDomain(const reads::ReadPair& pair, const MutDomain& domain, std::int64_t* counts) {
    for (const auto& mutation : archive::orEmpty(domain.mutationMutAr)) {
        if (supports(pair, *mutation)) {
            ++*counts;
            return true;
        }
        ++counts;
    }
    return false;
}

/// Counts the pair at most once in each domain. Returns whether any domain counted it.
bool countPair(const reads::ReadPair& pair, const catalogue::MutDomains& domains,
               std::int64_t* counts) {
    bool matched = false;
    for (const auto& domain : archive::orEmpty(domains)) {
        if (countInDomain(pair, *domain, counts)) {
            matched = true;
            if (domain->canStopSearchIfMatched) {
                break;
            }
        }
        counts += archive::orEmpty(domain->mutationMutAr).size();
    }
    return matched;
}

} // namespace

PlainMatcher::PlainMatcher(const catalogue::MutDomains& domains) : m_domains(domains) {}

void PlainMatcher::match(const reads::ReadPairBatch& batch, BatchResult& result) const {
    Read2ReverseComplementer read2;
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const reads::ReadPair pair = read2.onStrandOfRead1(batch.pair(index));
        if (pair.read1.empty() || pair.read2.empty()) {
            continue;
        }
        ++result.processed;
        if (countPair(pair, m_domains, result.counts.data())) {
            continue;
        }
        ++result.failed;
        if (result.keepUnassigned) {
            result.unassignedPairs.append(pair.read1).append(1, '\n');
            result.unassignedPairs.append(pair.read2).append(1, '\n');
        }
    }
}

} // namespace matching
