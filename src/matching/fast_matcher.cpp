// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One batch goes through the search in groups of 32 pairs, all first reads, then all second reads
// (seed_search.cpp). Then each pair of the group is assigned by the cores found in it
// (pair_assignment.cpp). Two cases need more:
//
// - A read 1 with an ambiguity code agrees with several bases of a wildcard core, and may hold the
//   core without a seed of it. Such a read is searched for the wildcard cores one by one. All other
//   cores are found by seeds, whatever bytes a read holds: the same bytes have the same code.
// - Cores that neither index can hold are searched one by one in every pair.
//
// Tested by matcher_agreement_test.cpp and fuzz/matcher_fuzz.cpp, which hold it to PlainMatcher
// pair by pair.
#include "matching/fast_matcher.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>

#include "matching/oriented_core.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

constexpr std::size_t kPairsPerGroup = SeedSearch::kGroupSize;
/// The most verifications for which a group's pairs are searched together. That is far more than
/// needed, unless the reads are made of cores that repeat themselves.
constexpr std::size_t kManyVerifications = std::size_t{1} << 15;

/// One batch at work.
class BatchMatching {
public:
    BatchMatching(const MateIndex& index1, const MateIndex& index2, const UnindexedCores& unindexed,
                  const std::vector<CoreEntry>& entries, BatchResult& result)
        : m_search1(index1), m_search2(index2), m_unindexed(unindexed), m_assignment(entries),
          m_result(result) {}

    void add(const reads::ReadPair& pair);
    /// Matches the pairs that were added since the last group.
    void finishGroup();

private:
    void matchPairByPair();
    void matchPair(std::size_t number);
    void count(const reads::ReadPair& pair);

    SeedSearch m_search1;
    SeedSearch m_search2;
    const UnindexedCores& m_unindexed;
    std::array<reads::ReadPair, kPairsPerGroup> m_pairs;
    std::bitset<kPairsPerGroup> m_mayHoldAmbiguityCode;
    std::size_t m_pairCount = 0;
    /// The hits in a read 1 with ambiguity codes.
    std::vector<CoreHit> m_withWildCards;
    PairAssignment m_assignment;
    std::string m_reverseComplement2;
    BatchResult& m_result;
};

void BatchMatching::add(const reads::ReadPair& pair) {
    m_search1.add(pair.read1);
    m_search2.add(pair.read2);
    // Here, while the read is in the first-level cache.
    m_mayHoldAmbiguityCode[m_pairCount] =
        m_search1.index().indexesWildCards() && mayHoldAmbiguityCode(pair.read1);
    m_pairs[m_pairCount++] = pair;
    if (m_pairCount == kPairsPerGroup) {
        finishGroup();
    }
}

void BatchMatching::finishGroup() {
    if (m_search1.collect() + m_search2.collect() <= kManyVerifications) {
        m_search1.findAll();
        m_search2.findAll();
        for (std::size_t number = 0; number < m_pairCount; ++number) {
            matchPair(number);
        }
    } else {
        matchPairByPair();
    }
    m_search1.clear();
    m_search2.clear();
    m_pairCount = 0;
}

/// Needs no more memory than the most expensive pair.
void BatchMatching::matchPairByPair() {
    for (std::size_t number = 0; number < m_pairCount; ++number) {
        m_search1.findIn(number);
        m_search2.findIn(number);
        matchPair(number);
    }
}

void BatchMatching::matchPair(std::size_t number) {
    const reads::ReadPair& pair = m_pairs[number];
    std::span<CoreHit> inRead1 = m_search1.take(number);
    if (m_mayHoldAmbiguityCode[number]) {
        m_withWildCards.assign(inRead1.begin(), inRead1.end());
        m_search1.index().searchWildCards(pair.read1, m_withWildCards);
        inRead1 = m_withWildCards;
    }
    m_assignment.begin(pair, inRead1, m_search2.take(number));
    if (!m_unindexed.empty()) {
        m_reverseComplement2.clear();
        appendReverseComplement(m_reverseComplement2, pair.read2);
        m_unindexed.search(pair, m_reverseComplement2, m_assignment);
    }
    count(pair);
}

void BatchMatching::count(const reads::ReadPair& pair) {
    ++m_result.processed;
    if (m_assignment.count(m_result.counts.data())) {
        return;
    }
    ++m_result.failed;
    if (m_result.keepUnassigned) {
        m_result.unassignedPairs.append(pair.read1).append(1, '\n');
        appendReverseComplement(m_result.unassignedPairs, pair.read2);
        m_result.unassignedPairs.append(1, '\n');
    }
}

/// The cores that one of the two indexes does not hold.
std::vector<CatalogueCore> notInBoth(const MateIndex& index1, const MateIndex& index2,
                                     std::vector<CatalogueCore> cores) {
    std::unordered_set<std::uint32_t> unindexed(index1.unindexed().begin(),
                                                index1.unindexed().end());
    unindexed.insert(index2.unindexed().begin(), index2.unindexed().end());
    const auto isIndexed = [&](const CatalogueCore& core) {
        return unindexed.count(core.firstEntry) == 0;
    };
    cores.erase(std::remove_if(cores.begin(), cores.end(), isIndexed), cores.end());
    return cores;
}

} // namespace

FastMatcher::FastMatcher(const catalogue::MutDomains& domains)
    : FastMatcher(catalogueCores(domains)) {}

FastMatcher::FastMatcher(CatalogueCores catalogue)
    : m_entries(std::move(catalogue.entries)), m_index1(Mate::read1, catalogue.cores),
      m_index2(Mate::read2, catalogue.cores),
      m_unindexed(notInBoth(m_index1, m_index2, std::move(catalogue.cores))) {}

void FastMatcher::match(const reads::ReadPairBatch& batch, BatchResult& result) const {
    BatchMatching matching(m_index1, m_index2, m_unindexed, m_entries, result);
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const reads::ReadPair pair = batch.pair(index);
        if (!pair.read1.empty() && !pair.read2.empty()) {
            matching.add(pair);
        }
    }
    matching.finishGroup();
}

} // namespace matching
