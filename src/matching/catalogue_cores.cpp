// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Many entries ask for the same core: in several domains, or under several strand words. Each core
// is searched once, and all its entries are judged by the positions found. Time and memory grow
// linearly with the entries, but for the sort. Tested by catalogue_cores_test.cpp.
#include "matching/catalogue_cores.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "matching/core_search.h"

namespace matching {
namespace {

/// Collects the entries in the order of the catalogue and sorts them by core at the end. Its maps
/// hold views of the catalogue's texts, which must not change meanwhile.
class Collector {
public:
    void add(const catalogue::Mutation& mutation, CoreEntry entry) {
        const char* const text = mutation.coreSeqC();
        const std::uint32_t core =
            numberOf(text != nullptr ? text : "", mutation.coreSeqContainsWildCard);
        entry.wildCard = m_cores[core].wildCard;
        entry.coreLength = static_cast<std::uint32_t>(m_cores[core].text.size());
        if (!isDuplicate(core, entry)) {
            m_collected.push_back({entry, core, m_lastOfCore[core]});
            m_lastOfCore[core] = m_collected.size();
        }
    }

    CatalogueCores take() {
        std::stable_sort(m_collected.begin(), m_collected.end(),
                         [](const Collected& a, const Collected& b) { return a.core < b.core; });
        CatalogueCores result{std::move(m_cores), {}};
        result.entries.reserve(m_collected.size());
        for (const Collected& collected : m_collected) {
            CatalogueCore& core = result.cores[collected.core];
            if (collected.before == 0) {
                core.firstEntry = static_cast<std::uint32_t>(result.entries.size());
            }
            core.isSearchedInRead1 |= collected.entry.strand != Strand::read2;
            core.isSearchedInRead2 |= collected.entry.strand != Strand::read1;
            core.isSearchedInRead2Alone |= collected.entry.strand == Strand::read2;
            result.entries.push_back(collected.entry);
        }
        // The last entry of a core is the one before the first entry of the next core.
        for (const CatalogueCore& core : result.cores) {
            if (core.firstEntry > 0) {
                result.entries[core.firstEntry - 1].isLastOfCore = true;
            }
        }
        if (!result.entries.empty()) {
            result.entries.back().isLastOfCore = true;
        }
        return result;
    }

private:
    struct Collected {
        CoreEntry entry;
        std::uint32_t core = 0;
        /// The previous one for the same core, counted from 1; 0 if there is none.
        std::size_t before = 0;
    };

    /// Whether the entry's domain already asks for the core under the same strand word. Entries
    /// come domain by domain, so those of this domain are the last ones of the core.
    bool isDuplicate(std::uint32_t core, const CoreEntry& entry) const {
        std::size_t number = m_lastOfCore[core];
        while (number > 0 && m_collected[number - 1].entry.domain == entry.domain) {
            if (m_collected[number - 1].entry.strand == entry.strand) {
                return true;
            }
            number = m_collected[number - 1].before;
        }
        return false;
    }

    std::uint32_t numberOf(std::string_view text, bool wildCard) {
        auto& numbers = wildCard ? m_wildCardNumbers : m_exactNumbers;
        const auto next = static_cast<std::uint32_t>(m_cores.size());
        const auto [known, isNew] = numbers.emplace(text, next);
        if (isNew) {
            CatalogueCore& core = m_cores.emplace_back();
            core.text = text;
            core.wildCard = wildCard;
            m_lastOfCore.push_back(0);
        }
        return known->second;
    }

    std::vector<CatalogueCore> m_cores;
    /// The last entry of each core, counted from 1.
    std::vector<std::size_t> m_lastOfCore;
    std::vector<Collected> m_collected;
    std::unordered_map<std::string_view, std::uint32_t> m_exactNumbers;
    std::unordered_map<std::string_view, std::uint32_t> m_wildCardNumbers;
};

} // namespace

std::optional<std::size_t> firstOccurrence(std::string_view read, const CatalogueCore& core) {
    return core.wildCard ? firstOccurrenceOfWildCard(read, core.text)
                         : firstOccurrence(read, core.text);
}

CatalogueCores catalogueCores(const catalogue::MutDomains& domains) {
    Collector collector;
    CoreEntry entry;
    entry.isLastOfCore = false;
    for (const auto& domain : archive::orEmpty(domains)) {
        entry.stops = domain->canStopSearchIfMatched;
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            if (const auto strand = strandOf(*mutation)) {
                entry.strand = *strand;
                collector.add(*mutation, entry);
            }
            ++entry.mutation;
        }
        ++entry.domain;
    }
    return collector.take();
}

} // namespace matching
