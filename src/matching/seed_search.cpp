// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Seed and verify, for 32 reads at a time:
//
//     read -sample-> read seed -Bloom filter-> candidate -postings-> seed hit -verify-> core hit
//
// Each base is looked at a bounded number of times, whatever the catalogue's size. What seeds are
// and why none is missed: seed_selection.cpp. The search is one of the seed-and-extend family
// (BLAST: Altschul et al., Journal of Molecular Biology 215, 1990), but a core has to agree at
// every base, so a seed is not extended, only verified.
//
// With 10,000 entries the index has 7 MB, more than the second-level cache, and the time goes into
// waiting for memory. So a group of reads takes each step together, and while one step makes its
// list, it prefetches what the next one reads: bucket, postings, core. This is group prefetching
// (Chen, Ailamaki, Gibbons and Mowry, "Improving Hash Join Performance through Prefetching", ICDE
// 2004).
//
// With 100 entries all is in the caches, and the time goes into mispredicted branches: whether a
// seed passes, whether a core occurs. So the steps write first and decide by moving the end of
// their list (AppendBuffer): selection without a branch.
//
// bench/what-was-tried.md has what each of these gains. Tested by seed_search_test.cpp.
#include "matching/seed_search.h"

#include <algorithm>

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

MateIndex::MateIndex(Mate mate, const std::vector<CatalogueCore>& cores)
    : m_mate(mate), m_cores(mate) {
    const SeedShape shape = shapeFor(mate, cores);
    m_seeds = SeedIndex(shape, indexCores(shape, cores));
}

/// Puts the cores that can be indexed into the table and returns their seeds.
std::vector<CoreSeed> MateIndex::indexCores(SeedShape shape,
                                            const std::vector<CatalogueCore>& cores) {
    SeedSelection selection(shape, cores.size());
    std::vector<const CatalogueCore*> counted;
    for (const CatalogueCore& core : cores) {
        const OrientedCore oriented(core.text, core.wildCard, m_mate);
        if (!core.isSearchedIn(m_mate) || !oriented.canBeFound()) {
            continue;
        }
        if (CoreTable::canHold(oriented, core.text) && selection.canIndex(oriented)) {
            selection.countSeedsOf(oriented);
            counted.push_back(&core);
        } else {
            m_unindexed.push_back(core.firstEntry);
        }
    }
    std::vector<CoreSeed> seeds;
    seeds.reserve(counted.size() * shape.stride); // all of them, but for wildcard cores
    for (const CatalogueCore* core : counted) {
        const OrientedCore oriented(core->text, core->wildCard, m_mate);
        const auto first = selection.select(oriented);
        if (!first) {
            m_unindexed.push_back(core->firstEntry);
            continue;
        }
        const std::uint32_t record = m_cores.add(oriented, core->text, core->firstEntry);
        selection.appendSeeds(oriented, *first, record, seeds);
        if (core->wildCard) {
            m_indexedWildCards.push_back(*core);
        }
    }
    return seeds;
}

void MateIndex::searchWildCards(std::string_view read1, std::vector<CoreHit>& hits) const {
    for (const CatalogueCore& core : m_indexedWildCards) {
        if (const auto position = firstOccurrence(read1, core)) {
            hits.push_back({core.firstEntry, static_cast<std::uint32_t>(*position)});
        }
    }
}

void SeedSearch::clear() noexcept {
    m_readCount = 0;
    m_seeds.clear();
    m_candidates.clear();
}

void SeedSearch::add(std::string_view read) {
    const SeedIndex& index = m_index.seeds();
    m_seeds.keepUpTo(index.sample(read, m_readCount, m_seeds.room(index.maxSeedsIn(read))));
    m_reads[m_readCount++] = read;
}

std::size_t SeedSearch::collect() {
    const SeedIndex& index = m_index.seeds();
    std::uint32_t* const selected = m_selected.room(m_seeds.size());
    const std::uint32_t* const end = index.filter().select(m_seeds.all(), selected);
    Candidate* to = m_candidates.room(static_cast<std::size_t>(end - selected));
    for (const std::uint32_t* seed = selected; seed != end; ++seed) {
        *to = index.candidateOf(m_seeds[*seed]);
        index.prefetchBucket(*to++);
    }
    m_candidates.keepUpTo(to);
    std::size_t mostVerifications = 0;
    for (const Candidate& candidate : m_candidates.all()) {
        mostVerifications += index.prefetchPostings(candidate);
    }
    return mostVerifications;
}

std::span<const SeedIndex::Candidate> SeedSearch::candidatesOf(std::size_t read) const {
    const auto all = m_candidates.all();
    const auto firstOf = [&](std::size_t which) {
        return std::partition_point(all.begin(), all.end(), [&](const Candidate& candidate) {
            return candidate.read < which;
        });
    };
    return {firstOf(read), firstOf(read + 1)};
}

void SeedSearch::find(std::span<const Candidate> candidates) {
    m_seedHits.clear();
    for (const Candidate& candidate : candidates) {
        expand(candidate, m_seedHits);
    }
    m_hitCounts.fill(0);
    m_coreHits.clear();
    CoreHit* to = m_coreHits.room(m_seedHits.size() + 1);
    for (const SeedHit& hit : m_seedHits.all()) {
        CoreHit* const before = to;
        to = verify(hit, m_reads[hit.read], to);
        m_hitCounts[hit.read] += static_cast<std::uint32_t>(to - before);
    }
    m_coreHits.keepUpTo(to);
    m_nextHit = m_coreHits.begin();
}

void SeedSearch::expand(const Candidate& candidate, AppendBuffer<SeedHit>& hits) const {
    const auto postings = m_index.seeds().postingsNear(candidate);
    SeedHit* to = hits.room(postings.size());
    for (const SeedIndex::Posting& posting : postings) {
        const bool fits = posting.offset <= candidate.position;
        m_index.cores().prefetch(posting.record);
        *to = {posting.record, candidate.read,
               static_cast<std::uint16_t>(candidate.position - posting.offset)};
        to += SeedIndex::mayMatch(candidate, posting) && fits ? 1 : 0;
    }
    hits.keepUpTo(to);
}

CoreHit* SeedSearch::verify(const SeedHit& hit, std::string_view read, CoreHit* to) const {
    const CoreTable::Verification found = m_index.cores().verify(hit.record, read, hit.position);
    // The position seen from the end of the read is that in its reverse complement.
    const auto behind = static_cast<std::uint32_t>(read.size()) - hit.position - found.coreLength;
    *to = {found.core, m_index.mate() == Mate::read2 ? behind : hit.position};
    return to + (found.occurs ? 1 : 0);
}

std::span<CoreHit> SeedSearch::take(std::size_t read) {
    CoreHit* const first = m_nextHit;
    m_nextHit += m_hitCounts[read];
    return {first, m_nextHit};
}

} // namespace matching
