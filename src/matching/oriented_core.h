// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace matching {

/// One of the two reads of a pair. The fast search takes both as they are in their files: instead
/// of each read 2, it reverse-complements the cores, once.
enum class Mate : std::uint32_t { read1, read2 };

/// The bits to compare in eight bytes of a read: all of them in read 1. The reverse complement
/// ignores case, so in read 2 the bit of the case is left out.
constexpr std::uint64_t comparedBits(Mate mate) noexcept {
    return mate == Mate::read2 ? 0xDFDFDFDFDFDFDFDFu : 0xFFFFFFFFFFFFFFFFu;
}

/// The codes in a read that agree with several bases of a wildcard core.
inline constexpr std::string_view kAmbiguityCodesOfReads = "BDHKMRSVWY";

/// Whether a read may hold one of kAmbiguityCodesOfReads. False for every read of A, C, G, T and
/// N; may be true for other reads without a code.
bool mayHoldAmbiguityCode(std::string_view read) noexcept;

/// The same in two ways, for tests and benchmarks: the first works anywhere, the second only where
/// platform::avx2IsThere() holds.
bool mayHoldAmbiguityCodePortably(std::string_view read) noexcept;
bool mayHoldAmbiguityCodeByAvx2(std::string_view read) noexcept;

/// The bytes of this mate's reads that agree with a base of a core, reduced to comparedBits().
/// kAmbiguityCodesOfReads are not among them: a read that holds one is searched for wildcard cores
/// in another way.
std::string_view bytesAgreeingWith(char coreBase, bool wildCard, Mate mate);

/// A core in the orientation in which the reads of one mate hold it: as it is for read 1,
/// reverse-complemented for read 2.
class OrientedCore {
public:
    OrientedCore(std::string_view core, bool wildCard, Mate mate);

    std::size_t size() const noexcept { return m_size; }
    /// Whether any read can hold it.
    bool canBeFound() const noexcept { return m_fewestChoices > 0; }
    /// Whether one byte agrees at each position; bases() holds these bytes.
    bool isUnambiguous() const noexcept { return m_fewestChoices == 1 && m_mostChoices == 1; }
    /// kReadableBeyond more bytes can be read behind them.
    std::string_view bases() const noexcept { return {m_bases.data(), m_size}; }
    static constexpr std::size_t kReadableBeyond = 8;
    /// The bytes that agree at a position.
    std::string_view choices(std::size_t position) const {
        return isUnambiguous() ? bases().substr(position, 1) : m_choices[position];
    }

private:
    void keepChoices(std::string_view core, bool wildCard, Mate mate);

    std::size_t m_size;
    /// With the bytes that can be read behind them. Meaningful for an unambiguous core only.
    std::string m_bases;
    /// Empty for an unambiguous core.
    std::vector<std::string_view> m_choices;
    std::size_t m_fewestChoices = 1;
    std::size_t m_mostChoices = 1;
};

} // namespace matching
