// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

namespace matching {

/// What most records of a file have in common: sequence and quality have one length, the separator
/// is one letter, and all lines end with LF.
///
/// A record whose shape is known need not be searched for its line ends: it is enough to look that
/// they are where they should be, and nowhere else.
class RecordShape {
public:
    explicit RecordShape(std::size_t sequenceLength) : m_sequenceLength(sequenceLength) {}

    /// Notes the line ends, four for each, of the records that stand from text[from] on, until one
    /// has another shape, a control character outside of its header, a CR or NUL anywhere, or does
    /// not end before `size`. Returns how many it noted, `most` at most. None where there are no
    /// vectors for it. REQUIRES: 64 bytes can be read behind the text, whose size fits 32 bits.
    std::size_t noteLineEnds(const char* text, std::size_t size, std::size_t from,
                             std::uint32_t* places, std::size_t most) const noexcept;

private:
    std::size_t m_sequenceLength;
};

} // namespace matching
