// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about a core by itself: how long it is, and of what it is made. A core has to be long and
// varied enough to occur once in a genome, short enough that a read beside it still holds it whole,
// and free of stretches that polymerases and sequencers get wrong. The limits are argued for in
// docs/formats/definition-file.md. Tested by check_core_bases_test.cpp.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "catalogue/check_rules.h"
#include "catalogue/core_sequence.h"
#include "catalogue/kmer_index.h"
#include "platform/numbers.h"

namespace catalogue::rules {
namespace {

/// 16 random bases occur once by chance on the 6.2 billion bases of both strands of the human
/// genome, 20 once in 180 genomes.
constexpr std::size_t kShortestCore = 20;

/// Of all the places at which a read can begin and still hold a core's middle base, a core of four
/// fifths of the read leaves one in five at which the read holds all of it.
bool needsNearlyWholeRead(std::size_t coreLength, std::size_t readLength) {
    return coreLength * 5 > readLength * 4;
}

/// The low-complexity score of DUST looks at so many bases at a time.
constexpr std::size_t kDustWindow = 64;
/// Above this a window is of low complexity. 40 random bases score about 0.3, a repeat of three
/// bases 6, of two bases 9, one base in a row 19.
constexpr double kMostDustScore = 2.0;

/// The score of Morgulis et al. (2006), "A fast and symmetric DUST implementation to mask
/// low-complexity DNA sequences", J Comput Biol 13:1028, for one window: over all triplets t that
/// occur c(t) times, the sum of c(t) (c(t) - 1) / 2, divided by the number of triplets less one.
/// Triplets with other letters than bases are left out.
double dustScoreOfWindow(std::string_view window) {
    constexpr std::size_t kTriplet = 3;
    std::array<std::size_t, 64> counts{};
    std::size_t triplets = 0;
    std::size_t pairs = 0;
    forEachKmer(window, kTriplet, [&](Kmer triplet, std::size_t) {
        pairs += counts[triplet]++;
        ++triplets;
    });
    return triplets < 2 ? 0.0 : static_cast<double>(pairs) / static_cast<double>(triplets - 1);
}

/// The score of the window that scores highest.
double dustScore(std::string_view text) {
    double highest = dustScoreOfWindow(text.substr(0, kDustWindow));
    for (std::size_t begin = 1; begin + kDustWindow <= text.size(); ++begin) {
        highest = std::max(highest, dustScoreOfWindow(text.substr(begin, kDustWindow)));
    }
    return highest;
}

/// From this length on sequencing and amplification miss or add a base often enough to matter.
constexpr std::size_t kShortestHomopolymer = 7;

/// The longest run of one base; the first of several.
std::string_view longestRun(std::string_view text) {
    std::string_view longest;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_not_of(text[begin], begin), text.size());
        if (end - begin > longest.size()) {
            longest = text.substr(begin, end - begin);
        }
        begin = end;
    }
    return longest;
}

std::string basesText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " base" : " bases");
}

void checkLength(const MutationSource& source, std::size_t readLength, Findings& findings) {
    const std::size_t length = coreOf(source).size();
    const std::string start = about(*source.mutation) + "its core has " + basesText(length);
    if (length < kShortestCore) {
        findings.add(Rule::coreShort, source.headerLine, start + ", fewer than 20");
    } else if (length > readLength && length <= kLongestRead) {
        findings.add(Rule::coreLongerThanRead, source.headerLine,
                     start + ", more than a read of " + std::to_string(readLength));
    } else if (length <= readLength && needsNearlyWholeRead(length, readLength)) {
        findings.add(Rule::coreSeldomReached, source.headerLine,
                     start + ", more than four fifths of a read of " + std::to_string(readLength));
    }
}

void checkComplexity(const MutationSource& source, Findings& findings) {
    const std::string start = about(*source.mutation) + "its core ";
    const std::string_view run = longestRun(coreOf(source));
    const double score = dustScore(coreOf(source));
    if (score > kMostDustScore) {
        findings.add(Rule::coreLowComplexity, source.headerLine,
                     start + "is of low complexity (DUST score " +
                         platform::formatted("%.1f", score) + ", limit 2)");
    } else if (run.size() >= kShortestHomopolymer && kBases.find(run[0]) != kBases.npos) {
        findings.add(Rule::coreHomopolymer, source.headerLine,
                     start + "holds " + std::to_string(run.size()) + " " + run[0] + " in a row");
    }
}

void checkFlankRepeats(const MutationSource& source, const std::string& side,
                       const archive::Text& flank, Findings& findings) {
    const std::string_view text = archive::orEmpty(flank);
    const std::string_view sequence = archive::orEmpty(source.mutation->seq);
    const auto first = findFlank(sequence, text);
    if (!text.empty() && first && findFlank(sequence.substr(*first + 1), text)) {
        findings.add(Rule::flankRepeated, source.headerLine,
                     about(*source.mutation) + "its " + side + " flank " + std::string(text) +
                         " stands in its sequence more than once; the first one counts");
    }
}

} // namespace

void checkCoreBases(const MutationSource& source, std::size_t readLength, Findings& findings) {
    if (!source.domain || !coreIsDefined(*source.mutation) || coreOf(source).empty()) {
        return;
    }
    checkLength(source, readLength, findings);
    checkComplexity(source, findings);
    checkFlankRepeats(source, "left", source.mutation->before10bp, findings);
    checkFlankRepeats(source, "right", source.mutation->after10bp, findings);
}

} // namespace catalogue::rules
