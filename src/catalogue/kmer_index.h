// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "catalogue/iupac.h"

/// The k-mers of target sequences: what two sequences share, and which of many share anything.
namespace catalogue {

/// A k-mer as two bits a base, the first base highest. REQUIRES: k from 1 to kLongestKmer.
using Kmer = std::uint64_t;
inline constexpr std::size_t kLongestKmer = 31;

/// Calls `visit(kmer, place)` for every k-mer of the text, from left to right. One that holds
/// another letter than A, C, G and T is left out.
template <class Visit>
void forEachKmer(std::string_view text, std::size_t k, Visit visit) {
    const Kmer mask = (Kmer{1} << (2 * k)) - 1;
    Kmer kmer = 0;
    std::size_t basesInARow = 0;
    for (std::size_t end = 1; end <= text.size(); ++end) {
        const std::size_t base = kBases.find(text[end - 1]);
        if (base == kBases.npos) {
            basesInARow = 0;
            continue;
        }
        kmer = ((kmer << 2) | base) & mask;
        if (++basesInARow >= k) {
            visit(kmer, end - k);
        }
    }
}

/// The k-mers of the text in rising order, each once.
std::vector<Kmer> distinctKmers(std::string_view text, std::size_t k);

/// How many k-mers two results of distinctKmers() share.
std::size_t sharedKmerCount(const std::vector<Kmer>& a, const std::vector<Kmer>& b);

/// Every place of every k-mer in many texts. Takes 16 bytes a place; a look-up takes the logarithm
/// of their number.
class KmerIndex {
public:
    struct Place {
        Kmer kmer;
        /// Number of the text, and 0-based place in it.
        std::uint32_t text;
        std::uint32_t at;
    };

    KmerIndex(std::size_t k, const std::vector<std::string_view>& texts);

    std::size_t k() const noexcept { return m_k; }
    /// By text, then by place in it.
    std::span<const Place> placesOf(Kmer kmer) const;

private:
    std::size_t m_k;
    std::vector<Place> m_places;
};

} // namespace catalogue
