// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/distinct_cores.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "matching/core_search.h"

namespace matching {
namespace {

/// Deliberate: the words are exact, so that "r1" never matches.
std::optional<Strand> strandOf(const catalogue::Mutation& mutation) {
    const std::string_view word = platform::orEmpty(mutation.strandRequiredToRead);
    if (word == "R1R2") {
        return Strand::both;
    }
    if (word == "R1") {
        return Strand::read1;
    }
    if (word == "R2") {
        return Strand::read2;
    }
    return std::nullopt;
}

class Collector {
public:
    void add(const catalogue::Mutation& mutation, CoreUse use) {
        const char* core = mutation.coreSeqC();
        Collected& collected =
            coreOf(core != nullptr ? core : "", mutation.coreSeqContainsWildCard);
        use.wildCard = collected.core.wildCard;
        use.coreLength = static_cast<std::uint32_t>(collected.core.text.size());
        if (!isAskedFor(collected.uses, use)) {
            collected.uses.push_back(use);
        }
    }

    DistinctCores take() {
        DistinctCores distinct;
        for (Collected& collected : m_collected) {
            collected.uses.back().isLast = true;
            collected.core.firstUse = static_cast<std::uint32_t>(distinct.uses.size());
            for (const CoreUse& use : collected.uses) {
                collected.core.isSoughtInRead1 |= use.strand != Strand::read2;
                collected.core.isSoughtInRead2 |= use.strand != Strand::read1;
                collected.core.isSoughtInRead2Alone |= use.strand == Strand::read2;
                distinct.uses.push_back(use);
            }
            distinct.cores.push_back(std::move(collected.core));
        }
        return distinct;
    }

private:
    struct Collected {
        DistinctCore core;
        std::vector<CoreUse> uses;
    };

    /// Whether the use's domain, which is the last one if it is there, asks for the core already.
    static bool isAskedFor(const std::vector<CoreUse>& uses, const CoreUse& asked) {
        for (auto use = uses.rbegin(); use != uses.rend() && use->domain == asked.domain; ++use) {
            if (use->strand == asked.strand) {
                return true;
            }
        }
        return false;
    }

    Collected& coreOf(std::string text, bool wildCard) {
        auto& places = wildCard ? m_wildCardPlaces : m_plainPlaces;
        const auto [place, isNew] = places.emplace(text, m_collected.size());
        if (isNew) {
            m_collected.emplace_back().core.text = std::move(text);
            m_collected.back().core.wildCard = wildCard;
        }
        return m_collected[place->second];
    }

    std::vector<Collected> m_collected;
    std::unordered_map<std::string, std::size_t> m_plainPlaces;
    std::unordered_map<std::string, std::size_t> m_wildCardPlaces;
};

} // namespace

std::optional<std::size_t> firstPlaceOfCore(std::string_view read, const DistinctCore& core) {
    return core.wildCard ? firstPlaceOfWildCard(read, core.text) : firstPlaceOf(read, core.text);
}

DistinctCores distinctCores(const catalogue::MutDomains& domains) {
    Collector collector;
    CoreUse use;
    use.isLast = false;
    for (const auto& domain : platform::orEmpty(domains)) {
        use.stops = domain->canStopSearchIfMatched;
        for (const auto& mutation : platform::orEmpty(domain->mutationMutAr)) {
            if (const auto strand = strandOf(*mutation)) {
                use.strand = *strand;
                collector.add(*mutation, use);
            }
            ++use.mutation;
        }
        ++use.domain;
    }
    return collector.take();
}

} // namespace matching
