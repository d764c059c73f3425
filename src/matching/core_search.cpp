// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
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

bool coreAgreesAt(std::string_view read, std::size_t place, std::string_view core) {
    for (std::size_t i = 0; i < core.size(); ++i) {
        if (!baseAgrees(read[place + i], core[i])) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<std::size_t> findCoreSeq(std::string_view read, std::string_view core,
                                       std::string_view quality, signed char threshold) {
    const auto place = firstPlaceOf(read, core);
    if (!place || !passesGate(quality, gateWindow(*place, core.size()), threshold)) {
        return std::nullopt;
    }
    return place;
}

std::optional<std::size_t> findCoreSeqWithWildCard(std::string_view read, std::string_view core,
                                                   std::string_view quality,
                                                   signed char threshold) {
    const auto place = firstPlaceOfWildCard(read, core);
    if (!place || !passesGate(quality, gateWindowOfWildCard(*place, core.size()), threshold)) {
        return std::nullopt;
    }
    return place;
}

std::optional<std::size_t> firstPlaceOf(std::string_view read, std::string_view core) {
    const std::size_t place = read.find(core);
    return place != std::string_view::npos ? std::optional(place) : std::nullopt;
}

std::optional<std::size_t> firstPlaceOfWildCard(std::string_view read, std::string_view core) {
    for (std::size_t place = 0; place + core.size() <= read.size(); ++place) {
        if (coreAgreesAt(read, place, core)) {
            return place;
        }
    }
    return std::nullopt;
}

GateWindow gateWindow(std::size_t place, std::size_t coreLength) noexcept {
    // Deliberate: the qualities are looked at only for a core at the very start of a read, and a
    // core rejected there is not looked for further on.
    return place == 0 ? GateWindow{0, coreLength} : GateWindow{};
}

GateWindow gateWindowOfWildCard(std::size_t place, std::size_t coreLength) noexcept {
    // Deliberate: the window ends at the core's length, not at the place plus that length.
    return place < coreLength ? GateWindow{place, coreLength} : GateWindow{};
}

bool passesGate(std::string_view quality, GateWindow window, signed char threshold) noexcept {
    if (quality.size() < window.to) {
        return false;
    }
    for (std::size_t place = window.from; place < window.to; ++place) {
        if (static_cast<signed char>(quality[place]) < threshold) {
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
