// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace matching {

/// Whether a read may hold an ambiguity code (kReadCodes), which agrees with several letters of a
/// wildcard core. False for all reads of A, C, G, T and N; may be true for other reads without a
/// code.
bool mayHoldReadCode(std::string_view read) noexcept;

/// The ways to tell, for tests and benchmarks: the first works anywhere, the second only where
/// platform::avx2IsThere() holds.
bool mayHoldReadCodePortably(std::string_view read) noexcept;
bool mayHoldReadCodeByAvx2(std::string_view read) noexcept;

} // namespace matching
