// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The windows of a pair's reads are looked up in an index; where a window is one of a core, the
// core is compared letter by letter; and the few cores found are judged as in the plain matcher,
// which is the judge of this one. Pairs go through these steps by the chunk, so that the memory
// that one step needs is fetched for all of them while another one runs: with large catalogues
// little else counts. Tested by matcher_agreement_test.cpp.
#include "matching/fast_matcher.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>

#include "matching/orientation.h"
#include "matching/pair_judgement.h"
#include "matching/read_codes.h"

namespace matching {
namespace {

constexpr std::size_t kPairsPerChunk = 64;
/// Suspicions after which those at hand are judged first: far more than there are of a chunk,
/// unless its reads are made of cores that repeat themselves. A pair's are never parted.
constexpr std::size_t kManySuspicions = std::size_t{1} << 15;

/// One batch at work.
class Matching {
public:
    Matching(const SideSearch& search1, const SideSearch& search2, const OneByOneSearch& oneByOne,
             const std::vector<CoreUse>& uses, BatchResult& result)
        : m_searches{&search1, &search2}, m_oneByOne(oneByOne), m_judgement(uses),
          m_result(result) {}

    void add(const ReadPair& pair);
    /// Completes what was added.
    void finishChunk();

private:
    const SideSearch& searchOf(ReadNumber read) const noexcept { return *m_searches[read & 1]; }
    void addCandidates(std::string_view text, ReadNumber read);
    void fetchPostings() const;
    void suspect();
    void check();
    void judge();
    bool mayGoOn() const;
    void judgePair(const ReadPair& pair, std::span<Finding> findings);
    void countPair(const ReadPair& pair);

    std::array<const SideSearch*, 2> m_searches;
    const OneByOneSearch& m_oneByOne;
    std::array<ReadPair, kPairsPerChunk> m_pairs;
    std::array<std::string_view, 2 * kPairsPerChunk> m_reads;
    std::size_t m_pairCount = 0;
    std::vector<WindowIndex::Candidate> m_candidates;
    std::size_t m_candidateCount = 0;
    /// Where suspicion goes on, and judgement.
    std::size_t m_nextCandidate = 0;
    std::size_t m_nextPair = 0;
    std::vector<Suspicion> m_suspicions;
    std::vector<Finding> m_findings;
    /// Those of a pair that needs more than the index has.
    std::vector<Finding> m_withWildCards;
    PairJudgement m_judgement;
    std::string m_turnedRead2;
    BatchResult& m_result;
};

void Matching::add(const ReadPair& pair) {
    addCandidates(pair.read1, readNumber(m_pairCount, Side::read1));
    addCandidates(pair.read2, readNumber(m_pairCount, Side::read2));
    m_pairs[m_pairCount++] = pair;
    if (m_pairCount == kPairsPerChunk) {
        finishChunk();
    }
}

void Matching::addCandidates(std::string_view text, ReadNumber read) {
    const WindowIndex& index = searchOf(read).index();
    const std::size_t most = m_candidateCount + index.mostCandidates(text.size());
    if (m_candidates.size() < most) {
        m_candidates.resize(2 * most);
    }
    WindowIndex::Candidate* const from = m_candidates.data() + m_candidateCount;
    m_candidateCount += static_cast<std::size_t>(index.collect(text, read, from) - from);
    m_reads[read] = text;
}

void Matching::finishChunk() {
    fetchPostings();
    while (m_nextPair < m_pairCount) {
        suspect();
        check();
        judge();
    }
    m_nextPair = 0;
    m_pairCount = 0;
    m_nextCandidate = 0;
    m_candidateCount = 0;
}

void Matching::fetchPostings() const {
    for (std::size_t i = 0; i < m_candidateCount; ++i) {
        searchOf(m_candidates[i].read).index().prefetchBucket(m_candidates[i]);
    }
    for (std::size_t i = 0; i < m_candidateCount; ++i) {
        searchOf(m_candidates[i].read).index().prefetchPostings(m_candidates[i]);
    }
}

void Matching::suspect() {
    m_suspicions.clear();
    while (m_nextCandidate < m_candidateCount && mayGoOn()) {
        const WindowIndex::Candidate& candidate = m_candidates[m_nextCandidate++];
        searchOf(candidate.read).suspect(candidate, m_suspicions);
    }
}

bool Matching::mayGoOn() const {
    return m_suspicions.size() < kManySuspicions ||
           pairOf(m_candidates[m_nextCandidate].read) == pairOf(m_suspicions.back().read);
}

void Matching::check() {
    m_findings.clear();
    for (const Suspicion& suspicion : m_suspicions) {
        searchOf(suspicion.read).check(suspicion, m_reads[suspicion.read], m_findings);
    }
}

void Matching::judge() {
    const std::size_t end = m_nextCandidate < m_candidateCount
                                ? pairOf(m_candidates[m_nextCandidate].read)
                                : m_pairCount;
    auto begin = m_findings.begin();
    for (; m_nextPair < end; ++m_nextPair) {
        auto next = begin;
        while (next != m_findings.end() && pairOf(next->read) == m_nextPair) {
            ++next;
        }
        judgePair(m_pairs[m_nextPair], {begin, next});
        begin = next;
    }
}

void Matching::judgePair(const ReadPair& pair, std::span<Finding> findings) {
    const SideSearch& search1 = *m_searches[0];
    if (search1.indexesWildCards() && mayHoldReadCode(pair.read1)) {
        m_withWildCards.assign(findings.begin(), findings.end());
        search1.searchWildCards(pair.read1, readNumber(m_nextPair, Side::read1), m_withWildCards);
        findings = m_withWildCards;
    }
    m_judgement.begin(pair, findings);
    if (!m_oneByOne.empty()) {
        m_turnedRead2.clear();
        appendReverseComplement(m_turnedRead2, pair.read2);
        m_oneByOne.search(pair, m_turnedRead2, m_judgement);
    }
    countPair(pair);
}

void Matching::countPair(const ReadPair& pair) {
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
std::vector<DistinctCore> notInBoth(const SideSearch& search1, const SideSearch& search2,
                                    std::vector<DistinctCore> cores) {
    std::unordered_set<std::uint32_t> unindexed(search1.unindexed().begin(),
                                                search1.unindexed().end());
    unindexed.insert(search2.unindexed().begin(), search2.unindexed().end());
    const auto isIndexed = [&](const DistinctCore& core) {
        return unindexed.count(core.firstUse) == 0;
    };
    cores.erase(std::remove_if(cores.begin(), cores.end(), isIndexed), cores.end());
    return cores;
}

} // namespace

FastMatcher::FastMatcher(const catalogue::MutDomains& domains)
    : FastMatcher(distinctCores(domains)) {}

FastMatcher::FastMatcher(DistinctCores distinct)
    : m_uses(std::move(distinct.uses)), m_search1(Side::read1, distinct.cores),
      m_search2(Side::read2, distinct.cores),
      m_oneByOne(notInBoth(m_search1, m_search2, std::move(distinct.cores))) {}

void FastMatcher::match(const ReadPairBatch& batch, BatchResult& result) const {
    Matching matching(m_search1, m_search2, m_oneByOne, m_uses, result);
    for (std::size_t index = 0; index < batch.size(); ++index) {
        const ReadPair pair = batch.pair(index);
        if (!pair.read1.empty() && !pair.read2.empty()) {
            matching.add(pair);
        }
    }
    matching.finishChunk();
}

} // namespace matching
