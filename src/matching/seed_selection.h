// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "matching/oriented_core.h"
#include "matching/seed.h"

namespace matching {

/// The best shape for cores of these lengths. A long stride needs long cores, so a few short cores
/// among long ones are better searched one by one: those shorter than minCoreLength().
SeedShape chooseSeedShape(std::vector<std::size_t> coreLengths);

/// Many counts, nearly all of them small: a byte each, and a map for the few that need more.
class SmallCounts {
public:
    explicit SmallCounts(std::size_t counts) : m_low(counts) {}

    void increase(std::size_t index) {
        if (m_low[index] < kMaxInAByte) {
            ++m_low[index];
        } else {
            ++m_rest[index];
        }
    }
    std::size_t operator[](std::size_t index) const {
        const std::size_t low = m_low[index];
        return low < kMaxInAByte ? low : low + restOf(index);
    }

private:
    static constexpr std::uint8_t kMaxInAByte = 255;

    std::size_t restOf(std::size_t index) const {
        const auto rest = m_rest.find(index);
        return rest == m_rest.end() ? 0 : rest->second;
    }

    std::vector<std::uint8_t> m_low;
    std::unordered_map<std::size_t, std::size_t> m_rest;
};

/// Selects the seeds of each core: `stride` consecutive k-mers, the ones that it shares with the
/// fewest other cores. First every core is counted, then each is asked for its seeds.
class SeedSelection {
public:
    /// No k-mer is selected for more cores than this, so no seed of a read has more postings. All
    /// one-base neighbours of a long core share a k-mer with 68 others: near its ends.
    static constexpr std::size_t kMaxCoresPerSeed = 80;

    /// `cores` is roughly how many cores will come.
    SeedSelection(SeedShape shape, std::size_t cores);

    /// Whether the core is long enough and has `stride` consecutive k-mers that are not too
    /// ambiguous.
    bool canIndex(const OrientedCore& core) const;
    /// Counts the core's k-mers. REQUIRES: canIndex().
    void countSeedsOf(const OrientedCore& core);
    /// The offset of the first selected k-mer. nullopt for a core that has to be searched one by
    /// one: its selected k-mers repeat, or enough cores have one of them already.
    /// REQUIRES: all cores were counted.
    std::optional<std::size_t> select(const OrientedCore& core);
    /// Appends the seeds from offset `first` on, which select() returned.
    void appendSeeds(const OrientedCore& core, std::size_t first, std::uint32_t record,
                     std::vector<CoreSeed>& seeds) const;

private:
    std::size_t kmersIn(const OrientedCore& core) const noexcept;
    std::size_t expansionsAt(const OrientedCore& core, std::size_t offset) const;
    void weighKmers(const OrientedCore& core);
    std::size_t leastSharedRun(const OrientedCore& core);
    void hashRun(const OrientedCore& core, std::size_t first);
    bool canTakeHashes();
    template <class Use>
    void forEachHash(const OrientedCore& core, std::size_t offset, Use use) const;

    SeedShape m_shape;
    /// How many k-mers were counted, by the upper bits of their hashes.
    SmallCounts m_counted;
    /// How many were selected. K-mers with the same upper bits count as one.
    SmallCounts m_selected;
    unsigned m_hashShift = 0;
    // Of the core that is asked for its seeds.
    std::vector<std::size_t> m_weights;
    std::vector<std::uint32_t> m_hashes;
};

} // namespace matching
