// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Why is nothing mapped? Mostly since the library, the files or the catalogue are the other way
// round. So the first pairs go through the same matcher again, turned in each of the ways that
// happen in laboratories, and what is found there is said. Tested by second_look_test.cpp.
#include "run/second_look.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "matching/fast_matcher.h"
#include "matching/reverse_complement.h"
#include "reads/batch_reader.h"
#include "reads/pair_reader.h"

namespace run {
namespace {

constexpr std::int64_t kLeastPairs = 1000;
/// Fewer than one pair in so many is "nearly nothing".
constexpr std::int64_t kPairsPerMappedPair = 1000;
/// Fewer are found by an error in a read.
constexpr std::int64_t kLeastPairsThatTell = 3;
/// The highest quality byte that sequencers write, far above the gate.
constexpr char kBestQuality = 'I';

constexpr std::array kPlaces = {ElsewhereInPair::otherStrand, ElsewhereInPair::otherMate,
                                ElsewhereInPair::otherStrandOfOtherMate,
                                ElsewhereInPair::lowQuality};

std::int64_t informativePairs(const catalogue::MutDomain& domain) {
    return domain.totalNumberOfNormalReads + domain.totalNumberOfMutantReads;
}

/// Makes batches of the same pairs, seen in another way.
class TurnedBatch {
public:
    const reads::ReadPairBatch& of(const reads::ReadPairBatch& batch, ElsewhereInPair place) {
        // Read 2 is searched as its reverse complement. So a core that lies in the other read in
        // the fragment's own direction lies there turned.
        const bool turn =
            place == ElsewhereInPair::otherStrand || place == ElsewhereInPair::otherMate;
        const bool exchange =
            place == ElsewhereInPair::otherMate || place == ElsewhereInPair::otherStrandOfOtherMate;
        m_batch.clear();
        for (std::size_t index = 0; index < batch.size(); ++index) {
            const reads::ReadPair pair = batch.pair(index);
            const std::string_view quality1 = qualityFor(pair.quality1, place);
            add(exchange ? m_batch.text2() : m_batch.text1(), pair.read1, quality1, turn);
            const std::string_view quality2 = qualityFor(pair.quality2, place);
            add(exchange ? m_batch.text1() : m_batch.text2(), pair.read2, quality2, turn);
            m_batch.completePairs(1);
        }
        return m_batch;
    }

private:
    /// Holds until the next call.
    std::string_view qualityFor(std::string_view quality, ElsewhereInPair place) {
        if (place != ElsewhereInPair::lowQuality) {
            return quality;
        }
        m_quality.assign(reads::kLineLimit - 1, kBestQuality);
        return m_quality;
    }

    void add(reads::RecordText& text, std::string_view read, std::string_view quality, bool turn) {
        text.addLine("@");
        if (!turn) {
            text.addLine(read);
            text.addLine("+");
            text.addLine(quality);
            return;
        }
        m_turned.clear();
        matching::appendReverseComplement(m_turned, read);
        text.addLine(m_turned);
        text.addLine("+");
        m_turned.assign(quality);
        matching::reverseString(m_turned.data(), m_turned.size());
        text.addLine(m_turned);
    }

    reads::ReadPairBatch m_batch;
    std::string m_quality;
    std::string m_turned;
};

/// The first pairs of both files, a batch at a time: full batches of regular records first, then
/// line by line.
class FirstPairs {
public:
    FirstPairs(reads::ReadSource& read1, reads::ReadSource& read2)
        : m_read1(read1), m_read2(read2), m_full(read1, read2) {}

    /// False at the end, and where the reads take judgement that the run has given.
    bool next(reads::ReadPairBatch& batch) {
        if (!m_byLine && m_full.read(batch)) {
            return true;
        }
        if (!m_byLine) {
            m_rest1 = std::make_unique<reads::ResumedReads>(m_full.takeRest1(), m_read1);
            m_rest2 = std::make_unique<reads::ResumedReads>(m_full.takeRest2(), m_read2);
            m_byLine = std::make_unique<reads::PairReader>(*m_rest1, *m_rest2, std::string());
        }
        return m_byLine->readLookAhead() && m_byLine->fill(batch).ok() && batch.size() > 0;
    }

private:
    reads::ReadSource& m_read1;
    reads::ReadSource& m_read2;
    reads::BatchReader m_full;
    std::unique_ptr<reads::ResumedReads> m_rest1;
    std::unique_ptr<reads::ResumedReads> m_rest2;
    std::unique_ptr<reads::PairReader> m_byLine;
};

/// Pairs per mutation of the whole catalogue, in each of the ways.
struct CountsElsewhere {
    std::array<matching::BatchResult, kPlaces.size()> results;
    std::int64_t pairs = 0;
};

CountsElsewhere countElsewhere(FirstPairs& pairs, const catalogue::MutDomains& domains) {
    const matching::FastMatcher matcher(domains);
    CountsElsewhere counts;
    for (auto& result : counts.results) {
        result.counts.resize(matching::mutationCount(domains));
        result.keepUnassigned = false;
    }
    reads::ReadPairBatch batch;
    TurnedBatch turned;
    while (counts.pairs < kPairsOfSecondLook && pairs.next(batch)) {
        for (std::size_t i = 0; i < kPlaces.size(); ++i) {
            matcher.match(turned.of(batch, kPlaces[i]), counts.results[i]);
        }
        counts.pairs += static_cast<std::int64_t>(batch.size());
    }
    return counts;
}

std::vector<CoreElsewhere> foundElsewhere(const CountsElsewhere& counts,
                                          const catalogue::MutDomains& domains,
                                          bool inEveryDomain) {
    std::vector<CoreElsewhere> found;
    std::size_t index = 0;
    for (const auto& domain : archive::orEmpty(domains)) {
        const bool wanted = inEveryDomain || informativePairs(*domain) == 0;
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            for (std::size_t i = 0; wanted && i < kPlaces.size(); ++i) {
                // Pairs that the run counted are found again where only the gate is open.
                const std::int64_t known =
                    kPlaces[i] == ElsewhereInPair::lowQuality ? mutation->match : 0;
                if (counts.results[i].counts[index] >= known + kLeastPairsThatTell) {
                    found.push_back({kPlaces[i], archive::stringOrEmpty(mutation->name),
                                     counts.results[i].counts[index] - known});
                }
            }
            ++index;
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& one, const auto& other) { return one.pairs > other.pairs; });
    return found;
}

} // namespace

bool nearlyNothingIsMapped(const ReadCounters& counters) {
    return counters.totalNumberOfReads >= kLeastPairs &&
           counters.readsMapped * kPairsPerMappedPair < counters.totalNumberOfReads;
}

bool callsForSecondLook(const catalogue::MutDomains& domains, const ReadCounters& counters) {
    if (nearlyNothingIsMapped(counters)) {
        return true;
    }
    bool someAreInformative = false;
    bool someAreNot = false;
    for (const auto& domain : archive::orEmpty(domains)) {
        const bool informative = informativePairs(*domain) > 0;
        someAreInformative = someAreInformative || informative;
        someAreNot = someAreNot || !informative;
    }
    return someAreInformative && someAreNot;
}

SecondLook lookAgain(const PairedReads& reads, const catalogue::MutDomains& domains,
                     const ReadCounters& counters) {
    const auto read1 = openRead1(reads);
    const auto read2 = openRead2(reads);
    if (!read1 || !read2) {
        return {};
    }
    FirstPairs pairs(*read1.value(), *read2.value());
    const CountsElsewhere counts = countElsewhere(pairs, domains);
    return {counts.pairs, foundElsewhere(counts, domains, nearlyNothingIsMapped(counters))};
}

std::string lineOf(const CoreElsewhere& found) {
    const std::string pairs = std::to_string(found.pairs) +
                              (found.pairs == 1 ? " pair holds " : " pairs hold ") + found.mutation;
    switch (found.place) {
    case ElsewhereInPair::otherStrand:
        return pairs + " on the other strand: check the strand word or the library's orientation";
    case ElsewhereInPair::otherMate:
        return pairs + " in the other read of the pair: check the strand word";
    case ElsewhereInPair::otherStrandOfOtherMate:
        return pairs +
               " on the other strand of the other read: check whether read 1 and read 2 are "
               "exchanged, or the library's orientation";
    case ElsewhereInPair::lowQuality:
        break;
    }
    return pairs + " at the start of a read where the base quality is too low: check the run's "
                   "quality";
}

} // namespace run
