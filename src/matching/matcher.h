// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/read_pair_batch.h"

namespace matching {

/// What one batch gave.
struct BatchResult {
    /// Pairs per mutation, indexed over the whole catalogue: domains in order, mutations in order.
    std::vector<std::int64_t> counts;
    /// Pairs looked at, and those of them that no mutation claimed.
    std::int64_t processed = 0;
    std::int64_t failed = 0;
    /// For each unclaimed pair read 1 as read and read 2 turned, each ended by a line feed. Filled
    /// only when `keepUnassigned` is set.
    std::string unassignedPairs;
    bool keepUnassigned = true;
};

/// Answers for every pair of a batch: which entries of the catalogue does it support?
///
/// Built once per run from the catalogue, then immutable and shared by the workers. Implementations
/// differ in speed only: each gives the same counts and the same unassigned pairs, byte for byte.
class Matcher {
public:
    virtual ~Matcher() = default;

    /// Adds the batch's pairs to `result`. Pairs with an empty read 1 or read 2 are counted
    /// nowhere. REQUIRES: read 2 and its quality are as they lie in the file, the matcher turns
    /// what it has to; result.counts has one element per mutation.
    virtual void match(const ReadPairBatch& batch, BatchResult& result) const = 0;
};

/// Number of mutations over all domains.
std::size_t mutationCount(const catalogue::MutDomains& domains);

} // namespace matching
