// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "archive/nullable.h"

namespace calling {

/// What the result text of a mutation or of a report row says.
///
/// Records, documents and exports hold the text; whoever acts on it asks callOf() for the value. A
/// reopened document may hold any text at all, so `unknown` is a value like the others, and the
/// text is what is shown.
enum class Call : std::uint8_t {
    none,    ///< no text, or an empty one
    unknown, ///< a text that no rule writes

    // The alleles of the allele-typing domain.
    homozygousWildType,
    heterozygous,
    homozygousMutant,
    /// Alleles or a somatic mutation, with too few reads to tell.
    notDetermined,

    // A somatic mutation, a fusion, or a whole domain of them.
    positive,
    negative,
    // A somatic mutation without a call. Only nd1 is called today: fewer informative reads than the
    // setting nD1Threshold asks for.
    nd0,
    nd1,
    nd2,
    ndNegative,
    /// A domain with a mutation called nd0.
    tooFewReads,

    // The read count of a transcript or an internal control.
    detected,
    notDetected,

    // What an RNA row says where no fusion is positive.
    rnaNotDegraded,
    rnaDegraded,
    controlNotWorking,
    /// A panel that begins with neither a control nor the quality transcript.
    nothingDetected,
};

/// The words, in the order of the values. They stand in result documents and exports: never change
/// them.
inline constexpr std::array kCallWords = {
    "",
    "",
    "wt/wt",
    "wt/mut",
    "mut/mut",
    "Not Determined",
    "Positive",
    "Negative",
    "ND *0",
    "ND *1",
    "ND *2",
    "NDNegative",
    "Too few reads",
    "Detected",
    "NotDetected",
    "RNA not degraded",
    "RNA degraded",
    "Control Not Working",
    "Not Detected",
};
static_assert(kCallWords.size() == static_cast<std::size_t>(Call::nothingDetected) + 1);

/// The word that rules write for the call; "" for none and unknown.
constexpr const char* wordOf(Call call) {
    return kCallWords[static_cast<std::size_t>(call)];
}

/// What the text says. Words are compared exactly: "positive" is unknown.
inline Call callOf(const archive::Text& text) {
    const std::string_view word = archive::orEmpty(text);
    if (word.empty()) {
        return Call::none;
    }
    for (std::size_t value = 0; value < kCallWords.size(); ++value) {
        if (word == kCallWords[value]) {
            return static_cast<Call>(value);
        }
    }
    return Call::unknown;
}

} // namespace calling
