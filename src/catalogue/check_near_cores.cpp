// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about cores that lie in other cores. Each domain counts a pair by itself, so a core that
// lies in another domain's core counts that one's pairs as its own; a core that does so but for one
// base counts those with a read error there, or with a common variant. A core that does so on the
// other strand counts them in a library without direction.
//
// One mismatch leaves one half of a core whole. So a k-mer of each half is looked up in an index of
// all cores, and each place that is found is compared base by base: time grows with the number of
// cores and of the places found, not with its square. Bases and codes agree where they have a base
// in common; a core is missed only if a code stands in both k-mers. Equal cores are a rule of
// check_cores.cpp. Tested by check_near_cores_test.cpp.
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalogue/check_rules.h"
#include "catalogue/core_sequence.h"
#include "catalogue/domain_words.h"
#include "catalogue/iupac.h"
#include "catalogue/kmer_index.h"

namespace catalogue::rules {
namespace {

struct Core {
    const MutationSource* source;
    const CheckedDomain* domain;
    std::string_view bases;
};

/// How one core lies in another, worst first.
struct Nearness {
    bool onOtherStrand;
    std::size_t mismatches;
    std::size_t other;

    bool operator<(const Nearness& than) const {
        return std::tie(onOtherStrand, mismatches, other) <
               std::tie(than.onOtherStrand, than.mismatches, than.other);
    }
};

class NearCores {
public:
    explicit NearCores(std::vector<Core> cores) : m_cores(std::move(cores)) {
        m_nearest.resize(m_cores.size());
        for (const Core& core : m_cores) {
            m_firstWithCore.emplace(core.bases, &core);
        }
    }

    void findAll() {
        for (std::size_t i = 0; i < m_cores.size(); ++i) {
            search(i, m_cores[i].bases, false);
            const std::string reversed = otherStrand(m_cores[i].bases);
            search(i, reversed, true);
        }
    }

    void report(Findings& findings) const {
        for (std::size_t i = 0; i < m_cores.size(); ++i) {
            if (m_nearest[i] && !standsInADomainBefore(i)) {
                reportNearest(m_cores[i], *m_nearest[i], findings);
            }
        }
    }

private:
    static constexpr std::size_t kLongestSeed = 10;
    /// A seed of more places is a repeat; the first ones tell enough.
    static constexpr std::size_t kMostPlaces = 1000;

    /// The index for cores of this length. Short cores, of which there are few, need short seeds.
    const KmerIndex& indexFor(std::size_t coreLength) {
        const std::size_t k = std::min(kLongestSeed, coreLength / 2);
        const auto found = m_indexOfLength.find(k);
        if (found != m_indexOfLength.end()) {
            return found->second;
        }
        std::vector<std::string_view> texts;
        texts.reserve(m_cores.size());
        for (const Core& core : m_cores) {
            texts.push_back(core.bases);
        }
        return m_indexOfLength.emplace(k, KmerIndex(k, texts)).first->second;
    }

    /// Looks for `text`, the core number `self` or its reverse complement, in all other cores.
    void search(std::size_t self, std::string_view text, bool onOtherStrand) {
        if (text.size() < 2) {
            return;
        }
        const std::size_t half = text.size() / 2;
        searchBySeedIn(self, text, 0, half, onOtherStrand);
        searchBySeedIn(self, text, half, text.size() - half, onOtherStrand);
    }

    void searchBySeedIn(std::size_t self, std::string_view text, std::size_t begin,
                        std::size_t length, bool onOtherStrand) {
        const KmerIndex& index = indexFor(text.size());
        std::optional<std::pair<Kmer, std::size_t>> seed;
        forEachKmer(text.substr(begin, length), index.k(), [&](Kmer kmer, std::size_t at) {
            if (!seed) {
                seed = {kmer, begin + at};
            }
        });
        if (!seed) {
            return;
        }
        const auto places = index.placesOf(seed->first);
        for (std::size_t i = 0; i < std::min(places.size(), kMostPlaces); ++i) {
            if (places[i].at >= seed->second) {
                compare(self, text, places[i].text, places[i].at - seed->second, onOtherStrand);
            }
        }
    }

    void compare(std::size_t self, std::string_view text, std::size_t other, std::size_t offset,
                 bool onOtherStrand) {
        const std::string_view whole = m_cores[other].bases;
        if (self == other || offset + text.size() > whole.size() ||
            !isCompared(m_cores[self], m_cores[other], onOtherStrand)) {
            return;
        }
        const std::size_t count = mismatchCount(text, whole.substr(offset, text.size()), 1);
        if (count > 1 || (count == 1 && areOfOneLocus(self, other))) {
            return;
        }
        const std::size_t later = std::max(self, other);
        const Nearness nearness{onOtherStrand, count, std::min(self, other)};
        if (!m_nearest[later] || nearness < *m_nearest[later]) {
            m_nearest[later] = nearness;
        }
    }

    /// Within a domain only the other strand matters, and not beside a wild type: check_cores.cpp
    /// and check_strands.cpp have rules for the rest.
    static bool isCompared(const Core& a, const Core& b, bool onOtherStrand) {
        if (a.domain == b.domain) {
            return onOtherStrand && !hasWildType(*a.domain);
        }
        return onOtherStrand || a.bases != b.bases;
    }

    /// Whether the very core stands in another domain before, which is a finding of its own and
    /// makes it near to the other entries there.
    bool standsInADomainBefore(std::size_t self) const {
        return m_firstWithCore.at(m_cores[self].bases)->domain != m_cores[self].domain;
    }

    /// Whether both are variants of domains whose wild types are as near: one locus in two domains
    /// is one finding, not one for every pair of its variants.
    bool areOfOneLocus(std::size_t self, std::size_t other) const {
        const Core& a = m_cores[self];
        const Core& b = m_cores[other];
        if (!hasWildType(*a.domain) || !hasWildType(*b.domain)) {
            return false;
        }
        const MutationSource& firstOfA = *a.domain->mutations.front();
        const MutationSource& firstOfB = *b.domain->mutations.front();
        const bool areFirst = a.source == &firstOfA && b.source == &firstOfB;
        return !areFirst && liesIn(coreOf(firstOfA), coreOf(firstOfB));
    }

    /// Whether the shorter text lies in the longer one but for one base.
    static bool liesIn(std::string_view a, std::string_view b) {
        const auto& [shorter, longer] = std::minmax(
            a, b, [](std::string_view x, std::string_view y) { return x.size() < y.size(); });
        for (std::size_t offset = 0; offset + shorter.size() <= longer.size(); ++offset) {
            if (mismatchCount(shorter, longer.substr(offset, shorter.size()), 1) <= 1) {
                return true;
            }
        }
        return false;
    }

    void reportNearest(const Core& core, const Nearness& nearness, Findings& findings) const {
        const Core& other = m_cores[nearness.other];
        const std::size_t size = core.bases.size();
        const std::size_t otherSize = other.bases.size();
        const Rule rule = nearness.onOtherStrand ? Rule::coreReversedInAnother
                          : nearness.mismatches  ? Rule::coreNearAnother
                                                 : Rule::coreInsideAnother;
        findings.add(rule, core.source->headerLine,
                     about(*core.source->mutation) +
                         (nearness.onOtherStrand ? "on the other strand " : "") +
                         (nearness.mismatches > 0 ? "but for one base " : "") + "its core " +
                         (size == otherSize  ? "is that of "
                          : size < otherSize ? "lies in that of "
                                             : "holds that of ") +
                         nameAndLine(*other.source) +
                         (core.domain == other.domain ? "" : " in another domain"));
    }

    std::vector<Core> m_cores;
    std::vector<std::optional<Nearness>> m_nearest;
    std::unordered_map<std::string_view, const Core*> m_firstWithCore;
    std::map<std::size_t, KmerIndex> m_indexOfLength;
};

} // namespace

void checkNearCores(const std::vector<CheckedDomain>& domains, Findings& findings) {
    std::vector<Core> cores;
    for (const CheckedDomain& domain : domains) {
        for (const MutationSource* source : domain.mutations) {
            if (coreIsDefined(*source->mutation) && !coreOf(*source).empty()) {
                cores.push_back({source, &domain, coreOf(*source)});
            }
        }
    }
    NearCores near(std::move(cores));
    near.findAll();
    near.report(findings);
}

} // namespace catalogue::rules
