// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Lets arbitrary bytes choose a catalogue and read pairs, and holds the fast matcher to the plain
// one.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "matching/fast_matcher.h"
#include "matching/plain_matcher.h"
#include "support/matcher_agreement.h"
#include "support/matching_case.h"

namespace {

constexpr std::size_t kMostDomains = 6;
constexpr std::size_t kMostPairs = 200;

/// Choices taken from bytes, always the first one when these have run out.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}
    bool atEnd() const noexcept { return m_next == m_end; }
    std::size_t below(std::size_t limit) noexcept {
        std::size_t number = byte();
        if (limit > 256) {
            number = number << 8 | byte();
        }
        return number % limit;
    }

private:
    std::size_t byte() noexcept { return atEnd() ? 0 : *m_next++; }
    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
};

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    support::MatchingCaseMaker maker([&](std::size_t limit) { return choices.below(limit); });
    const auto domains = maker.makeCatalogue(kMostDomains);
    std::vector<support::PairTexts> pairs;
    while (!choices.atEnd() && pairs.size() < kMostPairs) {
        pairs.push_back(maker.makePair());
    }
    const std::string difference = support::difference(
        matching::PlainMatcher(domains), matching::FastMatcher(domains), domains, pairs);
    if (!difference.empty()) {
        std::fprintf(stderr, "%s\n", difference.c_str());
        std::abort();
    }
    return 0;
}
