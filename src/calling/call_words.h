// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The words that calling writes and branches on again. They stand in result documents and exports:
/// never change them. The words of the definition file are in catalogue/domain_words.h.
namespace calling::words {

// Calls that the report rows branch on.
inline constexpr const char* kPositive = "Positive";
inline constexpr const char* kNegative = "Negative";
inline constexpr const char* kTooFewReadsForCall = "ND *1";

} // namespace calling::words
