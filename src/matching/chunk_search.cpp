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
    m_search.index().addLooks(text, m_readCount, m_looks);
    m_reads[m_readCount++] = text;
}

void ChunkSearch::collect() {
    const WindowIndex& index = m_search.index();
    std::uint32_t* const selected = m_selected.room(m_looks.size() + WindowFilter::kWrittenBeyond);
    const std::uint32_t* const end = index.filter().select(m_looks.all(), selected);
    Candidate* to = m_candidates.room(static_cast<std::size_t>(end - selected));
    for (const std::uint32_t* number = selected; number != end; ++number) {
        *to = index.candidateAt(m_looks[*number]);
        index.prefetchBucket(*to++);
    }
    m_candidates.keepUpTo(to);
    for (const Candidate& candidate : m_candidates.all()) {
        index.prefetchPostings(candidate);
    }
}

std::span<const WindowIndex::Candidate> ChunkSearch::candidatesOf(std::size_t first,
                                                                  std::size_t end) const {
    const auto all = m_candidates.all();
    const auto firstOf = [&](std::size_t read) {
        return std::partition_point(all.begin(), all.end(), [&](const Candidate& candidate) {
            return candidate.read < read;
        });
    };
    return {firstOf(first), firstOf(end)};
}

std::size_t ChunkSearch::mostSuspicions(std::size_t first, std::size_t end) const {
    std::size_t most = 0;
    for (const Candidate& candidate : candidatesOf(first, end)) {
        most += m_search.index().postingsNear(candidate).size();
    }
    return most;
}

void ChunkSearch::find(std::size_t first, std::size_t end) {
    m_suspicions.clear();
    for (const Candidate& candidate : candidatesOf(first, end)) {
        m_search.suspect(candidate, m_suspicions);
    }
    m_findings.clear();
    Finding* to = m_findings.room(m_suspicions.size() + 1);
    for (const Suspicion& suspicion : m_suspicions.all()) {
        to = m_search.check(suspicion, m_reads[suspicion.read], to);
    }
    m_findings.keepUpTo(to);
    m_nextFinding = m_findings.begin();
}

std::span<Finding> ChunkSearch::take(std::size_t read) {
    Finding* const first = m_nextFinding;
    while (m_nextFinding != m_findings.end() && m_nextFinding->read == read) {
        ++m_nextFinding;
    }
    return {first, m_nextFinding};
}

} // namespace matching
