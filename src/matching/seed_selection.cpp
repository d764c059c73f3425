// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Which k-mers of a core are indexed, and at which positions a read is sampled.
//
// Reads are sampled at positions 0, s, 2s and so on. Let a core of at least k + s - 1 bases occur
// in a read. It holds s consecutive k-mers that begin at s consecutive positions of the read, and
// one of s consecutive positions is a multiple of s. So if any s consecutive k-mers of the core are
// in the index, sampling meets one of them wherever the core occurs: no occurrence is missed. That
// is the pigeonhole argument of sampled k-mer indexes, a relative of the q-gram lemma (Ukkonen,
// Theoretical Computer Science 92, 1992; Rasmussen, Stoye and Myers, Journal of Computational
// Biology 13, 2006). BLAT uses it the other way round: it indexes non-overlapping k-mers of the
// database and looks up every k-mer of the query (Kent, Genome Research 12, 2002). Here the index
// is small and the reads are many, so the reads are sampled.
//
// With m the length of the shortest core, k + s - 1 = m. For m = 31 that makes 15 + 17 or 16 + 16,
// so a read of 150 bases is looked up at eight or nine positions. The stride is 20 at most: a
// mutant is told from its wild type by one base, which k of s consecutive k-mers can cover at most.
// All others are in both cores, and both cores would be verified for them.
//
// Any s consecutive k-mers will do, so each core gets the ones that it shares with the fewest other
// cores. Two passes find them: one counts all k-mers, the other takes the run of the smallest sum.
// A k-mer of a wildcard core stands for each of its expansions, of which it may have 16. Cost: one
// step for each k-mer of a core and pass; bench/matcher_bench.cpp, buildFast, measures it.
//
// Two kinds of core are left to be searched one by one. In a core whose run repeats itself (poly-A,
// AC repeats), one seed hit would stand for many positions. And if more than 80 cores were known by
// one k-mer, one position of a read could lead to any number of comparisons. Without these, the
// work for a base of a read has a bound that does not depend on the catalogue.
//
// Tested by seed_selection_test.cpp; seed_index_test.cpp checks the pigeonhole argument for several
// shapes at every position.
#include "matching/seed_selection.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <string_view>

namespace matching {
namespace {

/// Enough bases to tell the k-mers of a panel apart.
constexpr std::size_t kUsualK = 16;
constexpr std::size_t kMaxStride = 20;
/// What searching a read for one core costs, in seeds looked up, and the bases of a read. Both are
/// rough: they only weigh a few short cores against the stride.
constexpr std::size_t kSeedsPerSearch = 30;
constexpr std::size_t kBasesPerRead = 150;
/// Four bases of two choices each.
constexpr std::size_t kMaxExpansions = 16;
/// The weight of a k-mer with more expansions: more than any run without one can have.
constexpr std::size_t kTooAmbiguous = std::size_t{1} << 40;
constexpr std::size_t kMaxCounted = std::numeric_limits<std::uint16_t>::max();
/// An offset fits 16 bits.
constexpr std::size_t kMaxKmers = std::numeric_limits<std::uint16_t>::max();

/// The longest stride for cores of `shortest` bases and more. Half of the bases go to the stride;
/// k grows further where the catalogue has too many k-mers to tell apart with fewer bases.
SeedShape shapeForShortest(std::size_t shortest, std::size_t cores) {
    SeedShape shape;
    shape.k = std::clamp(shortest / 2, SeedShape::kMinK, kUsualK);
    const auto stride = [&] { return shortest - shape.k + 1; };
    while (shape.k < SeedShape::kMaxK && stride() > shape.k / 2 &&
           (std::size_t{1} << (2 * shape.k)) / 64 < cores * stride()) {
        ++shape.k;
    }
    shape.stride = std::min(stride(), kMaxStride);
    return shape;
}

/// A power of two, large enough that few k-mers share a count.
std::size_t countsFor(std::size_t cores) {
    return std::bit_ceil(std::max<std::size_t>(64, cores * 128));
}

} // namespace

SeedShape chooseSeedShape(std::vector<std::size_t> coreLengths) {
    std::sort(coreLengths.begin(), coreLengths.end());
    SeedShape best;
    std::size_t leastCost = std::numeric_limits<std::size_t>::max();
    std::size_t tried = 0;
    for (std::size_t shorter = 0; shorter < coreLengths.size(); ++shorter) {
        const std::size_t length = coreLengths[shorter];
        if (length == tried || length < SeedShape::kMinK) {
            continue;
        }
        tried = length;
        const SeedShape shape = shapeForShortest(length, coreLengths.size());
        const std::size_t cost = shorter * kSeedsPerSearch + kBasesPerRead / shape.stride;
        if (cost < leastCost) {
            leastCost = cost;
            best = shape;
        }
    }
    return best;
}

SeedSelection::SeedSelection(SeedShape shape, std::size_t cores)
    : m_shape(shape), m_counted(countsFor(cores)), m_selected(countsFor(cores)),
      m_hashShift(32u - static_cast<unsigned>(std::countr_zero(countsFor(cores)))) {}

std::size_t SeedSelection::kmersIn(const OrientedCore& core) const noexcept {
    return core.size() < m_shape.k ? 0 : std::min(core.size() - m_shape.k + 1, kMaxKmers);
}

/// How many texts the k-mer stands for; 0 if they are too many.
std::size_t SeedSelection::expansionsAt(const OrientedCore& core, std::size_t offset) const {
    std::size_t expansions = 1;
    for (std::size_t i = offset; i < offset + m_shape.k && !core.isUnambiguous(); ++i) {
        expansions *= core.choices(i).size();
        if (expansions > kMaxExpansions) {
            return 0;
        }
    }
    return expansions;
}

/// Calls `use` with the hash of each expansion of the k-mer.
template <class Use>
void SeedSelection::forEachHash(const OrientedCore& core, std::size_t offset, Use use) const {
    if (core.isUnambiguous()) {
        static_assert(SeedShape::kMaxK - SeedShape::kMinK <= OrientedCore::kReadableBeyond);
        use(hashOfSeedCode(seedCode(core.bases().data() + offset, m_shape.k)));
        return;
    }
    std::array<char, SeedShape::kMaxK> expansion{};
    const std::size_t expansions = expansionsAt(core, offset);
    for (std::size_t number = 0; number < expansions; ++number) {
        std::size_t rest = number;
        for (std::size_t i = 0; i < m_shape.k; ++i) {
            const std::string_view choices = core.choices(offset + i);
            expansion[i] = choices[rest % choices.size()];
            rest /= choices.size();
        }
        use(hashOfSeedCode(seedCode(expansion.data(), m_shape.k)));
    }
}

bool SeedSelection::canIndex(const OrientedCore& core) const {
    std::size_t inARow = 0;
    for (std::size_t offset = 0; offset < kmersIn(core); ++offset) {
        inARow = expansionsAt(core, offset) > 0 ? inARow + 1 : 0;
        if (inARow == m_shape.stride) {
            return true;
        }
    }
    return false;
}

void SeedSelection::countSeedsOf(const OrientedCore& core) {
    for (std::size_t offset = 0; offset < kmersIn(core); ++offset) {
        forEachHash(core, offset,
                    [&](std::uint32_t hash) { m_counted.increase(hash >> m_hashShift); });
    }
}

/// Sums the counts of each k-mer's expansions.
void SeedSelection::weighKmers(const OrientedCore& core) {
    m_weights.resize(kmersIn(core));
    for (std::size_t offset = 0; offset < m_weights.size(); ++offset) {
        std::size_t& weight = m_weights[offset];
        weight = expansionsAt(core, offset) == 0 ? kTooAmbiguous : 0;
        forEachHash(core, offset, [&](std::uint32_t hash) {
            weight += std::min(m_counted[hash >> m_hashShift], kMaxCounted);
        });
    }
}

std::size_t SeedSelection::leastSharedRun(const OrientedCore& core) {
    weighKmers(core);
    const auto begin = m_weights.begin();
    const auto stride = static_cast<std::ptrdiff_t>(m_shape.stride);
    std::size_t sum = std::accumulate(begin, begin + stride, std::size_t{0});
    std::size_t least = sum;
    std::size_t first = 0;
    for (std::size_t next = 1; next + m_shape.stride <= m_weights.size(); ++next) {
        sum += m_weights[next + m_shape.stride - 1] - m_weights[next - 1];
        if (sum < least) {
            least = sum;
            first = next;
        }
    }
    return first;
}

void SeedSelection::hashRun(const OrientedCore& core, std::size_t first) {
    m_hashes.clear();
    for (std::size_t offset = first; offset < first + m_shape.stride; ++offset) {
        forEachHash(core, offset, [&](std::uint32_t hash) { m_hashes.push_back(hash); });
    }
}

/// Whether no hash occurs twice nor belongs to enough cores already. Sorts the hashes.
bool SeedSelection::canTakeHashes() {
    const auto isTaken = [&](std::uint32_t hash) {
        return m_selected[hash >> m_hashShift] >= kMaxCoresPerSeed;
    };
    std::sort(m_hashes.begin(), m_hashes.end());
    return std::none_of(m_hashes.begin(), m_hashes.end(), isTaken) &&
           std::adjacent_find(m_hashes.begin(), m_hashes.end()) == m_hashes.end();
}

std::optional<std::size_t> SeedSelection::select(const OrientedCore& core) {
    const std::size_t first = leastSharedRun(core);
    hashRun(core, first);
    if (!canTakeHashes()) {
        return std::nullopt;
    }
    for (const std::uint32_t hash : m_hashes) {
        m_selected.increase(hash >> m_hashShift);
    }
    return first;
}

void SeedSelection::appendSeeds(const OrientedCore& core, std::size_t first, std::uint32_t record,
                                std::vector<CoreSeed>& seeds) const {
    for (std::size_t offset = first; offset < first + m_shape.stride; ++offset) {
        forEachHash(core, offset, [&](std::uint32_t hash) {
            seeds.push_back({hash, record, static_cast<std::uint16_t>(offset)});
        });
    }
}

} // namespace matching
