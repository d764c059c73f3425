// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace reads {

/// Notes where lines end in FASTQ records whose shape is known: sequence and quality are so long,
/// the separator is one letter, all lines end with LF. Most records of a file have one shape. They
/// need not be searched for line ends: it is enough to look that these are where they should be,
/// and nowhere else.
///
/// Notes four places for each record from text[from] on, until one has another shape, a control
/// character outside of its header, a CR or NUL anywhere, or does not end with the text. Returns
/// how many records those are, `most` at most; none where there are no vectors for it. REQUIRES:
/// behind the text, whose size fits 32 bits, RecordText::kReadableBeyond bytes can be read.
std::size_t noteRecordsOfShape(std::size_t sequenceLength, std::string_view text, std::size_t from,
                               std::uint32_t* places, std::size_t most) noexcept;

} // namespace reads
