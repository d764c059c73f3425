// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Sequences are compared by the k-mers that they share, as in most searches for similar sequences:
// a change of one base costs k of them, an insertion or a deletion fewer, and sequences that have
// nothing to do with each other share next to none. An index of all places finds what is similar
// among ten thousand targets without comparing each with each. It is one sorted array, which is
// built and searched faster than a hash table with a list for each k-mer. Tested by
// kmer_index_test.cpp.
#include "catalogue/kmer_index.h"

#include <algorithm>
#include <tuple>

namespace catalogue {

std::vector<Kmer> distinctKmers(std::string_view text, std::size_t k) {
    std::vector<Kmer> kmers;
    forEachKmer(text, k, [&kmers](Kmer kmer, std::size_t) { kmers.push_back(kmer); });
    std::sort(kmers.begin(), kmers.end());
    kmers.erase(std::unique(kmers.begin(), kmers.end()), kmers.end());
    return kmers;
}

std::size_t sharedKmerCount(const std::vector<Kmer>& a, const std::vector<Kmer>& b) {
    std::size_t shared = 0;
    for (auto x = a.begin(), y = b.begin(); x != a.end() && y != b.end();) {
        shared += *x == *y ? 1 : 0;
        const bool stepX = *x <= *y;
        const bool stepY = *y <= *x;
        x += stepX ? 1 : 0;
        y += stepY ? 1 : 0;
    }
    return shared;
}

KmerIndex::KmerIndex(std::size_t k, const std::vector<std::string_view>& texts) : m_k(k) {
    for (std::size_t text = 0; text < texts.size(); ++text) {
        forEachKmer(texts[text], k, [this, text](Kmer kmer, std::size_t at) {
            m_places.push_back(
                {kmer, static_cast<std::uint32_t>(text), static_cast<std::uint32_t>(at)});
        });
    }
    std::sort(m_places.begin(), m_places.end(), [](const Place& a, const Place& b) {
        return std::tie(a.kmer, a.text, a.at) < std::tie(b.kmer, b.text, b.at);
    });
}

std::span<const KmerIndex::Place> KmerIndex::placesOf(Kmer kmer) const {
    struct ByKmer {
        bool operator()(const Place& place, Kmer wanted) const { return place.kmer < wanted; }
        bool operator()(Kmer wanted, const Place& place) const { return wanted < place.kmer; }
    };
    const auto [first, last] = std::equal_range(m_places.begin(), m_places.end(), kmer, ByKmer());
    return {first, last};
}

} // namespace catalogue
