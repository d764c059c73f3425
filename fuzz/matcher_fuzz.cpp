// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Lets arbitrary bytes choose a catalogue and read pairs, and holds the fast matcher to the plain
// one.

#include <cstddef>
#include <cstdint>

#include "choices.h"
#include "require.h"

#include "matching/fast_matcher.h"
#include "matching/matcher.h"
#include "support/matcher_agreement.h"
#include "support/matching_case.h"

namespace {

constexpr std::size_t kMostDomains = 6;
constexpr std::size_t kMostPairs = 200;

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::Choices choices(data, size);
    support::MatchingCaseMaker maker([&](std::size_t limit) { return choices.below(limit); });
    const auto domains = maker.makeCatalogue(kMostDomains);
    std::vector<support::PairTexts> pairs;
    while (!choices.atEnd() && pairs.size() < kMostPairs) {
        pairs.push_back(maker.makePair());
    }
    const std::string difference = support::difference(
        matching::PlainMatcher(domains), matching::FastMatcher(domains), domains, pairs);
    fuzzing::require(difference.empty(), "the matchers differ", difference);
    return 0;
}
