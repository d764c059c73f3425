// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/domain_words.h"
#include "matching/oriented_core.h"

namespace matching {

using catalogue::Strand;

/// One entry of the catalogue that asks for a core: all that decides whether a pair supports the
/// entry, once the core's position in the reads is known. Mutations and domains are numbered over
/// the whole catalogue.
struct CoreEntry {
    std::uint32_t mutation = 0;
    std::uint32_t domain = 0;
    std::uint32_t coreLength = 0;
    Strand strand = Strand::both;
    bool wildCard = false;
    /// Whether a match in the domain hides the pair from later ones.
    bool stops = false;
    /// Whether it is the last entry that asks for its core.
    bool isLastOfCore = true;
};

/// A core that entries ask for.
struct CatalogueCore {
    std::string text;
    bool wildCard = false;
    /// The index of its first entry. It is also the core's number.
    std::uint32_t firstEntry = 0;
    bool isSearchedInRead1 = false;
    bool isSearchedInRead2 = false;
    /// Whether an entry asks for it in read 2 whatever read 1 holds.
    bool isSearchedInRead2Alone = false;

    bool isSearchedIn(Mate mate) const noexcept {
        return mate == Mate::read1 ? isSearchedInRead1 : isSearchedInRead2;
    }
};

/// The leftmost position of the core in a read on the strand of read 1.
std::optional<std::size_t> firstOccurrence(std::string_view read, const CatalogueCore& core);

/// The cores of a catalogue, each once, with the entries that ask for them.
struct CatalogueCores {
    std::vector<CatalogueCore> cores;
    /// The entries of one core follow one another. Entries that cannot win are left out: those with
    /// an unknown strand word and, in each domain, a second one for the same core and strand.
    std::vector<CoreEntry> entries;
};

CatalogueCores catalogueCores(const catalogue::MutDomains& domains);

} // namespace matching
