// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The windows of a pair's reads are looked up in an index; where a window is one of a core, the
// core is compared letter by letter; and the few cores found are judged as in the plain matcher,
// which is the judge of this one. Pairs go through these steps by the chunk, so that the memory
// that one step needs is fetched for all of them while another one runs: with large catalogues
// little else counts. Tested by matcher_agreement_test.cpp.
#include "matching/fast_matcher.h"

#include <array>
#include <utility>

#include "matching/orientation.h"
#include "matching/pair_judgement.h"
#include "matching/read_codes.h"

namespace matching {
namespace {

constexpr std::size_t kPairsPerChunk = 64;

/// What one step found for the pairs of a chunk, one pair after the other.
template <class Item>
struct ItemsOfPairs {
    std::vector<Item> items;
    std::array<std::size_t, kPairsPerChunk + 1> begins{};

    const Item* begin(std::size_t pair) const noexcept { return items.data() + begins[pair]; }
    const Item* end(std::size_t pair) const noexcept { return items.data() + begins[pair + 1]; }
};

/// The reads of a chunk's pairs of one side on their way through the index.
class ChunkSide {
public:
    explicit ChunkSide(const SideSearch& search) : m_search(search) {}

    void add(std::string_view read, std::size_t pair) {
        const WindowIndex& index = m_search.index();
        auto& [candidates, begins] = m_candidates;
        m_reads[pair] = read;
        if (candidates.size() < begins[pair] + index.mostCandidates(read.size())) {
            candidates.resize(2 * (begins[pair] + index.mostCandidates(read.size())));
        }
        WindowIndex::Candidate* const from = candidates.data() + begins[pair];
        begins[pair + 1] =
            begins[pair] + static_cast<std::size_t>(index.collect(read, from) - from);
    }

    void suspectAll(std::size_t pairs) {
        const auto* const end = m_candidates.begin(pairs);
        for (const auto* candidate = m_candidates.begin(0); candidate != end; ++candidate) {
            m_search.index().prefetchBucket(*candidate);
        }
        for (const auto* candidate = m_candidates.begin(0); candidate != end; ++candidate) {
            m_search.index().prefetchPostings(*candidate);
        }
        m_suspicions.items.clear();
        for (std::size_t pair = 0; pair < pairs; ++pair) {
            for (auto* it = m_candidates.begin(pair); it != m_candidates.end(pair); ++it) {
                m_search.suspect(*it, m_suspicions.items);
            }
            m_suspicions.begins[pair + 1] = m_suspicions.items.size();
        }
    }

    void check(std::size_t pair, std::vector<Finding>& findings) const {
        for (auto* it = m_suspicions.begin(pair); it != m_suspicions.end(pair); ++it) {
            m_search.check(*it, m_reads[pair], findings);
        }
    }

private:
    const SideSearch& m_search;
    std::array<std::string_view, kPairsPerChunk> m_reads;
    ItemsOfPairs<WindowIndex::Candidate> m_candidates;
    ItemsOfPairs<Suspicion> m_suspicions;
};

/// One batch at work.
class Matching {
public:
    Matching(const SideSearch& search1, const SideSearch& search2, const std::vector<CoreUse>& uses,
             BatchResult& result)
        : m_search1(search1), m_search2(search2), m_side1(search1), m_side2(search2),
          m_judgement(uses), m_result(result) {}

    void add(const ReadPair& pair);
    /// Completes what was added.
    void finishChunk();

private:
    void searchUnindexed(const ReadPair& pair);
    void count(const ReadPair& pair);

    const SideSearch& m_search1;
    const SideSearch& m_search2;
    std::array<ReadPair, kPairsPerChunk> m_pairs;
    std::size_t m_pairCount = 0;
    ChunkSide m_side1;
    ChunkSide m_side2;
    std::vector<Finding> m_findings;
    PairJudgement m_judgement;
    Read2Turner m_turner;
    BatchResult& m_result;
};

void Matching::add(const ReadPair& pair) {
    m_side1.add(pair.read1, m_pairCount);
    m_side2.add(pair.read2, m_pairCount);
    m_pairs[m_pairCount++] = pair;
    if (m_pairCount == kPairsPerChunk) {
        finishChunk();
    }
}

void Matching::finishChunk() {
    m_side1.suspectAll(m_pairCount);
    m_side2.suspectAll(m_pairCount);
    for (std::size_t number = 0; number < m_pairCount; ++number) {
        m_findings.clear();
        m_side1.check(number, m_findings);
        m_side2.check(number, m_findings);
        searchUnindexed(m_pairs[number]);
        count(m_pairs[number]);
    }
    m_pairCount = 0;
}

void Matching::searchUnindexed(const ReadPair& pair) {
    if (m_search1.indexesWildCards() && mayHoldReadCode(pair.read1)) {
        m_search1.searchWildCards(pair.read1, m_findings);
    }
    if (m_search1.searchesOneByOne()) {
        m_search1.searchOneByOne(pair.read1, m_findings);
    }
    if (m_search2.searchesOneByOne()) {
        m_search2.searchOneByOne(m_turner.turned(pair).read2, m_findings);
    }
}

void Matching::count(const ReadPair& pair) {
    ++m_result.processed;
    if (m_judgement.count(pair, m_findings, m_result.counts.data())) {
        return;
    }
    ++m_result.failed;
    if (m_result.keepUnassigned) {
        m_result.unassignedPairs.append(pair.read1).append(1, '\n');
        m_result.unassignedPairs.append(m_turner.turned(pair).read2).append(1, '\n');
    }
}

} // namespace

FastMatcher::FastMatcher(const catalogue::MutDomains& domains)
    : FastMatcher(distinctCores(domains)) {}

FastMatcher::FastMatcher(DistinctCores distinct)
    : m_uses(std::move(distinct.uses)), m_search1(Side::read1, distinct.cores),
      m_search2(Side::read2, distinct.cores) {}

void FastMatcher::match(const ReadPairBatch& batch, BatchResult& result) const {
    Matching matching(m_search1, m_search2, m_uses, result);
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const ReadPair pair = batch.pair(index);
        if (!pair.read1.empty() && !pair.read2.empty()) {
            matching.add(pair);
        }
    }
    matching.finishChunk();
}

} // namespace matching
