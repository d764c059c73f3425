// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rules about cores: whether reads can hold them, and which entry takes a pair.
//
// Within a domain the first match counts, so an entry gets nothing where an earlier one is found in
// every read that holds it. That is so when each base that the later core accepts at some offset is
// accepted by the earlier core too (shadows()). Every pair of entries of a domain is compared: the
// time grows with the square of a domain's entries, which are few. Tested by shadowing_test.cpp,
// and against the matcher by shadowing_agreement_test.cpp.
#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/catalogue_check.h"
#include "catalogue/check_rules.h"
#include "catalogue/core_sequence.h"
#include "catalogue/domain_words.h"
#include "catalogue/iupac.h"
#include "platform/numbers.h"

namespace catalogue {
namespace {

/// Whether every base that agrees with `laterBase` agrees with `earlierBase`.
bool covers(char laterBase, char earlierBase) {
    if (laterBase == earlierBase) {
        return true;
    }
    const std::string_view accepted = readBasesForCoreCode(earlierBase);
    const std::string_view single(&laterBase, 1);
    const std::string_view codeBases = readBasesForCoreCode(laterBase);
    const std::string_view needed = codeBases.empty() ? single : codeBases;
    return needed.find_first_not_of(accepted) == std::string_view::npos;
}

/// Whether a pair that the later strand word lets through is let through by the earlier one too.
bool asksForNoOtherRead(std::optional<Strand> earlier, std::optional<Strand> later) {
    return earlier && later && (earlier == later || later == Strand::both);
}

} // namespace

bool shadows(const Mutation& earlier, const Mutation& later) {
    if (!asksForNoOtherRead(strandOf(earlier), strandOf(later))) {
        return false;
    }
    const std::string_view inner = archive::orEmpty(earlier.coreSeq);
    const std::string_view outer = archive::orEmpty(later.coreSeq);
    if (inner.size() > outer.size()) {
        return false;
    }
    if (!earlier.coreSeqContainsWildCard) {
        return outer.find(inner) != std::string_view::npos;
    }
    return std::search(outer.begin(), outer.end(), inner.begin(), inner.end(), covers) !=
           outer.end();
}

namespace rules {
namespace {

/// What a read's base can agree with: bases, and codes that stand for some.
constexpr std::string_view kLettersOfACore = "ACGTBDHKMRSVWY";

using FirstWithCore = std::unordered_map<std::string_view, const MutationSource*>;

/// The letters of the core that agree with no base, each once; others than ASCII letters in
/// hexadecimal.
std::string lettersWithoutBase(std::string_view core) {
    std::string seen;
    std::string shown;
    for (const char letter : core) {
        if (kLettersOfACore.find(letter) != std::string_view::npos ||
            seen.find(letter) != std::string::npos) {
            continue;
        }
        seen += letter;
        const bool printable = letter > ' ' && letter <= '~';
        shown += shown.empty() ? "" : ", ";
        shown += printable ? std::string(1, letter)
                           : platform::formatted("\\x%02X", static_cast<unsigned char>(letter));
    }
    return shown;
}

void checkSameCoreInDomain(const MutationSource& earlier, const MutationSource& later,
                           Findings& findings) {
    const std::string message = about(*later.mutation) + "its core is that of " +
                                nameAndLine(earlier) + ", which is tried first";
    if (shadows(*earlier.mutation, *later.mutation)) {
        findings.add(Rule::coreNeverCounted, later.headerLine, message + "; it never gets a pair");
    } else {
        findings.add(Rule::coreTwice, later.headerLine, message);
    }
}

/// Looks for an earlier entry, with another core, that takes every pair of `later`.
void checkShadow(const CheckedDomain& domain, std::size_t later, Findings& findings) {
    const MutationSource& source = *domain.mutations[later];
    for (std::size_t i = 0; i < later; ++i) {
        const MutationSource& earlier = *domain.mutations[i];
        if (coreIsDefined(*earlier.mutation) && coreOf(earlier) != coreOf(source) &&
            shadows(*earlier.mutation, *source.mutation)) {
            findings.add(Rule::coreShadowed, source.headerLine,
                         about(*source.mutation) + "wherever its core is found, that of " +
                             nameAndLine(earlier) +
                             " is found too and is tried first; it gets a pair only where the "
                             "quality gate turns that one down");
            return;
        }
    }
}

void checkWithinDomain(const CheckedDomain& domain, Findings& findings) {
    FirstWithCore firstWithCore;
    for (std::size_t i = 0; i < domain.mutations.size(); ++i) {
        const MutationSource& source = *domain.mutations[i];
        if (!coreIsDefined(*source.mutation)) {
            continue;
        }
        const auto [found, isNew] = firstWithCore.emplace(coreOf(source), &source);
        if (isNew) {
            checkShadow(domain, i, findings);
        } else {
            checkSameCoreInDomain(*found->second, source, findings);
        }
    }
}

/// Reports an entry whose core stands in another domain before.
void checkAcrossDomains(const MutationSource& source, FirstWithCore& firstWithCore,
                        Findings& findings) {
    if (!coreIsDefined(*source.mutation)) {
        return;
    }
    const auto [found, isNew] = firstWithCore.emplace(coreOf(source), &source);
    if (!isNew && found->second->domain != source.domain) {
        findings.add(Rule::coreInTwoDomains, source.headerLine,
                     about(*source.mutation) + "its core is that of " +
                         nameAndLine(*found->second) + " in another domain");
    }
}

} // namespace

void checkCore(const MutationSource& source, Findings& findings) {
    if (!source.domain || !coreIsDefined(*source.mutation)) {
        return;
    }
    const std::string_view core = coreOf(source);
    const std::string start = about(*source.mutation);
    if (core.empty()) {
        findings.add(Rule::coreEmpty, source.headerLine,
                     start + "both flanks are empty, so its core is empty and found in every read");
    }
    if (core.size() > kLongestRead) {
        findings.add(Rule::coreBeyondAnyRead, source.headerLine,
                     start + "its core has " + std::to_string(core.size()) +
                         " bases; no read is longer than 509");
    }
    const std::string letters = lettersWithoutBase(core);
    if (!letters.empty()) {
        findings.add(Rule::coreLetterUnmatchable, source.headerLine,
                     start + "its core holds " + letters +
                         ", which agrees with no base but only with the same letter in a read");
    }
}

void checkCoresAgainstEachOther(const std::vector<CheckedDomain>& domains, Findings& findings) {
    FirstWithCore firstWithCore;
    for (const CheckedDomain& domain : domains) {
        checkWithinDomain(domain, findings);
        for (const MutationSource* source : domain.mutations) {
            checkAcrossDomains(*source, firstWithCore, findings);
        }
    }
}

} // namespace rules
} // namespace catalogue
