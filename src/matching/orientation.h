// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "matching/read_pair_batch.h"

namespace matching {

/// The base on the other strand, always in upper case; N for every byte that is no base.
char complementOf(char base) noexcept;

/// Reverses the text and complements it in place, always to upper case: A and T, G and C change
/// places in either case, every other byte becomes N.
void reverseComplement(char* text, std::size_t length) noexcept;

/// Appends the same of another text.
void appendReverseComplement(std::string& to, std::string_view text);

/// Reverses the text in place.
void reverseString(char* text, std::size_t length) noexcept;

/// Turns read 2 of one pair after the other, in memory that is used again and again.
class Read2Turner {
public:
    /// The pair with both reads on the strand of read 1: read 2 reverse-complemented, its quality
    /// reversed. These two views hold until the next call.
    ReadPair turned(ReadPair pair);

private:
    std::string m_read2;
    std::string m_quality2;
};

} // namespace matching
