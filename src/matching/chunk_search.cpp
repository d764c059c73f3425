// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/chunk_search.h"

#include <algorithm>

namespace matching {

void ChunkSearch::clear() noexcept {
    m_readCount = 0;
    m_looks.clear();
    m_candidates.clear();
}

void ChunkSearch::add(std::string_view text) {
    const SeedIndex& index = m_search.index();
    m_looks.keepUpTo(index.sample(text, m_readCount, m_looks.room(index.maxSeedsIn(text))));
    m_reads[m_readCount++] = text;
}

std::size_t ChunkSearch::collect() {
    const SeedIndex& index = m_search.index();
    std::uint32_t* const selected = m_selected.room(m_looks.size());
    const std::uint32_t* const end = index.filter().select(m_looks.all(), selected);
    Candidate* to = m_candidates.room(static_cast<std::size_t>(end - selected));
    for (const std::uint32_t* number = selected; number != end; ++number) {
        *to = index.candidateOf(m_looks[*number]);
        index.prefetchBucket(*to++);
    }
    m_candidates.keepUpTo(to);
    std::size_t mostComparisons = 0;
    for (const Candidate& candidate : m_candidates.all()) {
        mostComparisons += index.prefetchPostings(candidate);
    }
    return mostComparisons;
}

std::span<const SeedIndex::Candidate> ChunkSearch::candidatesOf(std::size_t read) const {
    const auto all = m_candidates.all();
    const auto firstOf = [&](std::size_t which) {
        return std::partition_point(all.begin(), all.end(), [&](const Candidate& candidate) {
            return candidate.read < which;
        });
    };
    return {firstOf(read), firstOf(read + 1)};
}

void ChunkSearch::find(std::span<const Candidate> candidates) {
    m_suspicions.clear();
    for (const Candidate& candidate : candidates) {
        m_search.suspect(candidate, m_suspicions);
    }
    m_foundIn.fill(0);
    m_findings.clear();
    Finding* to = m_findings.room(m_suspicions.size() + 1);
    for (const Suspicion& suspicion : m_suspicions.all()) {
        Finding* const before = to;
        to = m_search.check(suspicion, m_reads[suspicion.read], to);
        m_foundIn[suspicion.read] += static_cast<std::uint32_t>(to - before);
    }
    m_findings.keepUpTo(to);
    m_nextFinding = m_findings.begin();
}

std::span<Finding> ChunkSearch::take(std::size_t read) {
    Finding* const first = m_nextFinding;
    m_nextFinding += m_foundIn[read];
    return {first, m_nextFinding};
}

} // namespace matching
