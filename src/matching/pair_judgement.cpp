// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/pair_judgement.h"

#include <algorithm>
#include <limits>

#include "matching/core_search.h"

namespace matching {
namespace {

GateWindow gateWindowFor(const CoreEntry& entry, std::size_t place) {
    return entry.wildCard ? gateWindowOfWildCard(place, entry.coreLength)
                          : gateWindow(place, entry.coreLength);
}

bool passesByQuality1(const ReadPair& pair, const CoreEntry& entry, std::size_t place) {
    return passesGate(pair.quality1, gateWindowFor(entry, place), kQualityThreshold);
}

bool passesByQuality2(const ReadPair& pair, const CoreEntry& entry, std::size_t place) {
    return passesGateReversed(pair.quality2, gateWindowFor(entry, place), kQualityThreshold);
}

bool bothReadsHold(const ReadPair& pair, const CoreEntry& entry, const CorePlaces& places) {
    if (!places.read1 || !places.read2 || !passesByQuality1(pair, entry, *places.read1)) {
        return false;
    }
    // Deliberate: a wildcard core that both reads must hold is gated by read 1's quality in read 2
    // too, where read 2's would be expected.
    return entry.wildCard ? passesByQuality1(pair, entry, *places.read2)
                          : passesByQuality2(pair, entry, *places.read2);
}

bool supports(const ReadPair& pair, const CoreEntry& entry, const CorePlaces& places) {
    switch (entry.strand) {
    case Strand::both:
        return bothReadsHold(pair, entry, places);
    case Strand::read1:
        return places.read1 && passesByQuality1(pair, entry, *places.read1);
    case Strand::read2:
        return places.read2 && passesByQuality2(pair, entry, *places.read2);
    }
    return false;
}

/// Mostly there is nothing to sort.
void sortFew(std::span<Finding> findings) {
    if (findings.size() > 1) {
        std::sort(findings.begin(), findings.end());
    }
}

/// Takes the findings of a core off sorted ones; the first one is the leftmost.
std::optional<std::size_t> takePlace(std::span<const Finding>& findings, std::uint32_t core) {
    std::optional<std::size_t> place;
    while (!findings.empty() && findings.front().core == core) {
        place = place.value_or(findings.front().place);
        findings = findings.subspan(1);
    }
    return place;
}

std::uint32_t nextCore(std::span<const Finding> findings) {
    return findings.empty() ? std::numeric_limits<std::uint32_t>::max() : findings.front().core;
}

/// Counts the first mutation of each domain, up to a domain that stops; whether there was one.
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

void PairJudgement::begin(const ReadPair& pair, std::span<Finding> inRead1,
                          std::span<Finding> inRead2) {
    sortFew(inRead1);
    sortFew(inRead2);
    m_supported.clear();
    std::span<const Finding> rest1 = inRead1;
    std::span<const Finding> rest2 = inRead2;
    while (!rest1.empty() || !rest2.empty()) {
        const std::uint32_t core = std::min(nextCore(rest1), nextCore(rest2));
        const auto place1 = takePlace(rest1, core);
        add(pair, core, {place1, takePlace(rest2, core)});
    }
}

bool PairJudgement::mayStillCount(std::uint32_t core) const {
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

void PairJudgement::add(const ReadPair& pair, std::uint32_t core, const CorePlaces& places) {
    const CoreEntry* entry = &m_entries[core];
    for (bool more = true; more; ++entry) {
        more = !entry->isLastOfCore;
        if (supports(pair, *entry, places)) {
            m_supported.push_back(*entry);
        }
    }
}

bool PairJudgement::count(std::int64_t* counts) {
    if (m_supported.size() > 1) {
        std::sort(m_supported.begin(), m_supported.end(),
                  [](const CoreEntry& a, const CoreEntry& b) { return a.mutation < b.mutation; });
    }
    return countFirstOfDomains(m_supported, counts);
}

} // namespace matching
