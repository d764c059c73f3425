// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The windows of a pair's reads are looked up in an index; where a window is one of a core, the
// core is compared letter by letter; and the few cores found are judged as in the plain matcher,
// which is the judge of this one. Tested by matcher_agreement_test.cpp.
#include "matching/fast_matcher.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>

#include "matching/chunk_search.h"
#include "matching/oriented_core.h"
#include "matching/pair_judgement.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

constexpr std::size_t kPairsPerChunk = ChunkSearch::kMostReads;
/// Comparisons for which a chunk's pairs are searched together: far more than it takes, unless its
/// reads are made of cores that repeat themselves.
constexpr std::size_t kManySuspicions = std::size_t{1} << 15;

/// One batch at work.
class Matching {
public:
    Matching(const SideSearch& search1, const SideSearch& search2, const OneByOneSearch& oneByOne,
             const std::vector<CoreEntry>& entries, BatchResult& result)
        : m_search1(search1), m_search2(search2), m_oneByOne(oneByOne), m_judgement(entries),
          m_result(result) {}

    void add(const ReadPair& pair);
    /// Completes what was added.
    void finishChunk();

private:
    void matchOneByOne();
    void matchPair(std::size_t number);
    void count(const ReadPair& pair);

    ChunkSearch m_search1;
    ChunkSearch m_search2;
    const OneByOneSearch& m_oneByOne;
    std::array<ReadPair, kPairsPerChunk> m_pairs;
    std::bitset<kPairsPerChunk> m_mayHoldAmbiguityCode;
    std::size_t m_pairCount = 0;
    /// Those of a pair that needs more than the index has.
    std::vector<Finding> m_withWildCards;
    PairJudgement m_judgement;
    std::string m_reverseComplementOfRead2;
    BatchResult& m_result;
};

void Matching::add(const ReadPair& pair) {
    m_search1.add(pair.read1);
    m_search2.add(pair.read2);
    // Now, while the read is in the first-level cache.
    m_mayHoldAmbiguityCode[m_pairCount] =
        m_search1.search().indexesWildCards() && mayHoldAmbiguityCode(pair.read1);
    m_pairs[m_pairCount++] = pair;
    if (m_pairCount == kPairsPerChunk) {
        finishChunk();
    }
}

void Matching::finishChunk() {
    if (m_search1.collect() + m_search2.collect() <= kManySuspicions) {
        m_search1.findAll();
        m_search2.findAll();
        for (std::size_t number = 0; number < m_pairCount; ++number) {
            matchPair(number);
        }
    } else {
        matchOneByOne();
    }
    m_search1.clear();
    m_search2.clear();
    m_pairCount = 0;
}

/// In no more memory than the dearest pair takes.
void Matching::matchOneByOne() {
    for (std::size_t number = 0; number < m_pairCount; ++number) {
        m_search1.findIn(number);
        m_search2.findIn(number);
        matchPair(number);
    }
}

void Matching::matchPair(std::size_t number) {
    const ReadPair& pair = m_pairs[number];
    std::span<Finding> inRead1 = m_search1.take(number);
    if (m_mayHoldAmbiguityCode[number]) {
        m_withWildCards.assign(inRead1.begin(), inRead1.end());
        m_search1.search().searchWildCards(pair.read1, m_withWildCards);
        inRead1 = m_withWildCards;
    }
    m_judgement.begin(pair, inRead1, m_search2.take(number));
    if (!m_oneByOne.empty()) {
        m_reverseComplementOfRead2.clear();
        appendReverseComplement(m_reverseComplementOfRead2, pair.read2);
        m_oneByOne.search(pair, m_reverseComplementOfRead2, m_judgement);
    }
    count(pair);
}

void Matching::count(const ReadPair& pair) {
    ++m_result.processed;
    if (m_judgement.count(m_result.counts.data())) {
        return;
    }
    ++m_result.failed;
    if (m_result.keepUnassigned) {
        m_result.unassignedPairs.append(pair.read1).append(1, '\n');
        appendReverseComplement(m_result.unassignedPairs, pair.read2);
        m_result.unassignedPairs.append(1, '\n');
    }
}

/// The cores that one of the two cannot hold.
std::vector<CatalogueCore> notInBoth(const SideSearch& search1, const SideSearch& search2,
                                     std::vector<CatalogueCore> cores) {
    std::unordered_set<std::uint32_t> unindexed(search1.unindexed().begin(),
                                                search1.unindexed().end());
    unindexed.insert(search2.unindexed().begin(), search2.unindexed().end());
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
    : m_entries(std::move(catalogue.entries)), m_search1(Mate::read1, catalogue.cores),
      m_search2(Mate::read2, catalogue.cores),
      m_oneByOne(notInBoth(m_search1, m_search2, std::move(catalogue.cores))) {}

void FastMatcher::match(const ReadPairBatch& batch, BatchResult& result) const {
    Matching matching(m_search1, m_search2, m_oneByOne, m_entries, result);
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const ReadPair pair = batch.pair(index);
        if (!pair.read1.empty() && !pair.read2.empty()) {
            matching.add(pair);
        }
    }
    matching.finishChunk();
}

} // namespace matching
