// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about a domain's wild type. The first entry of a domain of DNA is its wild type, whatever
// it is called: its pairs are the normal ones, and each other entry is called by its share of both.
// So a file is wrong without any faulty line where the first entry is not the wild type, where a
// mutant is the wild type itself, or where wild type and mutant are not found in the same reads.
//
// Who the wild type is, is told by names ("wt", "wild type"), and without such a name by the
// changes: a mutant differs from the wild type in one place, but from another mutant in two. An
// entry means what stands between its flanks, so two entries are compared with both put into the
// wild type's sequence. Fusions and transcripts have no wild type, and none of this holds for them.
// Tested by check_wild_types_test.cpp.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/check_rules.h"
#include "catalogue/core_sequence.h"
#include "catalogue/domain_words.h"
#include "catalogue/kmer_index.h"

namespace catalogue::rules {
namespace {

// --- What names say

bool isLetter(char character) {
    return std::isalpha(static_cast<unsigned char>(character)) != 0;
}

bool isDigit(char character) {
    return std::isdigit(static_cast<unsigned char>(character)) != 0;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return lower;
}

/// Whether "wt" at this place is a word of its own: KRAS_wt, WT-KRAS, KRAS12wt and KRASwt, but not
/// GROWTH.
bool isWordWT(std::string_view name, std::size_t place) {
    const std::size_t behind = place + 2;
    if (behind < name.size() && isLetter(name[behind])) {
        return false;
    }
    const char before = place == 0 ? '_' : name[place - 1];
    const bool caseChanges =
        std::isupper(static_cast<unsigned char>(before)) != 0 && name.substr(place, 2) == "wt";
    return !isLetter(before) || caseChanges;
}

bool saysWildType(std::string_view name) {
    const std::string lower = lowerCase(name);
    for (const char* const word : {"wildtype", "wild_type", "wild-type", "wild.type"}) {
        if (lower.find(word) != std::string::npos) {
            return true;
        }
    }
    for (std::size_t at = lower.find("wt"); at != std::string::npos;
         at = lower.find("wt", at + 1)) {
        if (isWordWT(name, at)) {
            return true;
        }
    }
    return false;
}

/// Whether the word is a protein change such as G12D, R213* or A750del. Two digits at least keep
/// out genes such as B2M.
bool isProteinChange(std::string_view word) {
    if (word.empty() || std::isupper(static_cast<unsigned char>(word.front())) == 0) {
        return false;
    }
    const auto digitsEnd = std::find_if_not(word.begin() + 1, word.end(), isDigit);
    const std::string_view change = word.substr(static_cast<std::size_t>(digitsEnd - word.begin()));
    if (digitsEnd - word.begin() < 3 || change.empty()) {
        return false;
    }
    for (const std::string_view kind : {"del", "ins", "dup", "fs"}) {
        if (change.substr(0, kind.size()) == kind) {
            return true;
        }
    }
    return change == "*" ||
           (change.size() == 1 && std::isupper(static_cast<unsigned char>(change[0])) != 0);
}

bool saysMutant(std::string_view name) {
    const auto isOfAWord = [](char character) {
        return isLetter(character) || isDigit(character) || character == '*';
    };
    for (auto begin = name.begin(); begin != name.end();) {
        const auto end = std::find_if_not(begin, name.end(), isOfAWord);
        if (isProteinChange({begin, end})) {
            return true;
        }
        begin = std::find_if(end, name.end(), isOfAWord);
    }
    return false;
}

std::string_view nameOf(const MutationSource& source) {
    return archive::orEmpty(source.mutation->name);
}

/// Returns whether a name of the domain says which entry is the wild type.
bool checkNamesOfWildTypes(const CheckedDomain& domain, Findings& findings) {
    const MutationSource& first = *domain.mutations.front();
    const bool firstSays = saysWildType(nameOf(first));
    bool anySays = firstSays;
    for (std::size_t i = 1; i < domain.mutations.size(); ++i) {
        const MutationSource& source = *domain.mutations[i];
        if (!saysWildType(nameOf(source))) {
            continue;
        }
        anySays = true;
        const std::string start = about(*source.mutation) + "its name says wild type, ";
        if (firstSays) {
            findings.add(Rule::wildTypeTwice, source.headerLine,
                         start + "as that of " + nameAndLine(first) +
                             " does, but only a domain's first entry counts as normal");
        } else {
            findings.add(Rule::wildTypeNotFirst, source.headerLine,
                         start +
                             "but it is not the first entry of its domain: its pairs count as "
                             "mutant, and those of " +
                             nameAndLine(first) + " as normal");
        }
    }
    if (!anySays && saysMutant(nameOf(first))) {
        findings.add(Rule::firstEntryNamedAsMutant, first.headerLine,
                     about(*first.mutation) + "its name says mutant, but as the first entry of its "
                                              "domain it is counted as normal");
    }
    return anySays;
}

// --- What changes say

/// A change of at most this many bases of either sequence, or an insertion or deletion of any
/// length beside it, is one change: a codon, or a deletion with a few inserted bases.
constexpr std::size_t kBasesOfOneChange = 3;

/// Whether one of two cores is the other with one change. What is left between the longest common
/// beginning and the longest common end of two mutants holds both their changes and all between.
bool differInOnePlace(std::string_view a, std::string_view b) {
    const std::size_t shorter = std::min(a.size(), b.size());
    std::size_t begin = 0;
    while (begin < shorter && a[begin] == b[begin]) {
        ++begin;
    }
    std::size_t end = 0;
    while (begin + end < shorter && a[a.size() - 1 - end] == b[b.size() - 1 - end]) {
        ++end;
    }
    return shorter - begin - end <= kBasesOfOneChange;
}

/// Whether every other entry of the domain is the entry `candidate` with one change. Most mutants
/// fail at the first or second other entry, so trying all of them takes little.
bool isOneChangeFromAll(const CheckedDomain& domain, std::size_t candidate) {
    for (std::size_t i = 0; i < domain.mutations.size(); ++i) {
        if (i != candidate &&
            !differInOnePlace(coreOf(*domain.mutations[candidate]), coreOf(*domain.mutations[i]))) {
            return false;
        }
    }
    return true;
}

bool haveEqualFlanks(const CheckedDomain& domain) {
    const Mutation& first = *domain.mutations.front()->mutation;
    return std::all_of(domain.mutations.begin(), domain.mutations.end(),
                       [&first](const MutationSource* source) {
                           return coreIsDefined(*source->mutation) &&
                                  source->mutation->before10bp == first.before10bp &&
                                  source->mutation->after10bp == first.after10bp;
                       });
}

void checkFirstEntryByChanges(const CheckedDomain& domain, Findings& findings) {
    if (!haveEqualFlanks(domain) || isOneChangeFromAll(domain, 0)) {
        return;
    }
    for (std::size_t i = 1; i < domain.mutations.size(); ++i) {
        if (isOneChangeFromAll(domain, i)) {
            const MutationSource& first = *domain.mutations.front();
            findings.add(Rule::firstEntryUnlikeOthers, first.headerLine,
                         about(*first.mutation) +
                             "it is counted as normal, but every other entry is " +
                             nameAndLine(*domain.mutations[i]) +
                             " with one change, and not this one with one change");
            return;
        }
    }
}

// --- Whether wild type and mutant are found in the same reads

/// Where an entry's core lies in the wild type's sequence, by the entry's own flanks.
struct Stretch {
    std::size_t begin;
    std::size_t end;
    bool operator==(const Stretch& other) const = default;
};

std::optional<Stretch> stretchIn(const Mutation& wildType, const Mutation& mutation) {
    const std::string_view sequence = archive::orEmpty(wildType.seq);
    const std::string_view left = archive::orEmpty(mutation.before10bp);
    const std::string_view right = archive::orEmpty(mutation.after10bp);
    const std::optional<std::size_t> begin = findFlank(sequence, left);
    const std::optional<std::size_t> rightPlace = findFlank(sequence, right);
    if (!begin || !rightPlace || *rightPlace + right.size() < *begin) {
        return std::nullopt;
    }
    return Stretch{*begin, *rightPlace + right.size()};
}

void checkFlanks(const MutationSource& wildType, const MutationSource& source,
                 const std::optional<Stretch>& stretch, Findings& findings) {
    if (!stretch && liesOnOtherStrand(source, wildType)) {
        return; // check_strands.cpp reports it
    }
    if (stretch != stretchIn(*wildType.mutation, *wildType.mutation)) {
        findings.add(Rule::flanksDiffer, source.headerLine,
                     about(*source.mutation) +
                         "its core does not begin and end where that of its wild type " +
                         nameAndLine(wildType) + " does");
    }
}

void checkStrandWord(const MutationSource& wildType, const MutationSource& source,
                     Findings& findings) {
    const std::optional<Strand> word = strandOf(*source.mutation);
    const std::optional<Strand> wildTypesWord = strandOf(*wildType.mutation);
    if (word && wildTypesWord && word != wildTypesWord) {
        findings.add(Rule::strandWordDiffers, source.headerLine,
                     about(*source.mutation) + "its strand word is " +
                         archive::stringOrEmpty(source.mutation->strandRequiredToRead) +
                         ", that of its wild type " + nameAndLine(wildType) + " is " +
                         archive::stringOrEmpty(wildType.mutation->strandRequiredToRead));
    }
}

// --- One variant, one entry

using FirstWithVariant = std::unordered_map<std::string, const MutationSource*>;

/// The wild type's sequence with the stretch between the entry's flanks as the entry has it.
std::string variantOf(const Mutation& wildType, const Mutation& mutation, const Stretch& stretch) {
    const std::string_view sequence = archive::orEmpty(wildType.seq);
    std::string variant(sequence.substr(0, stretch.begin));
    variant += archive::orEmpty(mutation.coreSeq);
    return variant += sequence.substr(stretch.end);
}

/// Whether other rules say that the two entries have one core, or that the earlier one takes all.
bool isReportedAsOneCore(const Mutation& earlier, const Mutation& later) {
    return earlier.coreSeq == later.coreSeq || shadows(earlier, later);
}

void checkVariant(const MutationSource& wildType, const MutationSource& source,
                  const Stretch& stretch, FirstWithVariant& firstWithVariant, Findings& findings) {
    std::string variant = variantOf(*wildType.mutation, *source.mutation, stretch);
    if (variant == archive::orEmpty(wildType.mutation->seq)) {
        if (!isReportedAsOneCore(*wildType.mutation, *source.mutation)) {
            findings.add(Rule::mutantIsWildType, source.headerLine,
                         about(*source.mutation) + "between its flanks it is the wild type " +
                             nameAndLine(wildType) + " without any change");
        }
        return;
    }
    const auto [found, isNew] = firstWithVariant.emplace(std::move(variant), &source);
    if (!isNew && !isReportedAsOneCore(*found->second->mutation, *source.mutation)) {
        findings.add(Rule::variantTwice, source.headerLine,
                     about(*source.mutation) + "with its flanks placed it is the same variant as " +
                         nameAndLine(*found->second));
    }
}

void checkAgainstWildType(const CheckedDomain& domain, Findings& findings) {
    const MutationSource& wildType = *domain.mutations.front();
    const bool isSomatic = typeOf(domain.record()) == DomainType::somaticDNA;
    FirstWithVariant firstWithVariant;
    for (std::size_t i = 1; i < domain.mutations.size(); ++i) {
        const MutationSource& source = *domain.mutations[i];
        checkStrandWord(wildType, source, findings);
        if (!coreIsDefined(*wildType.mutation) || !coreIsDefined(*source.mutation)) {
            continue;
        }
        const std::optional<Stretch> stretch = stretchIn(*wildType.mutation, *source.mutation);
        // The junctions of two alleles end in different sequence, so only somatic entries have to
        // have the same flanks.
        if (isSomatic) {
            checkFlanks(wildType, source, stretch, findings);
        }
        if (stretch) {
            checkVariant(wildType, source, *stretch, firstWithVariant, findings);
        }
    }
}

// --- Mutants of another domain

/// Long enough that unrelated sequences of a panel share next to none, short enough that some are
/// left beside a change in a short sequence.
constexpr std::size_t kKmerOfSimilarity = 11;
/// Fewer k-mers are too few to tell where a sequence belongs.
constexpr std::size_t kLeastKmers = 8;
/// A k-mer of more places is a repeat, which tells nothing and takes long.
constexpr std::size_t kMostPlaces = 64;

struct WildTypes {
    std::vector<const MutationSource*> entries;
    std::vector<std::string_view> sequences;
};

void checkDomainOfMutant(const MutationSource& source, std::size_t own, const WildTypes& wildTypes,
                         const KmerIndex& index, std::vector<std::size_t>& shared,
                         Findings& findings) {
    const std::vector<Kmer> kmers =
        distinctKmers(archive::orEmpty(source.mutation->seq), index.k());
    std::vector<std::uint32_t> touched;
    for (const Kmer kmer : kmers) {
        const auto places = index.placesOf(kmer);
        if (places.size() > kMostPlaces) {
            continue;
        }
        std::optional<std::uint32_t> last;
        for (const KmerIndex::Place& place : places) {
            if (last != place.text && shared[place.text]++ == 0) {
                touched.push_back(place.text);
            }
            last = place.text;
        }
    }
    const auto nearest =
        std::max_element(touched.begin(), touched.end(), [&shared](std::size_t a, std::size_t b) {
            return shared[a] != shared[b] ? shared[a] < shared[b] : a > b;
        });
    if (nearest != touched.end() && *nearest != own && kmers.size() >= kLeastKmers &&
        shared[*nearest] * 4 >= kmers.size() && shared[*nearest] > shared[own] * 2) {
        findings.add(Rule::nearerToAnotherWildType, source.headerLine,
                     about(*source.mutation) + "its sequence is like that of " +
                         nameAndLine(*wildTypes.entries[*nearest]) +
                         ", the wild type of another domain, and unlike that of its own, " +
                         nameAndLine(*wildTypes.entries[own]));
    }
    for (const std::uint32_t text : touched) {
        shared[text] = 0;
    }
}

} // namespace

void checkWildType(const CheckedDomain& domain, Findings& findings) {
    if (!hasWildType(domain)) {
        return;
    }
    if (!checkNamesOfWildTypes(domain, findings)) {
        checkFirstEntryByChanges(domain, findings);
    }
    checkAgainstWildType(domain, findings);
}

void checkDomainsOfMutants(const std::vector<CheckedDomain>& domains, Findings& findings) {
    WildTypes wildTypes;
    for (const CheckedDomain& domain : domains) {
        if (hasWildType(domain)) {
            wildTypes.entries.push_back(domain.mutations.front());
            wildTypes.sequences.push_back(
                archive::orEmpty(domain.mutations.front()->mutation->seq));
        }
    }
    const KmerIndex index(kKmerOfSimilarity, wildTypes.sequences);
    std::vector<std::size_t> shared(wildTypes.entries.size());
    std::size_t own = 0;
    for (const CheckedDomain& domain : domains) {
        if (!hasWildType(domain)) {
            continue;
        }
        for (std::size_t i = 1; i < domain.mutations.size(); ++i) {
            checkDomainOfMutant(*domain.mutations[i], own, wildTypes, index, shared, findings);
        }
        ++own;
    }
}

} // namespace catalogue::rules
