// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "matching/catalogue_cores.h"
#include "matching/seed_search.h"
#include "reads/read_pair_batch.h"

namespace matching {

/// The leftmost position of a core in each read, on the strand of read 1.
struct CorePositions {
    std::optional<std::size_t> read1;
    std::optional<std::size_t> read2;
};

/// Assigns a pair to mutations, given the cores that occur in its reads: by strand word, quality
/// gate, domain order and stop rule. Used by one thread, for one pair after the other.
class PairAssignment {
public:
    /// `entries` are those of all cores and must outlive this.
    explicit PairAssignment(const std::vector<CoreEntry>& entries) : m_entries(entries) {}

    /// Begins a pair, which is as in its files. The hits hold the leftmost occurrence of each core;
    /// they may hold others, and the same one twice. They get sorted.
    void begin(const reads::ReadPair& pair, std::span<CoreHit> inRead1, std::span<CoreHit> inRead2);
    /// Whether the pair might count for this core as well, given the cores it is known to hold. If
    /// cores are asked for in the order of the catalogue, the answer is no whenever the plain
    /// matcher would not search for the core.
    bool mayStillCount(std::uint32_t core) const;
    /// Adds a core with its positions, if any. Its hits may have been added already.
    void add(const reads::ReadPair& pair, std::uint32_t core, const CorePositions& positions);
    /// Adds 1 to the count of each mutation that the pair counts for. Returns whether there is one.
    bool count(std::int64_t* counts);

private:
    const std::vector<CoreEntry>& m_entries;
    std::vector<CoreEntry> m_supported;
};

/// The cores that are not indexed: searches pairs for one after the other, but never in more reads
/// than the plain matcher would. So a catalogue of only such cores costs no more than that.
class UnindexedCores {
public:
    /// `cores` are in the order of the catalogue.
    explicit UnindexedCores(std::vector<CatalogueCore> cores) : m_cores(std::move(cores)) {}

    bool empty() const noexcept { return m_cores.empty(); }
    /// Adds the cores that occur in the pair to `assignment`, which has begun it.
    /// `reverseComplement2` is the reverse complement of the pair's read 2.
    void search(const reads::ReadPair& pair, std::string_view reverseComplement2,
                PairAssignment& assignment) const;

private:
    std::vector<CatalogueCore> m_cores;
};

} // namespace matching
