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
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

// --- Stretches that are hard to read

/// A stretch of a core that polymerases and sequencers get wrong.
struct HardStretch {
    Rule rule = Rule::coreHomopolymer;
    std::string description;
    /// Of the run with some bases on either side, or of all of a core of low complexity.
    std::vector<Kmer> kmers;
    const MutationSource* source = nullptr;
    std::size_t otherEntries = 0;
};

constexpr std::size_t kKmerOfStretch = 8;
/// So many bases beside a run tell it from another run of the same base.
constexpr std::size_t kBasesBeside = 8;

std::string_view withBasesBeside(std::string_view run, std::string_view core) {
    const auto at = static_cast<std::size_t>(run.data() - core.data());
    const std::size_t begin = at - std::min(at, kBasesBeside);
    return core.substr(begin, at + run.size() + kBasesBeside - begin);
}

std::optional<HardStretch> hardStretchOf(const MutationSource& source) {
    const std::string_view core = coreOf(source);
    const std::string_view run = longestRun(core);
    const double score = dustScore(core);
    if (score > kMostDustScore) {
        return HardStretch{Rule::coreLowComplexity,
                           "is of low complexity (DUST score " +
                               platform::formatted("%.1f", score) + ", limit 2)",
                           distinctKmers(core, kKmerOfStretch), &source};
    }
    if (run.size() >= kShortestHomopolymer && kBases.find(run[0]) != kBases.npos) {
        return HardStretch{Rule::coreHomopolymer,
                           "holds " + std::to_string(run.size()) + " " + run[0] + " in a row",
                           distinctKmers(withBasesBeside(run, core), kKmerOfStretch), &source};
    }
    return std::nullopt;
}

/// Whether two entries of a domain most likely have one stretch in common: runs of one length with
/// the same bases on one side at least, or cores that share a quarter of their k-mers.
bool areOneStretch(const HardStretch& a, const HardStretch& b) {
    if (a.rule != b.rule || (a.rule == Rule::coreHomopolymer && a.description != b.description)) {
        return false;
    }
    return a.kmers == b.kmers ||
           sharedKmerCount(a.kmers, b.kmers) * 4 > std::min(a.kmers.size(), b.kmers.size());
}

std::string sharedBy(std::size_t otherEntries) {
    if (otherEntries == 0) {
        return {};
    }
    return otherEntries == 1 ? "; 1 other entry of its domain shares this stretch"
                             : "; " + std::to_string(otherEntries) +
                                   " other entries of its domain share this stretch";
}

/// A stretch that several entries of a domain share is said once, at the first of them.
void checkHardStretches(const std::vector<const MutationSource*>& sources, Findings& findings) {
    std::vector<HardStretch> stretches;
    for (const MutationSource* source : sources) {
        std::optional<HardStretch> stretch = hardStretchOf(*source);
        if (!stretch) {
            continue;
        }
        const auto first =
            std::find_if(stretches.begin(), stretches.end(), [&stretch](const HardStretch& other) {
                return areOneStretch(other, *stretch);
            });
        if (first == stretches.end()) {
            stretches.push_back(std::move(*stretch));
        } else {
            ++first->otherEntries;
        }
    }
    for (const HardStretch& stretch : stretches) {
        findings.add(stretch.rule, stretch.source->headerLine,
                     about(*stretch.source->mutation) + "its core " + stretch.description +
                         sharedBy(stretch.otherEntries));
    }
}

// --- Flanks

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

void checkCoreBases(const CheckedDomain& domain, std::size_t readLength, Findings& findings) {
    std::vector<const MutationSource*> sources;
    for (const MutationSource* source : domain.mutations) {
        if (coreIsDefined(*source->mutation) && !coreOf(*source).empty()) {
            sources.push_back(source);
        }
    }
    for (const MutationSource* source : sources) {
        checkLength(*source, readLength, findings);
    }
    checkHardStretches(sources, findings);
    for (const MutationSource* source : sources) {
        checkFlankRepeats(*source, "left", source->mutation->before10bp, findings);
        checkFlankRepeats(*source, "right", source->mutation->after10bp, findings);
    }
}

} // namespace catalogue::rules
