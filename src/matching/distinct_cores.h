// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/oriented_core.h"

namespace matching {

/// The reads that must hold a core.
enum class Strand : std::uint8_t { read1, read2, both };

/// One entry of the catalogue that asks for a core, with all that is needed to judge whether a pair
/// supports it once it is known where the core stands. Mutations and domains are numbered over the
/// whole catalogue.
struct CoreUse {
    std::uint32_t mutation = 0;
    std::uint32_t domain = 0;
    std::uint32_t coreLength = 0;
    Strand strand = Strand::both;
    bool wildCard = false;
    /// Whether a match in the domain hides the pair from later ones.
    bool stops = false;
    /// Whether it is the last use of its core.
    bool isLast = true;
};

/// A core that entries ask for.
struct DistinctCore {
    std::string text;
    bool wildCard = false;
    /// Where its uses begin, by which it is known.
    std::uint32_t firstUse = 0;
    bool isSoughtInRead1 = false;
    bool isSoughtInRead2 = false;
    /// Whether a use asks for it in read 2 whatever read 1 holds.
    bool isSoughtInRead2Alone = false;

    bool isSoughtIn(Mate mate) const noexcept {
        return mate == Mate::read1 ? isSoughtInRead1 : isSoughtInRead2;
    }
};

/// The leftmost place of the core in a read that lies on the strand of read 1.
std::optional<std::size_t> firstPlaceOfCore(std::string_view read, const DistinctCore& core);

/// The cores of a catalogue, each one once, and who asks for them.
struct DistinctCores {
    std::vector<DistinctCore> cores;
    /// Those of one core one after the other. Left out is what cannot win: entries with another
    /// strand word, and in each domain a second entry for the same core and strand.
    std::vector<CoreUse> uses;
};

DistinctCores distinctCores(const catalogue::MutDomains& domains);

} // namespace matching
