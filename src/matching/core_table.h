// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "matching/oriented_core.h"

namespace matching {

/// For each byte of a read, the core bases that it agrees with, one bit each.
using BaseSets = std::array<std::uint32_t, 256>;

/// The indexed cores, in the orientation of one mate's reads. Verifies seed hits: says exactly
/// whether a core occurs at a position. Immutable once filled, then safe from any number of
/// threads.
class CoreTable {
public:
    explicit CoreTable(Mate mate);

    /// Whether the table can hold the core: it has eight bases or more, and one byte agrees at each
    /// position or it is written in IUPAC codes of either case.
    static bool canHold(const OrientedCore& oriented, std::string_view core);
    /// Adds the core and returns its record. `number` is the core's own. REQUIRES: canHold().
    std::uint32_t add(const OrientedCore& oriented, std::string_view core, std::uint32_t number);

    struct Verification {
        std::uint32_t core;
        std::uint32_t coreLength;
        bool occurs;
    };
    /// Whether the core of this record occurs at a position of a read. REQUIRES: position <=
    /// read.size(); RecordText::kReadableBeyond bytes can be read behind the read.
    Verification verify(std::uint32_t record, std::string_view read,
                        std::size_t position) const noexcept;
    void prefetch(std::uint32_t record) const noexcept { __builtin_prefetch(&m_words[record]); }

private:
    /// A record begins with it.
    struct Head {
        std::uint32_t core;
        std::uint32_t length : 31;
        std::uint32_t isUnambiguous : 1;
    };
    static_assert(sizeof(Head) == sizeof(std::uint64_t));

    bool longBasesAgree(const char* read, const char* bases, std::size_t length) const noexcept;
    bool setsAgree(const char* read, const char* sets, std::size_t length) const noexcept;

    Mate m_mate;
    std::uint64_t m_comparedBits;
    /// One record after the other: the head, then the bases of an unambiguous core, or 32 bits for
    /// each base of another core: the base's own bit in m_agreeing. A block can be read behind the
    /// last record.
    std::vector<std::uint64_t> m_words;
    const BaseSets& m_agreeing;
};

} // namespace matching
