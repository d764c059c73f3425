// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of the search, written to be read. docs/matching.md has them in words; both matchers
// apply this file. The standard library searches an exact core; a wildcard core is compared at
// every position, base by base. core_search_test.cpp tests both, and baseAgrees() for every pair of
// bytes.
#include "matching/core_search.h"

#include "catalogue/iupac.h"

namespace matching {
namespace {

bool isOneOf(char base, std::string_view bases) noexcept {
    return bases.find(base) != std::string_view::npos;
}

bool isPlainBase(char base) noexcept {
    return isOneOf(base, "ACGT");
}

bool coreAgreesAt(std::string_view read, std::size_t position, std::string_view core) {
    for (std::size_t i = 0; i < core.size(); ++i) {
        if (!baseAgrees(read[position + i], core[i])) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<std::size_t> findCoreSeq(std::string_view read, std::string_view core,
                                       std::string_view quality, signed char threshold) {
    const auto position = firstOccurrence(read, core);
    if (!position || !passesGate(quality, gateWindow(*position, core.size()), threshold)) {
        return std::nullopt;
    }
    return position;
}

std::optional<std::size_t> findCoreSeqWithWildCard(std::string_view read, std::string_view core,
                                                   std::string_view quality,
                                                   signed char threshold) {
    const auto position = firstOccurrenceOfWildCard(read, core);
    if (!position ||
        !passesGate(quality, gateWindowOfWildCard(*position, core.size()), threshold)) {
        return std::nullopt;
    }
    return position;
}

std::optional<std::size_t> firstOccurrence(std::string_view read, std::string_view core) {
    const std::size_t position = read.find(core);
    return position != std::string_view::npos ? std::optional(position) : std::nullopt;
}

std::optional<std::size_t> firstOccurrenceOfWildCard(std::string_view read, std::string_view core) {
    for (std::size_t position = 0; position + core.size() <= read.size(); ++position) {
        if (coreAgreesAt(read, position, core)) {
            return position;
        }
    }
    return std::nullopt;
}

GateWindow gateWindow(std::size_t position, std::size_t coreLength) noexcept {
    // Deliberate: only a core at the very start of a read is gated. If it is rejected there, later
    // positions are not tried.
    return position == 0 ? GateWindow{0, coreLength} : GateWindow{};
}

GateWindow gateWindowOfWildCard(std::size_t position, std::size_t coreLength) noexcept {
    // Deliberate: the window ends at the core's length, not at position + length.
    return position < coreLength ? GateWindow{position, coreLength} : GateWindow{};
}

bool passesGate(std::string_view quality, GateWindow window, signed char threshold) noexcept {
    if (quality.size() < window.to) {
        return false;
    }
    for (std::size_t position = window.from; position < window.to; ++position) {
        if (static_cast<signed char>(quality[position]) < threshold) {
            return false;
        }
    }
    return true;
}

bool passesGateReversed(std::string_view quality, GateWindow window,
                        signed char threshold) noexcept {
    if (quality.size() < window.to) {
        return false;
    }
    return passesGate(quality, {quality.size() - window.to, quality.size() - window.from},
                      threshold);
}

bool baseAgrees(char readBase, char coreBase) noexcept {
    if (readBase == coreBase) {
        return true;
    }
    if (const std::string_view bases = catalogue::basesOfCode(readBase); !bases.empty()) {
        return isOneOf(coreBase, bases);
    }
    if (isPlainBase(readBase) && isPlainBase(coreBase)) {
        return false;
    }
    return isOneOf(readBase, catalogue::readBasesForCoreCode(coreBase));
}

} // namespace matching
