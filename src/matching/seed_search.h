// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "matching/catalogue_cores.h"
#include "matching/core_table.h"
#include "matching/oriented_core.h"
#include "matching/seed_index.h"

namespace matching {

/// A core that may occur at a position of a read, because the two share a seed there. To be
/// verified.
struct SeedHit {
    std::uint32_t record;
    std::uint16_t read;
    std::uint16_t position;
};

/// A core that occurs in a read. Positions in read 2 count in its reverse complement.
struct CoreHit {
    /// CatalogueCore::firstEntry.
    std::uint32_t core;
    std::uint32_t position;

    friend bool operator<(const CoreHit& a, const CoreHit& b) noexcept {
        return a.core != b.core ? a.core < b.core : a.position < b.position;
    }
};

/// What the reads of one mate are searched for. Built once per run, then immutable and safe from
/// any number of threads.
class MateIndex {
public:
    MateIndex(Mate mate, const std::vector<CatalogueCore>& cores);

    Mate mate() const noexcept { return m_mate; }
    const SeedIndex& seeds() const noexcept { return m_seeds; }
    const CoreTable& cores() const noexcept { return m_cores; }

    /// The first entries of the cores that could not be indexed.
    const std::vector<std::uint32_t>& unindexed() const noexcept { return m_unindexed; }
    /// Whether wildcard cores are indexed.
    bool indexesWildCards() const noexcept { return !m_indexedWildCards.empty(); }
    /// Appends the leftmost occurrence of each indexed wildcard core. A read 1 with an ambiguity
    /// code needs this: it may hold such a core without a seed of it.
    void searchWildCards(std::string_view read1, std::vector<CoreHit>& hits) const;

private:
    std::vector<CoreSeed> indexCores(SeedShape shape, const std::vector<CatalogueCore>& cores);

    Mate m_mate;
    CoreTable m_cores;
    SeedIndex m_seeds;
    std::vector<std::uint32_t> m_unindexed;
    std::vector<CatalogueCore> m_indexedWildCards;
};

/// A list that elements are written to before it is known whether they will be kept. It never gives
/// memory back, and leaves it unset.
template <class T>
class AppendBuffer {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    std::size_t size() const noexcept { return m_size; }
    void clear() noexcept { m_size = 0; }
    T* begin() noexcept { return m_items.get(); }
    T* end() noexcept { return m_items.get() + m_size; }
    const T& operator[](std::size_t index) const noexcept { return m_items[index]; }
    std::span<const T> all() const noexcept { return {m_items.get(), m_size}; }

    /// Makes room for `count` more elements. Returns where to write them: end().
    T* room(std::size_t count) {
        if (m_capacity - m_size < count) {
            grow(m_size + count);
        }
        return end();
    }
    /// Keeps the elements that were written from end() up to `newEnd`. REQUIRES: they had room().
    void keepUpTo(const T* newEnd) noexcept {
        m_size = static_cast<std::size_t>(newEnd - m_items.get());
    }

private:
    void grow(std::size_t least) {
        const std::size_t capacity = std::max(least, 2 * m_capacity);
        auto items = std::make_unique_for_overwrite<T[]>(capacity);
        std::copy(begin(), end(), items.get());
        m_items = std::move(items);
        m_capacity = capacity;
    }

    std::unique_ptr<T[]> m_items;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

/// Finds all occurrences of the indexed cores in a group of reads of one mate. Used by one thread,
/// for one group after the other: add() each read, collect(), find, take() the hits, clear().
class SeedSearch {
public:
    using Candidate = SeedIndex::Candidate;
    static constexpr std::size_t kGroupSize = 32;

    /// `index` must outlive this.
    explicit SeedSearch(const MateIndex& index) : m_index(index) {}

    const MateIndex& index() const noexcept { return m_index; }
    /// Forgets all reads.
    void clear() noexcept;
    /// Adds a read as it is in its file; the text must stay where it is. REQUIRES: fewer than
    /// kGroupSize were added; RecordText::kReadableBeyond bytes can be read behind the text.
    void add(std::string_view read);
    /// Filters the seeds of all reads. Returns the most verifications that findAll() may need.
    std::size_t collect();

    /// Finds the cores in all reads that were added, or in one of them.
    void findAll() { find(m_candidates.all()); }
    void findIn(std::size_t read) { find(candidatesOf(read)); }
    /// The hits in a read, in no order. After findAll() the reads are asked for one after the
    /// other.
    std::span<CoreHit> take(std::size_t read);

    /// One step of the search, for tests: appends what may occur where the candidate is.
    void expand(const Candidate& candidate, AppendBuffer<SeedHit>& hits) const;

private:
    std::span<const Candidate> candidatesOf(std::size_t read) const;
    void find(std::span<const Candidate> candidates);
    /// Writes the hit to `to` if the core occurs in `read`. Returns the end of what it wrote.
    CoreHit* verify(const SeedHit& hit, std::string_view read, CoreHit* to) const;

    const MateIndex& m_index;
    std::array<std::string_view, kGroupSize> m_reads;
    std::uint16_t m_readCount = 0;
    AppendBuffer<ReadSeed> m_seeds;
    AppendBuffer<std::uint32_t> m_selected;
    AppendBuffer<Candidate> m_candidates;
    AppendBuffer<SeedHit> m_seedHits;
    AppendBuffer<CoreHit> m_coreHits;
    /// How many hits each read has, and where those of the next read begin.
    std::array<std::uint32_t, kGroupSize> m_hitCounts;
    CoreHit* m_nextHit = nullptr;
};

} // namespace matching
