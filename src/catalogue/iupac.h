// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace catalogue {

inline constexpr std::string_view kBases = "ACGT";

/// The bases that an IUPAC ambiguity code stands for; empty for every other byte.
///
/// Deliberate: N is not among the codes, so it agrees only with itself.
constexpr std::string_view basesOfCode(char code) noexcept {
    switch (code) {
    case 'B':
        return "CGT";
    case 'D':
        return "AGT";
    case 'H':
        return "ACT";
    case 'K':
        return "GT";
    case 'M':
        return "AC";
    case 'R':
        return "AG";
    case 'S':
        return "CG";
    case 'V':
        return "ACG";
    case 'W':
        return "AT";
    case 'Y':
        return "CT";
    default:
        return {};
    }
}

/// The read bases that an ambiguity code in a core accepts, besides the code itself; empty for
/// every other byte, N included.
///
/// Deliberate: B, D, H and V stand for two bases here, not for the three of the IUPAC code.
constexpr std::string_view readBasesForCoreCode(char coreBase) noexcept {
    switch (coreBase) {
    case 'B':
    case 'S':
        return "CG";
    case 'D':
    case 'R':
        return "AG";
    case 'H':
    case 'M':
    case 'V':
        return "AC";
    case 'K':
        return "GT";
    case 'W':
        return "AT";
    case 'Y':
        return "CT";
    default:
        return {};
    }
}

/// Whether two bases or codes have a base in common; any other byte agrees with itself only.
constexpr bool haveBaseInCommon(char a, char b) noexcept {
    const std::string_view basesOfA = basesOfCode(a);
    const std::string_view basesOfB = basesOfCode(b);
    const std::string_view eitherOfA = basesOfA.empty() ? std::string_view(&a, 1) : basesOfA;
    const std::string_view eitherOfB = basesOfB.empty() ? std::string_view(&b, 1) : basesOfB;
    return a == b || eitherOfA.find_first_of(eitherOfB) != std::string_view::npos;
}

/// The number of places at which the sequences have no base in common, counted up to `most` + 1.
/// REQUIRES: equal lengths.
constexpr std::size_t mismatchCount(std::string_view a, std::string_view b,
                                    std::size_t most) noexcept {
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.size() && count <= most; ++i) {
        count += a[i] == b[i] || haveBaseInCommon(a[i], b[i]) ? 0 : 1;
    }
    return count;
}

/// The complementary base or code (R, a purine, and Y, a pyrimidine); any other byte is its own.
constexpr char complementOf(char code) noexcept {
    constexpr std::string_view kCodes = "ACGTRYKMBVDH";
    constexpr std::string_view kComplements = "TGCAYRMKVBHD";
    const std::size_t place = kCodes.find(code);
    return place == kCodes.npos ? code : kComplements[place];
}

/// The sequence as the other strand reads it: its reverse complement, codes kept as codes.
inline std::string otherStrand(std::string_view sequence) {
    std::string other(sequence.rbegin(), sequence.rend());
    for (char& code : other) {
        code = complementOf(code);
    }
    return other;
}

} // namespace catalogue
