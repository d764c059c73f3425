// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of plain_matcher.cpp, applied to cores that were found instead of to all entries. A
// pair holds few cores, so this is cheap: the hits of both reads are sorted by core and merged,
// each entry of a core is checked by its strand word and gate, and the entries that pass are taken
// in the order of the catalogue. The leftmost position is the one that counts, as the rules try no
// other.
//
// Cores that are not indexed follow in the order of the catalogue. One is not searched if an entry
// before it hides all its entries; read 2 is searched only if it can still matter.
//
// Tested by matcher_agreement_test.cpp pair by pair against the plain matcher.
#include "matching/pair_assignment.h"

#include <algorithm>
#include <limits>

#include "matching/core_search.h"

namespace matching {
namespace {

GateWindow gateWindowFor(const CoreEntry& entry, std::size_t position) {
    return entry.wildCard ? gateWindowOfWildCard(position, entry.coreLength)
                          : gateWindow(position, entry.coreLength);
}

bool passesByQuality1(const reads::ReadPair& pair, const CoreEntry& entry, std::size_t position) {
    return passesGate(pair.quality1, gateWindowFor(entry, position), kQualityThreshold);
}

bool passesByQuality2(const reads::ReadPair& pair, const CoreEntry& entry, std::size_t position) {
    return passesGateReversed(pair.quality2, gateWindowFor(entry, position), kQualityThreshold);
}

bool bothReadsHold(const reads::ReadPair& pair, const CoreEntry& entry,
                   const CorePositions& positions) {
    if (!positions.read1 || !positions.read2 || !passesByQuality1(pair, entry, *positions.read1)) {
        return false;
    }
    // Deliberate: if both reads must hold a wildcard core, read 1's quality gates it in read 2 as
    // well, where one would expect read 2's.
    return entry.wildCard ? passesByQuality1(pair, entry, *positions.read2)
                          : passesByQuality2(pair, entry, *positions.read2);
}

bool supports(const reads::ReadPair& pair, const CoreEntry& entry, const CorePositions& positions) {
    switch (entry.strand) {
    case Strand::both:
        return bothReadsHold(pair, entry, positions);
    case Strand::read1:
        return positions.read1 && passesByQuality1(pair, entry, *positions.read1);
    case Strand::read2:
        return positions.read2 && passesByQuality2(pair, entry, *positions.read2);
    }
    return false;
}

/// Most often there is nothing to sort.
void sortFew(std::span<CoreHit> hits) {
    if (hits.size() > 1) {
        std::sort(hits.begin(), hits.end());
    }
}

/// Takes the hits of one core from the front of sorted hits. Returns the leftmost position.
std::optional<std::size_t> takePosition(std::span<const CoreHit>& hits, std::uint32_t core) {
    std::optional<std::size_t> position;
    while (!hits.empty() && hits.front().core == core) {
        position = position.value_or(hits.front().position);
        hits = hits.subspan(1);
    }
    return position;
}

std::uint32_t nextCore(std::span<const CoreHit> hits) {
    return hits.empty() ? std::numeric_limits<std::uint32_t>::max() : hits.front().core;
}

/// Counts the first mutation of each domain, up to a domain that stops. Returns whether there is
/// one.
bool countFirstOfDomains(const std::vector<CoreEntry>& supported, std::int64_t* counts) {
    std::optional<std::uint32_t> domain;
    for (const CoreEntry& entry : supported) {
        if (entry.domain == domain) {
            continue;
        }
        domain = entry.domain;
        ++counts[entry.mutation];
        if (entry.stops) {
            break;
        }
    }
    return domain.has_value();
}

} // namespace

void PairAssignment::begin(const reads::ReadPair& pair, std::span<CoreHit> inRead1,
                           std::span<CoreHit> inRead2) {
    sortFew(inRead1);
    sortFew(inRead2);
    m_supported.clear();
    std::span<const CoreHit> rest1 = inRead1;
    std::span<const CoreHit> rest2 = inRead2;
    while (!rest1.empty() || !rest2.empty()) {
        const std::uint32_t core = std::min(nextCore(rest1), nextCore(rest2));
        const auto position1 = takePosition(rest1, core);
        add(pair, core, {position1, takePosition(rest2, core)});
    }
}

bool PairAssignment::mayStillCount(std::uint32_t core) const {
    if (m_supported.empty()) {
        return true;
    }
    const CoreEntry& last = m_supported.back();
    const auto isHidden = [&](const CoreEntry& entry) {
        return last.mutation < entry.mutation && (last.domain == entry.domain || last.stops);
    };
    const CoreEntry* entry = &m_entries[core];
    while (isHidden(*entry) && !entry->isLastOfCore) {
        ++entry;
    }
    return !isHidden(*entry);
}

void PairAssignment::add(const reads::ReadPair& pair, std::uint32_t core,
                         const CorePositions& positions) {
    const CoreEntry* entry = &m_entries[core];
    for (bool more = true; more; ++entry) {
        more = !entry->isLastOfCore;
        if (supports(pair, *entry, positions)) {
            m_supported.push_back(*entry);
        }
    }
}

bool PairAssignment::count(std::int64_t* counts) {
    if (m_supported.size() > 1) {
        std::sort(m_supported.begin(), m_supported.end(),
                  [](const CoreEntry& a, const CoreEntry& b) { return a.mutation < b.mutation; });
    }
    return countFirstOfDomains(m_supported, counts);
}

void UnindexedCores::search(const reads::ReadPair& pair, std::string_view reverseComplement2,
                            PairAssignment& assignment) const {
    for (const CatalogueCore& core : m_cores) {
        if (!assignment.mayStillCount(core.firstEntry)) {
            continue;
        }
        CorePositions positions;
        if (core.isSearchedInRead1) {
            positions.read1 = firstOccurrence(pair.read1, core);
        }
        if (positions.read1 || core.isSearchedInRead2Alone) {
            positions.read2 =
                core.isSearchedInRead2 ? firstOccurrence(reverseComplement2, core) : std::nullopt;
        }
        assignment.add(pair, core.firstEntry, positions);
    }
}

} // namespace matching
