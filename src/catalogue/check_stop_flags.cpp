// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rule about the stop flag. It keeps the pairs of a domain from all later ones, which is
// harmless as long as no pair can hold targets of both. It can where the targets are neighbours on
// one molecule: then their sequences overlap and agree in the overlap, and both cores fit into the
// two reads of a pair. Two transcripts that share an exon and differ beside it overlap but do not
// agree. Targets that lie near each other in the genome but do not overlap in the file are not
// found. Tested by check_stop_flags_test.cpp.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/check_rules.h"
#include "catalogue/iupac.h"
#include "catalogue/kmer_index.h"

namespace catalogue::rules {
namespace {

/// The least overlap by which two sequences are taken for neighbours.
constexpr std::size_t kLeastOverlap = 20;
/// Of an overlap at most one base in ten may differ: a variant, not another transcript.
constexpr std::size_t kBasesForAMismatch = 10;

/// A k-mer that more later targets hold is a repeat; the first ones tell enough.
constexpr std::ptrdiff_t kMostNeighbours = 64;

/// Where a text begins in the coordinates of another one.
using Offset = std::ptrdiff_t;

struct Span {
    Offset begin;
    Offset end;
};

Span coreSpan(const MutationSource& source) {
    const auto place = archive::orEmpty(source.mutation->seq).find(coreOf(source));
    const auto begin = static_cast<Offset>(place);
    return {begin, begin + static_cast<Offset>(coreOf(source).size())};
}

/// Whether the sequences agree where they overlap when `b` begins at `offset` of `a`.
bool overlapsAt(std::string_view a, std::string_view b, Offset offset) {
    const std::string_view restOfA = offset > 0 ? a.substr(static_cast<std::size_t>(offset)) : a;
    const std::string_view restOfB = offset < 0 ? b.substr(static_cast<std::size_t>(-offset)) : b;
    const std::size_t overlap = std::min(restOfA.size(), restOfB.size());
    const std::size_t most = overlap / kBasesForAMismatch;
    return overlap >= kLeastOverlap &&
           mismatchCount(restOfA.substr(0, overlap), restOfB.substr(0, overlap), most) <= most;
}

/// Whether a pair can hold both cores: two reads of one fragment reach over twice a read's length.
bool fitsOnePair(const MutationSource& a, const MutationSource& b, Offset offset,
                 std::size_t readLength) {
    const Span first = coreSpan(a);
    const Span second = coreSpan(b);
    const Offset begin = std::min(first.begin, second.begin + offset);
    const Offset end = std::max(first.end, second.end + offset);
    return end - begin <= static_cast<Offset>(2 * readLength);
}

class HiddenDomains {
public:
    HiddenDomains(const std::vector<CheckedDomain>& domains, std::size_t readLength)
        : m_domains(domains), m_readLength(readLength), m_targets(targetsOf(domains)),
          m_index(kLeastOverlap, sequencesOf(m_targets)) {}

    void report(Findings& findings) const {
        std::vector<std::set<std::size_t>> hidden(m_domains.size());
        for (std::size_t i = 0; i < m_targets.size(); ++i) {
            const Target& target = m_targets[i];
            if (target.domain->record().canStopSearchIfMatched && !coreOf(*target.source).empty()) {
                addHiddenBy(i, hidden[numberOf(target)]);
            }
        }
        for (std::size_t i = 0; i < hidden.size(); ++i) {
            if (!hidden[i].empty()) {
                reportDomain(m_domains[i], hidden[i], findings);
            }
        }
    }

private:
    void reportDomain(const CheckedDomain& domain, const std::set<std::size_t>& hidden,
                      Findings& findings) const {
        const CheckedDomain& first = m_domains[*hidden.begin()];
        const std::string more =
            hidden.size() > 1 ? " and " + std::to_string(hidden.size() - 1) + " more" : "";
        findings.add(Rule::stopFlagHidesDomain, domain.source->headerLine,
                     about(domain.record()) +
                         "by its flag StopSearchIfMatched its pairs do not reach the domain " +
                         archive::stringOrEmpty(first.record().name) + " (line " +
                         std::to_string(first.source->headerLine) + ")" + more +
                         ", whose sequence overlaps");
    }

    void addHiddenBy(std::size_t self, std::set<std::size_t>& hidden) const {
        std::set<std::pair<std::uint32_t, Offset>> tried;
        forEachKmer(m_targets[self].sequence(), kLeastOverlap, [&](Kmer kmer, std::size_t at) {
            for (const KmerIndex::Place& place : placesBehind(self, kmer)) {
                const Offset offset = static_cast<Offset>(at) - static_cast<Offset>(place.at);
                if (tried.emplace(place.text, offset).second &&
                    isHiddenBy(m_targets[self], m_targets[place.text], offset)) {
                    hidden.insert(numberOf(m_targets[place.text]));
                }
            }
        });
    }

    /// The first places of the k-mer in later targets.
    std::span<const KmerIndex::Place> placesBehind(std::size_t self, Kmer kmer) const {
        const auto places = m_index.placesOf(kmer);
        const auto begin = std::partition_point(
            places.begin(), places.end(), [self](const auto& place) { return place.text <= self; });
        const auto count = std::min<std::ptrdiff_t>(places.end() - begin, kMostNeighbours);
        return {begin, begin + count};
    }

    bool isHiddenBy(const Target& target, const Target& other, Offset offset) const {
        return target.domain != other.domain && !coreOf(*other.source).empty() &&
               overlapsAt(target.sequence(), other.sequence(), offset) &&
               fitsOnePair(*target.source, *other.source, offset, m_readLength);
    }

    std::size_t numberOf(const Target& target) const {
        return static_cast<std::size_t>(target.domain - m_domains.data());
    }

    const std::vector<CheckedDomain>& m_domains;
    std::size_t m_readLength;
    std::vector<Target> m_targets;
    KmerIndex m_index;
};

} // namespace

void checkStopFlags(const std::vector<CheckedDomain>& domains, std::size_t readLength,
                    Findings& findings) {
    const bool anyStops =
        std::any_of(domains.begin(), domains.end(), [](const CheckedDomain& domain) {
            return domain.record().canStopSearchIfMatched;
        });
    if (anyStops) {
        HiddenDomains(domains, readLength).report(findings);
    }
}

} // namespace catalogue::rules
