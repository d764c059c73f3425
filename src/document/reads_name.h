// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace document {

/// The name of a file of reads, taken apart. Sequencers, archives and people write it as
///
///     <sample>[_S<number>][_L<lane>]_R<1|2>[_<part>].<fastq|fq>[.gz]
///     <sample>[_S<number>][_L<lane>]_<1|2>.<fastq|fq>[.gz]
///
/// The rules of a directory without options take fewer names, by other means: planBatch().
struct ReadsName {
    std::string sample; ///< never empty
    std::string number; ///< digits; empty: the name tells none
    std::string lane;   ///< digits; empty: the name tells none
    int read = 1;       ///< 1 or 2
    bool hasR = true;   ///< whether the read mark is "_R1" and not "_1"
    std::string part;   ///< digits; empty: the name tells none
    std::string ending; ///< ".fastq", ".fq.gz" and so on
    /// The same name with the other read mark.
    std::string mate;
};

/// nullopt for a name of another form.
std::optional<ReadsName> readsNameOf(std::string_view name);

/// Whether every letter is a digit, and there is one.
bool isNumber(std::string_view text) noexcept;

/// Digits without leading zeros; "" for zero. Two such texts are one number when they are equal.
std::string_view withoutLeadingZeros(std::string_view digits) noexcept;

/// Whether the text is a patient number as people give it: a whole number from 1, without leading
/// zeros, of at most 18 digits.
bool isPatientNumber(std::string_view text) noexcept;

/// The name without a last ".gz".
std::string_view withoutGz(std::string_view name) noexcept;

} // namespace document
