// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "archive/nullable.h"
#include "catalogue/mut_domain.h"

/// Words of the definition file that later stages compare exactly. They stand in laboratories'
/// files: never change them.
namespace catalogue::words {

// Domain types that are called.
inline constexpr std::string_view kGermline = "Germline";
inline constexpr std::string_view kSomaticDNA = "SomaticDNA";
inline constexpr std::string_view kGermlineMRNA = "germline_mRNA";
inline constexpr std::string_view kFusionRNA = "fusion_RNA";
/// Counted, never called.
inline constexpr std::string_view kControl = "control";
// Deliberate: the count table knows the RNA domains by other words than the calling.
inline constexpr std::string_view kCountedGermlineRNA = "germline_RNA";
inline constexpr std::string_view kCountedFusionMRNA = "fusion_mRNA";

/// The only germline domain that is called.
inline constexpr std::string_view kAlleleTypingDomain = "BIM";
/// The transcript that tells whether the RNA is intact.
inline constexpr std::string_view kRNAQualityControl = "OAZ1";
/// Part of the name of a fusion panel's internal control.
inline constexpr std::string_view kInternalControl = "control";
/// Known in any letter case.
inline constexpr const char* kStopFlag = "StopSearchIfMatched";

// Strand words: the reads that must hold the core.
inline constexpr std::string_view kRead1 = "R1";
inline constexpr std::string_view kRead2 = "R2";
inline constexpr std::string_view kBothReads = "R1R2";

/// Whether the domain is the germline domain that is called.
inline bool isAlleleTyping(const MutDomain& domain) {
    return domain.type == kGermline && domain.name == kAlleleTypingDomain;
}

/// Whether a mutation of this name is the internal control of a fusion panel.
inline bool namesInternalControl(const archive::Text& name) {
    return archive::orEmpty(name).find(kInternalControl) != std::string_view::npos;
}

} // namespace catalogue::words
