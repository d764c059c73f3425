// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about strands. Before the search read 2 is reverse-complemented, so that both reads of a
// pair lie on one strand, and every sequence of a catalogue has to lie on that strand. A sequence
// from the other one (the gene's coding strand here, the genome's plus strand there) is found in
// no read of a directional library. The file does not say which strand is right, but sequences that
// belong together show when they do not agree:
//
// - a mutant is like its wild type only after one of them is reverse-complemented;
// - two targets overlap (two hotspots of one exon, a fusion and the normal junction) only after one
//   of them is reverse-complemented;
// - a domain asks for another read than the other domains of its type, or an entry than most
//   entries of its domain.
//
// Only the core is searched for, so a core is compared by itself too. Somebody who pastes it from
// the other strand into a sequence line leaves the bases around it as they were, and these make the
// two sequence lines look alike.
//
// Tested by check_strands_test.cpp.
#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/check_rules.h"
#include "catalogue/core_sequence.h"
#include "catalogue/domain_words.h"
#include "catalogue/iupac.h"
#include "catalogue/kmer_index.h"

namespace catalogue::rules {
namespace {

std::string_view sequenceOf(const MutationSource& source) {
    return archive::orEmpty(source.mutation->seq);
}

// --- Mutant against wild type

/// Short enough that a short sequence with a change in its middle shares some on either side of it.
/// A pair of unrelated k-mers agrees once in 65,536 times.
constexpr std::size_t kKmerOfLikeness = 8;

struct Likeness {
    double asWritten;
    double onOtherStrand;
};

/// The shares of the k-mers of `sequence` and of its reverse complement that the wild type has.
Likeness likeness(std::string_view sequence, const std::vector<Kmer>& wildType) {
    const auto share = [&wildType](const std::vector<Kmer>& kmers) {
        return kmers.empty() ? 0.0
                             : static_cast<double>(sharedKmerCount(kmers, wildType)) /
                                   static_cast<double>(kmers.size());
    };
    return {share(distinctKmers(sequence, kKmerOfLikeness)),
            share(distinctKmers(otherStrand(sequence), kKmerOfLikeness))};
}

/// A quarter of the k-mers is what a large insertion or one half of a junction leaves. A hairpin is
/// like its own other strand, but then as it is written too.
bool isLikeOnOtherStrandOnly(const Likeness& likeness) {
    constexpr double kLeastShare = 0.25;
    constexpr double kLeastRatio = 3.0;
    return likeness.onOtherStrand >= kLeastShare &&
           likeness.onOtherStrand > kLeastRatio * likeness.asWritten;
}

/// Whether the core begins and ends as the wild type does. Then it is a variant that turns the
/// bases in between: an inversion, and no mistake.
bool isInversion(std::string_view core, std::string_view wildType) {
    return core.size() >= kKmerOfLikeness &&
           wildType.find(core.substr(0, kKmerOfLikeness)) != std::string_view::npos &&
           wildType.find(core.substr(core.size() - kKmerOfLikeness)) != std::string_view::npos;
}

/// What of an entry is like its wild type on the other strand only.
enum class Reversed : std::uint8_t { nothing, coreAlone, sequence };

Reversed reversedPart(const MutationSource& source, const MutationSource& wildType) {
    if (isInversion(coreOf(source), sequenceOf(wildType))) {
        return Reversed::nothing;
    }
    const std::vector<Kmer> kmers = distinctKmers(sequenceOf(wildType), kKmerOfLikeness);
    if (isLikeOnOtherStrandOnly(likeness(sequenceOf(source), kmers))) {
        return Reversed::sequence;
    }
    return isLikeOnOtherStrandOnly(likeness(coreOf(source), kmers)) ? Reversed::coreAlone
                                                                    : Reversed::nothing;
}

bool isCoreReversed(std::string_view core, std::string_view wildType) {
    const std::string reversed = otherStrand(core);
    return !core.empty() && !wildType.empty() &&
           (wildType.find(reversed) != std::string_view::npos ||
            reversed.find(wildType) != std::string::npos);
}

void reportOtherStrand(const MutationSource& source, const MutationSource& wildType,
                       Findings& findings) {
    const bool coreAlone = reversedPart(source, wildType) == Reversed::coreAlone;
    if (isCoreReversed(coreOf(source), coreOf(wildType))) {
        findings.add(Rule::coreIsWildTypeReversed, source.headerLine,
                     about(*source.mutation) +
                         "on the other strand its core is that of its wild "
                         "type " +
                         nameAndLine(wildType));
    } else {
        findings.add(Rule::coreOnOtherStrand, source.headerLine,
                     about(*source.mutation) +
                         (coreAlone ? "its core is like that of its wild type "
                                    : "it is like its wild type ") +
                         nameAndLine(wildType) +
                         " only after one of the two is reverse-complemented");
    }
}

void reportWildType(const MutationSource& wildType, bool coreAlone, Findings& findings) {
    findings.add(Rule::coreOnOtherStrand, wildType.headerLine,
                 about(*wildType.mutation) +
                     (coreAlone ? "its core is like those of the other entries of its domain only "
                                  "after it is reverse-complemented"
                                : "it is like the other entries of its domain only after it is "
                                  "reverse-complemented"));
}

void checkStrandsOfMutants(const CheckedDomain& domain, Findings& findings) {
    if (!hasWildType(domain)) {
        return;
    }
    const MutationSource& wildType = *domain.mutations.front();
    std::vector<const MutationSource*> reversed;
    bool coresAlone = true;
    for (std::size_t i = 1; i < domain.mutations.size(); ++i) {
        const Reversed part = reversedPart(*domain.mutations[i], wildType);
        if (part != Reversed::nothing) {
            reversed.push_back(domain.mutations[i]);
            coresAlone = coresAlone && part == Reversed::coreAlone;
        }
    }
    // If all the others agree with each other, it is the wild type that does not agree.
    if (reversed.size() >= 2 && reversed.size() + 1 == domain.mutations.size()) {
        reportWildType(wildType, coresAlone, findings);
        return;
    }
    for (const MutationSource* source : reversed) {
        reportOtherStrand(*source, wildType, findings);
    }
}

// --- Targets that overlap

/// So long that ten thousand targets share none by chance.
constexpr std::size_t kKmerOfOverlap = 24;
/// A k-mer of more places is a repeat; the first ones tell enough.
constexpr std::size_t kMostPlacesOfOverlap = 16;

using SharedKmers = std::map<std::uint32_t, std::size_t>;

SharedKmers sharedWith(std::string_view sequence, std::size_t self, const KmerIndex& index) {
    SharedKmers shared;
    forEachKmer(sequence, index.k(), [&](Kmer kmer, std::size_t) {
        const auto places = index.placesOf(kmer);
        for (std::size_t i = 0; i < std::min(places.size(), kMostPlacesOfOverlap); ++i) {
            if (places[i].text != self) {
                ++shared[places[i].text];
            }
        }
    });
    return shared;
}

std::size_t kmerCount(const Target& target) {
    const std::size_t length = target.sequence().size();
    return length < kKmerOfOverlap ? 0 : length - kKmerOfOverlap + 1;
}

/// The targets with which `self` overlaps by a quarter of the shorter one. Repeats that stand in
/// the genome on both strands overlap by less.
std::vector<std::uint32_t> overlapping(const std::vector<Target>& targets, std::size_t self,
                                       const SharedKmers& shared) {
    std::vector<std::uint32_t> found;
    for (const auto& [text, count] : shared) {
        if (count * 4 >= std::min(kmerCount(targets[self]), kmerCount(targets[text]))) {
            found.push_back(text);
        }
    }
    return found;
}

std::string whole(const Target& target) {
    return hasWildType(*target.domain)
               ? about(target.domain->record()) + "its wild type " + nameAndLine(*target.source)
               : about(*target.source->mutation) + "it";
}

std::size_t lineOf(const Target& target) {
    return hasWildType(*target.domain) ? target.domain->source->headerLine
                                       : target.source->headerLine;
}

/// A target is reported that overlaps with others on the other strand only. Where this holds for
/// both of two, it is the later one.
void checkOverlaps(const std::vector<Target>& targets, Findings& findings) {
    const std::vector<std::string_view> sequences = sequencesOf(targets);
    const KmerIndex index(kKmerOfOverlap, sequences);
    std::vector<std::vector<std::uint32_t>> onOtherStrand(targets.size());
    std::vector<bool> alongOthers(targets.size());
    for (std::size_t i = 0; i < targets.size(); ++i) {
        onOtherStrand[i] = overlapping(targets, i, sharedWith(otherStrand(sequences[i]), i, index));
        if (!onOtherStrand[i].empty()) {
            alongOthers[i] = !overlapping(targets, i, sharedWith(sequences[i], i, index)).empty();
        }
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const auto neighbour =
            std::find_if(onOtherStrand[i].begin(), onOtherStrand[i].end(),
                         [&](std::uint32_t other) { return alongOthers[other] || other < i; });
        if (!alongOthers[i] && neighbour != onOtherStrand[i].end()) {
            findings.add(Rule::sequenceOnOtherStrand, lineOf(targets[i]),
                         whole(targets[i]) + " overlaps with " +
                             nameAndLine(*targets[*neighbour].source) +
                             " only after one of the two is reverse-complemented");
        }
    }
}

// --- Cores of targets that overlap

/// Junctions share half a core, 20 bases or so. A k-mer of this length is shared by chance once in
/// a thousand million times, and only targets count whose other bases overlap too.
constexpr std::size_t kKmerOfCoreOverlap = 15;

/// The texts that share a k-mer with the bases before and behind the target's core.
SharedKmers sharedAroundCore(const Target& target, std::size_t self, const KmerIndex& index) {
    const std::string_view sequence = target.sequence();
    const std::string_view core = coreOf(*target.source);
    const std::size_t begin = sequence.find(core);
    SharedKmers shared = sharedWith(sequence.substr(0, begin), self, index);
    shared.merge(sharedWith(sequence.substr(begin + core.size()), self, index));
    return shared;
}

/// How a target's core lies to the targets with which the bases around it overlap as written.
struct CoreOverlaps {
    bool asWritten = false;
    std::vector<std::uint32_t> onOtherStrand;
};

CoreOverlaps coreOverlapsOf(const Target& target, std::size_t self, const KmerIndex& index) {
    const std::string_view core = coreOf(*target.source);
    if (!coreIsDefined(*target.source->mutation) || core.empty()) {
        return {};
    }
    CoreOverlaps overlaps{!sharedWith(core, self, index).empty(), {}};
    const SharedKmers reversed = sharedWith(otherStrand(core), self, index);
    if (!reversed.empty()) {
        const SharedKmers around = sharedAroundCore(target, self, index);
        for (const auto& [text, count] : reversed) {
            if (around.contains(text)) {
                overlaps.onOtherStrand.push_back(text);
            }
        }
    }
    return overlaps;
}

/// A target is reported whose core alone lies on the other strand. Where two do not agree and
/// nothing else tells which is wrong, it is the later one.
void checkCoresOfOverlaps(const std::vector<Target>& targets, Findings& findings) {
    const KmerIndex index(kKmerOfCoreOverlap, sequencesOf(targets));
    std::vector<CoreOverlaps> overlaps;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        overlaps.push_back(coreOverlapsOf(targets[i], i, index));
    }
    for (std::size_t i = 0; i < targets.size(); ++i) {
        // The other one's core is right beside this target, so this one's is wrong.
        const auto agreesWithThis = [&](std::uint32_t other) {
            const auto& reversed = overlaps[other].onOtherStrand;
            return std::find(reversed.begin(), reversed.end(), i) == reversed.end();
        };
        const auto& reversed = overlaps[i].onOtherStrand;
        const auto neighbour =
            std::find_if(reversed.begin(), reversed.end(), [&](std::uint32_t other) {
                return overlaps[other].asWritten || other < i || agreesWithThis(other);
            });
        if (!overlaps[i].asWritten && neighbour != reversed.end()) {
            const Target& target = targets[i];
            findings.add(Rule::sequenceOnOtherStrand, target.source->headerLine,
                         about(*target.source->mutation) +
                             "the bases around its core overlap with " +
                             nameAndLine(*targets[*neighbour].source) +
                             ", but its core only after one of the two is reverse-complemented");
        }
    }
}

// --- The read that a domain asks for

/// Types whose domains are much alike. Controls are of any kind.
bool isOfOneAssay(DomainType type) {
    return type == DomainType::somaticDNA || type == DomainType::germlineMRNA ||
           type == DomainType::fusionRNA;
}

std::optional<Strand> firstStrandOf(const CheckedDomain& domain) {
    return domain.mutations.empty() ? std::nullopt : strandOf(*domain.mutations.front()->mutation);
}

/// How many domains of a type, by their first entry, or how many entries of a domain have a word.
using CountByStrand = std::map<Strand, std::size_t>;

/// The word of at least three quarters of the others, which are at least two.
std::optional<Strand> wordOfOthers(CountByStrand counts, Strand own) {
    --counts[own];
    std::size_t others = 0;
    for (const auto& [strand, count] : counts) {
        others += count;
    }
    for (const auto& [strand, count] : counts) {
        if (others >= 2 && count * 4 >= others * 3) {
            return strand;
        }
    }
    return std::nullopt;
}

void checkDomainStrandWords(const std::vector<CheckedDomain>& domains, Findings& findings) {
    std::map<DomainType, CountByStrand> counts;
    for (const CheckedDomain& domain : domains) {
        const std::optional<Strand> own = firstStrandOf(domain);
        if (own && isOfOneAssay(typeOf(domain.record()))) {
            ++counts[typeOf(domain.record())][*own];
        }
    }
    for (const CheckedDomain& domain : domains) {
        const std::optional<Strand> own = firstStrandOf(domain);
        if (!own || !isOfOneAssay(typeOf(domain.record()))) {
            continue;
        }
        const std::optional<Strand> usual = wordOfOthers(counts[typeOf(domain.record())], *own);
        if (usual && usual != own) {
            findings.add(Rule::domainStrandWordDiffers, domain.source->headerLine,
                         about(domain.record()) + "its strand word is " + wordOf(*own) +
                             ", that of the other domains of its type is " + wordOf(*usual));
        }
    }
}

/// The word of at least three quarters of all. Of three entries it takes all three: one that reads
/// the other way is no clear mistake yet.
std::optional<Strand> wordOfMost(const CountByStrand& counts) {
    std::size_t all = 0;
    for (const auto& [strand, count] : counts) {
        all += count;
    }
    for (const auto& [strand, count] : counts) {
        if (count * 4 >= all * 3) {
            return strand;
        }
    }
    return std::nullopt;
}

/// The entries of a domain without a wild type. With one, each mutant is held against it
/// (check_wild_types.cpp).
void checkEntryStrandWords(const CheckedDomain& domain, Findings& findings) {
    if (hasWildType(domain)) {
        return;
    }
    CountByStrand counts;
    for (const MutationSource* source : domain.mutations) {
        if (const std::optional<Strand> own = strandOf(*source->mutation)) {
            ++counts[*own];
        }
    }
    const std::optional<Strand> usual = wordOfMost(counts);
    for (const MutationSource* source : domain.mutations) {
        const std::optional<Strand> own = strandOf(*source->mutation);
        if (own && usual && usual != own) {
            findings.add(Rule::strandWordDiffers, source->headerLine,
                         about(*source->mutation) + "its strand word is " + wordOf(*own) +
                             ", that of most entries of its domain is " + wordOf(*usual));
        }
    }
}

} // namespace

bool liesOnOtherStrand(const MutationSource& source, const MutationSource& wildType) {
    return reversedPart(source, wildType) != Reversed::nothing;
}

void checkStrands(const std::vector<CheckedDomain>& domains, Findings& findings) {
    for (const CheckedDomain& domain : domains) {
        checkStrandsOfMutants(domain, findings);
        checkEntryStrandWords(domain, findings);
    }
    const std::vector<Target> targets = targetsOf(domains);
    checkOverlaps(targets, findings);
    checkCoresOfOverlaps(targets, findings);
    checkDomainStrandWords(domains, findings);
}

} // namespace catalogue::rules
