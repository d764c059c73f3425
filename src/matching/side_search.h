// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "matching/catalogue_cores.h"
#include "matching/core_table.h"
#include "matching/oriented_core.h"
#include "matching/seed_index.h"
#include "matching/work_list.h"

namespace matching {

/// A core that stands in a read. Places of read 2 count in the turned read.
struct Finding {
    /// Its first entry.
    std::uint32_t core;
    std::uint32_t place;

    friend bool operator<(const Finding& a, const Finding& b) noexcept {
        return a.core != b.core ? a.core < b.core : a.place < b.place;
    }
};

/// A core to be looked for at a place of a read, as it lies.
struct Suspicion {
    std::uint32_t record;
    std::uint16_t read;
    std::uint16_t place;
};

/// Finds where cores stand in the reads of one mate, as they lie. Immutable, safe from any number
/// of threads.
///
/// What the index holds is found in steps, each of which goes to memory only for what the one
/// before has fetched: looks, candidates, suspicions, findings.
class SideSearch {
public:
    SideSearch(Mate mate, const std::vector<CatalogueCore>& cores);

    const SeedIndex& index() const noexcept { return m_index; }
    /// Appends what may stand where the candidate's window is one of a core.
    void suspect(const SeedIndex::Candidate& candidate, WorkList<Suspicion>& suspicions) const;
    /// Writes what stands there to `to` and returns the end of what it wrote. `text` is the read's.
    Finding* check(const Suspicion& suspicion, std::string_view text, Finding* to) const;

    /// The first entries of the cores that the index cannot hold.
    const std::vector<std::uint32_t>& unindexed() const noexcept { return m_unindexed; }
    /// Whether the index holds wildcard cores.
    bool indexesWildCards() const noexcept { return !m_indexedWildCards.empty(); }
    /// Appends the leftmost places of those: a read with ambiguity codes may hold them without
    /// showing one of their windows. Only read 1 can be such a read.
    void searchWildCards(std::string_view text, std::vector<Finding>& findings) const;

private:
    std::vector<CoreSeed> keepCores(SeedShape shape, const std::vector<CatalogueCore>& cores);

    Mate m_mate;
    CoreTable m_store;
    SeedIndex m_index;
    std::vector<std::uint32_t> m_unindexed;
    std::vector<CatalogueCore> m_indexedWildCards;
};

} // namespace matching
