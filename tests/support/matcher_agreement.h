// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "matching/matcher.h"
#include "support/batch_of_pairs.h"

namespace support {

/// What a matcher gives for the pairs as one batch.
inline matching::BatchResult matched(const matching::Matcher& matcher,
                                     const catalogue::MutDomains& domains,
                                     const std::vector<PairTexts>& pairs) {
    matching::BatchResult result;
    result.counts.resize(matching::mutationCount(domains));
    matcher.match(batchOf(pairs), result);
    return result;
}

inline bool agree(const matching::BatchResult& a, const matching::BatchResult& b) {
    return a.counts == b.counts && a.processed == b.processed && a.failed == b.failed &&
           a.unassignedPairs == b.unassignedPairs;
}

/// The first pair for which two matchers differ by itself, told as a text; empty if they agree.
inline std::string difference(const matching::Matcher& plain, const matching::Matcher& fast,
                              const catalogue::MutDomains& domains,
                              const std::vector<PairTexts>& pairs) {
    if (agree(matched(plain, domains, pairs), matched(fast, domains, pairs))) {
        return {};
    }
    const auto countsOf = [](const matching::BatchResult& result) {
        std::string text;
        for (std::size_t i = 0; i < result.counts.size(); ++i) {
            text += result.counts[i] != 0 ? " " + std::to_string(i) : "";
        }
        return text + " failed " + std::to_string(result.failed);
    };
    for (const PairTexts& pair : pairs) {
        const matching::BatchResult expected = matched(plain, domains, {pair});
        const matching::BatchResult got = matched(fast, domains, {pair});
        if (!agree(expected, got)) {
            return "read 1: " + pair.read1 + "\nread 2: " + pair.read2 +
                   "\nquality 1: " + pair.quality1 + "\nquality 2: " + pair.quality2 +
                   "\nplain counts mutation" + countsOf(expected) + "\nfast counts mutation" +
                   countsOf(got);
        }
    }
    return "no pair differs by itself";
}

} // namespace support
