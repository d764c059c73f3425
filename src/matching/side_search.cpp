// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/side_search.h"

#include "matching/seed_selection.h"

namespace matching {
namespace {

SeedShape shapeFor(Mate mate, const std::vector<CatalogueCore>& cores) {
    std::vector<std::size_t> lengths;
    for (const CatalogueCore& core : cores) {
        if (core.isSearchedIn(mate)) {
            lengths.push_back(core.text.size());
        }
    }
    return chooseSeedShape(std::move(lengths));
}

} // namespace

SideSearch::SideSearch(Mate mate, const std::vector<CatalogueCore>& cores)
    : m_mate(mate), m_store(mate) {
    const SeedShape shape = shapeFor(mate, cores);
    m_index = SeedIndex(shape, keepCores(shape, cores));
}

/// Keeps the cores that the index can hold, and gives the windows by which they are known.
std::vector<CoreSeed> SideSearch::keepCores(SeedShape shape,
                                            const std::vector<CatalogueCore>& cores) {
    SeedSelection choice(shape, cores.size());
    std::vector<const CatalogueCore*> announced;
    for (const CatalogueCore& core : cores) {
        const OrientedCore oriented(core.text, core.wildCard, m_mate);
        if (!core.isSearchedIn(m_mate) || !oriented.canBeFound()) {
            continue;
        }
        if (CoreTable::canHold(oriented, core.text) && choice.canIndex(oriented)) {
            choice.countSeedsOf(oriented);
            announced.push_back(&core);
        } else {
            m_unindexed.push_back(core.firstEntry);
        }
    }
    std::vector<CoreSeed> windows;
    windows.reserve(announced.size() * shape.stride); // all of them, but for wildcard cores
    for (const CatalogueCore* core : announced) {
        const OrientedCore oriented(core->text, core->wildCard, m_mate);
        const auto first = choice.select(oriented);
        if (!first) {
            m_unindexed.push_back(core->firstEntry);
            continue;
        }
        const std::uint32_t record = m_store.add(oriented, core->text, core->firstEntry);
        choice.appendSeeds(oriented, *first, record, windows);
        if (core->wildCard) {
            m_indexedWildCards.push_back(*core);
        }
    }
    return windows;
}

void SideSearch::suspect(const SeedIndex::Candidate& candidate,
                         WorkList<Suspicion>& suspicions) const {
    const auto postings = m_index.postingsNear(candidate);
    Suspicion* to = suspicions.room(postings.size());
    for (const SeedIndex::Posting& posting : postings) {
        const bool fits = posting.offset <= candidate.position;
        m_store.prefetch(posting.record);
        *to = {posting.record, candidate.read,
               static_cast<std::uint16_t>(candidate.position - posting.offset)};
        to += SeedIndex::mayMatch(candidate, posting) && fits ? 1 : 0;
    }
    suspicions.keepUpTo(to);
}

Finding* SideSearch::check(const Suspicion& suspicion, std::string_view text, Finding* to) const {
    const CoreTable::Verification core = m_store.verify(suspicion.record, text, suspicion.place);
    const auto behind = static_cast<std::uint32_t>(text.size()) - suspicion.place - core.coreLength;
    *to = {core.core, m_mate == Mate::read2 ? behind : suspicion.place};
    return to + (core.occurs ? 1 : 0);
}

void SideSearch::searchWildCards(std::string_view text, std::vector<Finding>& findings) const {
    for (const CatalogueCore& core : m_indexedWildCards) {
        if (const auto place = firstOccurrence(text, core)) {
            findings.push_back({core.firstEntry, static_cast<std::uint32_t>(*place)});
        }
    }
}

} // namespace matching
