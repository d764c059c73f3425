// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "reads/read_pair_batch.h"

namespace matching {

/// The complementary base, always in upper case: A and T, C and G, in either case. N for every
/// other byte.
char complement(char base) noexcept;

/// Reverse-complements the text in place, byte by byte as complement() says.
void reverseComplement(char* text, std::size_t length) noexcept;

/// Appends the reverse complement of `text`, which must not be part of `to`.
void appendReverseComplement(std::string& to, std::string_view text);

/// Reverses the text in place, as the qualities of a reverse-complemented read need it.
void reverseString(char* text, std::size_t length) noexcept;

/// Reverse-complements read 2 of one pair after the other, in memory that it uses again.
class Read2ReverseComplementer {
public:
    /// The pair with both reads on the strand of read 1: read 2 is reverse-complemented, its
    /// quality reversed. Both views hold until the next call.
    reads::ReadPair onStrandOfRead1(reads::ReadPair pair);

private:
    std::string m_read2;
    std::string m_quality2;
};

} // namespace matching
