// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace matching {

/// Reverses the text and complements it in place, always to upper case: A and T, G and C change
/// places in either case, every other byte becomes N.
void reverseComplement(char* text, std::size_t length) noexcept;

/// Reverses the text in place.
void reverseString(char* text, std::size_t length) noexcept;

} // namespace matching
