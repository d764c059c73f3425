// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/distinct_cores.h"

#include <algorithm>
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

/// Collects the uses as they come and sorts them by core at the end. The catalogue's texts stay as
/// they are meanwhile.
class Collector {
public:
    void add(const catalogue::Mutation& mutation, CoreUse use) {
        const char* const text = mutation.coreSeqC();
        const std::uint32_t core =
            numberOf(text != nullptr ? text : "", mutation.coreSeqContainsWildCard);
        use.wildCard = m_cores[core].wildCard;
        use.coreLength = static_cast<std::uint32_t>(m_cores[core].text.size());
        if (!isAskedFor(core, use)) {
            m_asked.push_back({use, core, m_lastAsked[core]});
            m_lastAsked[core] = m_asked.size();
        }
    }

    DistinctCores take() {
        std::stable_sort(m_asked.begin(), m_asked.end(),
                         [](const Asked& a, const Asked& b) { return a.core < b.core; });
        DistinctCores distinct{std::move(m_cores), {}};
        distinct.uses.reserve(m_asked.size());
        for (const Asked& asked : m_asked) {
            DistinctCore& core = distinct.cores[asked.core];
            if (asked.before == 0) {
                core.firstUse = static_cast<std::uint32_t>(distinct.uses.size());
            }
            core.isSoughtInRead1 |= asked.use.strand != Strand::read2;
            core.isSoughtInRead2 |= asked.use.strand != Strand::read1;
            core.isSoughtInRead2Alone |= asked.use.strand == Strand::read2;
            distinct.uses.push_back(asked.use);
        }
        // The last one of a core stands before the first one of the next.
        for (const DistinctCore& core : distinct.cores) {
            if (core.firstUse > 0) {
                distinct.uses[core.firstUse - 1].isLast = true;
            }
        }
        if (!distinct.uses.empty()) {
            distinct.uses.back().isLast = true;
        }
        return distinct;
    }

private:
    struct Asked {
        CoreUse use;
        std::uint32_t core = 0;
        /// The one for the same core before it, counted from 1; 0: none.
        std::size_t before = 0;
    };

    /// Whether the use's domain, which is the last one if it is there, asks for the core already.
    bool isAskedFor(std::uint32_t core, const CoreUse& use) const {
        std::size_t number = m_lastAsked[core];
        while (number > 0 && m_asked[number - 1].use.domain == use.domain) {
            if (m_asked[number - 1].use.strand == use.strand) {
                return true;
            }
            number = m_asked[number - 1].before;
        }
        return false;
    }

    std::uint32_t numberOf(std::string_view text, bool wildCard) {
        auto& numbers = wildCard ? m_wildCardNumbers : m_plainNumbers;
        const auto next = static_cast<std::uint32_t>(m_cores.size());
        const auto [known, isNew] = numbers.emplace(text, next);
        if (isNew) {
            DistinctCore& core = m_cores.emplace_back();
            core.text = text;
            core.wildCard = wildCard;
            m_lastAsked.push_back(0);
        }
        return known->second;
    }

    std::vector<DistinctCore> m_cores;
    /// By core: its last use, counted from 1.
    std::vector<std::size_t> m_lastAsked;
    std::vector<Asked> m_asked;
    std::unordered_map<std::string_view, std::uint32_t> m_plainNumbers;
    std::unordered_map<std::string_view, std::uint32_t> m_wildCardNumbers;
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
