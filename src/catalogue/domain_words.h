// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "archive/nullable.h"
#include "catalogue/mut_domain.h"

/// The words of the definition file that later stages act on, and what each of them means. They
/// stand in laboratories' files and in result documents, and are compared exactly: never change
/// them.
namespace catalogue {

/// What a domain holds. It decides how the domain is called and reported.
enum class DomainType : std::uint8_t {
    unknown, ///< no word, or one that no rule knows: counted, never called
    germline,
    somaticDNA,
    germlineMRNA,
    fusionRNA,
    control, ///< counted, never called
    // Deliberate: the count table knows the RNA domains by other words than the calling.
    countedGermlineRNA,
    countedFusionMRNA,
};

/// The reads of a pair that must hold a core.
enum class Strand : std::uint8_t { read1, read2, both };

namespace words {

inline constexpr std::pair<std::string_view, DomainType> kDomainTypes[] = {
    {"Germline", DomainType::germline},
    {"SomaticDNA", DomainType::somaticDNA},
    {"germline_mRNA", DomainType::germlineMRNA},
    {"fusion_RNA", DomainType::fusionRNA},
    {"control", DomainType::control},
    {"germline_RNA", DomainType::countedGermlineRNA},
    {"fusion_mRNA", DomainType::countedFusionMRNA}};

inline constexpr std::pair<std::string_view, Strand> kStrands[] = {
    {"R1", Strand::read1}, {"R2", Strand::read2}, {"R1R2", Strand::both}};

/// The only germline domain that is called.
inline constexpr std::string_view kAlleleTypingDomain = "BIM";
/// The transcript that tells whether the RNA is intact.
inline constexpr std::string_view kRNAQualityControl = "OAZ1";
/// Part of the name of a fusion panel's internal control.
inline constexpr std::string_view kInternalControl = "control";
/// The flag of a domain header, known in any letter case.
inline constexpr const char* kStopFlag = "StopSearchIfMatched";

} // namespace words

inline DomainType typeOf(const MutDomain& domain) {
    for (const auto& [word, type] : words::kDomainTypes) {
        if (domain.type == word) {
            return type;
        }
    }
    return DomainType::unknown;
}

/// nullopt for any other word ("r1" too): no read pair ever supports such a mutation.
inline std::optional<Strand> strandOf(const Mutation& mutation) {
    for (const auto& [word, strand] : words::kStrands) {
        if (mutation.strandRequiredToRead == word) {
            return strand;
        }
    }
    return std::nullopt;
}

inline std::string wordOf(Strand wanted) {
    for (const auto& [word, strand] : words::kStrands) {
        if (strand == wanted) {
            return std::string(word);
        }
    }
    return {};
}

/// Whether the domain is the germline domain that is called.
inline bool isAlleleTyping(const MutDomain& domain) {
    return typeOf(domain) == DomainType::germline && domain.name == words::kAlleleTypingDomain;
}

/// Whether the mutation is the transcript that tells of degraded RNA.
inline bool isRNAQualityControl(const Mutation& mutation) {
    return mutation.name == words::kRNAQualityControl;
}

/// Whether the mutation is the internal control of a fusion panel, as far as its name tells.
inline bool isInternalControl(const Mutation& mutation) {
    return archive::orEmpty(mutation.name).find(words::kInternalControl) != std::string_view::npos;
}

} // namespace catalogue
