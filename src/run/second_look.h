// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"
#include "run/pair_matching.h"

namespace run {

/// Where else a pair may hold a core, so that the rules count it nowhere.
enum class ElsewhereInPair {
    otherStrand,            ///< in the read that the strand word names, the other way round
    otherMate,              ///< in the other read, in the fragment's own direction
    otherStrandOfOtherMate, ///< both: as in exchanged files
    lowQuality,             ///< in its place, where the quality gate refuses it
};

/// Pairs that would support a mutation if they were looked at in another way.
struct CoreElsewhere {
    ElsewhereInPair place = ElsewhereInPair::otherStrand;
    std::string mutation;
    std::int64_t pairs = 0;
};

/// What the first pairs of a run hold that its counts do not tell.
struct SecondLook {
    std::int64_t pairsLookedAt = 0;
    /// Those with the most pairs first.
    std::vector<CoreElsewhere> found;
};

/// So many pairs are looked at again at most.
inline constexpr std::int64_t kPairsOfSecondLook = 100'000;

/// Whether fewer than one pair in 1,000 of at least 1,000 is mapped.
bool nearlyNothingIsMapped(const ReadCounters& counters);

/// Whether a run calls for a second look: fewer than one pair in 1,000 of at least 1,000 is mapped,
/// or a domain has no informative pair while another has. `domains` hold the run's counts.
bool callsForSecondLook(const catalogue::MutDomains& domains, const ReadCounters& counters);

/// Matches the first pairs again in the ways of ElsewhereInPair and gives what is found there of
/// domains without an informative pair, or of all domains where nearly nothing is mapped. Changes
/// nothing. Files that cannot be read give nothing: the run itself has told of that.
SecondLook lookAgain(const PairedReads& reads, const catalogue::MutDomains& domains,
                     const ReadCounters& counters);

/// "24 pairs hold BRAF_600_wt on the other strand: check the strand word or the library's
/// orientation", without a line end.
std::string lineOf(const CoreElsewhere& found);

} // namespace run
