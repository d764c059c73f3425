// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace matching {

/// A quality byte below this, compared as a signed byte, is too low. It is '@': a Phred score of 31
/// with the usual offset of 33.
inline constexpr signed char kQualityThreshold = 64;

/// Finds the leftmost position in `read` that agrees with `core` byte for byte.
///
/// Deliberate: the quality gate acts only at the very start of a read. If the core is found at
/// position 0, every quality byte from 0 to core length - 1 must reach `threshold`; otherwise there
/// is no match, and later positions are not tried. A core found elsewhere counts whatever its
/// qualities. A missing quality byte counts as too low. An empty core is found at 0. Positions are
/// 0-based. Cannot fail, allocates nothing, safe from any number of threads.
std::optional<std::size_t> findCoreSeq(std::string_view read, std::string_view core,
                                       std::string_view quality, signed char threshold);

/// The same for a core with IUPAC ambiguity codes: the first position at which every base
/// agrees.
///
/// Deliberate: the gate acts on a position p below the core's length and looks at the quality bytes
/// p to core length - 1 (not p to p + core length - 1).
std::optional<std::size_t> findCoreSeqWithWildCard(std::string_view read, std::string_view core,
                                                   std::string_view quality, signed char threshold);

/// The two searches without their gates: the leftmost position that agrees.
std::optional<std::size_t> firstOccurrence(std::string_view read, std::string_view core);
std::optional<std::size_t> firstOccurrenceOfWildCard(std::string_view read, std::string_view core);

/// The quality bytes that a gate looks at: half-open, empty if it looks at none.
struct GateWindow {
    std::size_t from = 0;
    std::size_t to = 0;
};

/// The two gates for a core found at `position`.
GateWindow gateWindow(std::size_t position, std::size_t coreLength) noexcept;
GateWindow gateWindowOfWildCard(std::size_t position, std::size_t coreLength) noexcept;

/// Whether all quality bytes of the window exist and reach the threshold.
bool passesGate(std::string_view quality, GateWindow window, signed char threshold) noexcept;
/// The same for the quality of read 2 as it is in the file: the window counts from its end.
bool passesGateReversed(std::string_view quality, GateWindow window,
                        signed char threshold) noexcept;

/// Whether a base of a read agrees with a base of a wildcard core. Bytes are compared as they are.
///
/// Deliberate: a code in the core stands for fewer bases than the same code in a read (B as S, D as
/// R, H and V as M), and N agrees only with N.
bool baseAgrees(char readBase, char coreBase) noexcept;

} // namespace matching
