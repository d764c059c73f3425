// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"
#include "reads/read_pair_batch.h"

namespace matching {

/// The result of one batch.
struct BatchResult {
    /// Pairs per mutation, indexed over the whole catalogue: domains in order, mutations in order.
    std::vector<std::int64_t> counts;
    /// Pairs with two reads that are not empty, and those of them that no mutation claimed.
    std::int64_t processed = 0;
    std::int64_t failed = 0;
    /// Read 1 as it is and read 2 reverse-complemented of each pair that no mutation claimed, each
    /// ended by a line feed. Filled only if `keepUnassigned` is set.
    std::string unassignedPairs;
    bool keepUnassigned = true;
};

/// Decides for every pair of a batch which entries of the catalogue it supports.
///
/// Built once per run from the catalogue, then immutable and shared by the workers. The two
/// implementations, PlainMatcher and FastMatcher (fast_matcher.h), differ in speed only: they give
/// the same counts and the same unassigned pairs, byte for byte.
class Matcher {
public:
    virtual ~Matcher() = default;

    /// Adds the batch's pairs to `result`. Pairs with an empty read 1 or read 2 are counted
    /// nowhere. REQUIRES: read 2 and its quality are as in the file, the matcher
    /// reverse-complements what it needs; result.counts has one element per mutation.
    virtual void match(const reads::ReadPairBatch& batch, BatchResult& result) const = 0;
};

/// The matcher that is written to be read: each pair is compared with the catalogue's entries in
/// their order. It is the reference for faster ones. Its time per pair grows with the catalogue.
class PlainMatcher : public Matcher {
public:
    /// Shares `domains`, which must not change while this lives.
    explicit PlainMatcher(const catalogue::MutDomains& domains);
    void match(const reads::ReadPairBatch& batch, BatchResult& result) const override;

private:
    catalogue::MutDomains m_domains;
};

/// Number of mutations over all domains.
inline std::size_t mutationCount(const catalogue::MutDomains& domains) {
    std::size_t count = 0;
    for (const auto& domain : archive::orEmpty(domains)) {
        count += archive::orEmpty(domain->mutationMutAr).size();
    }
    return count;
}

} // namespace matching
