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

/// For each byte of a read the core letters that it agrees with, one bit each.
using LetterSets = std::array<std::uint32_t, 256>;

/// The cores of an index as they lie in the reads of one mate. Says exactly whether one stands at a
/// place. All that is needed for one core lies together: it is one trip to memory.
class CoreStore {
public:
    explicit CoreStore(Mate mate);

    /// Whether the core is one that can be kept: it has eight letters or more and is plain text or
    /// written in IUPAC letters of either case.
    static bool canKeep(const OrientedCore& oriented, std::string_view core);
    /// Keeps the core and returns where. REQUIRES: canKeep(). `number` is what stands for it.
    std::uint32_t keep(const OrientedCore& oriented, std::string_view core, std::uint32_t number);

    /// A core, and whether it stands where it was looked for.
    struct Standing {
        std::uint32_t number;
        std::uint32_t length;
        bool stands;
    };
    /// Of the core kept at `record`. REQUIRES: place <= read.size(), and behind the read
    /// RecordText::kReadableBeyond bytes can be read.
    Standing standsAt(std::uint32_t record, std::string_view read,
                      std::size_t place) const noexcept;
    void prefetch(std::uint32_t record) const noexcept { __builtin_prefetch(&m_words[record]); }

private:
    /// What a record begins with.
    struct Head {
        std::uint32_t number;
        std::uint32_t length : 31;
        std::uint32_t isUnambiguous : 1;
    };
    static_assert(sizeof(Head) == sizeof(std::uint64_t));

    bool manyLettersAgree(const char* read, const char* letters, std::size_t length) const noexcept;
    bool setsAgree(const char* read, const char* sets, std::size_t length) const noexcept;

    Mate m_mate;
    std::uint64_t m_comparedBits;
    /// One record after the other: its head, then for a plain core its letters, for another one for
    /// each letter, as 32 bits, the one that is its own in m_agreeing.
    /// Behind the last record another block can be read.
    std::vector<std::uint64_t> m_words;
    const LetterSets& m_agreeing;
};

} // namespace matching
