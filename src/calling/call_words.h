// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "platform/text.h"

/// The words that calling branches on and the words that it writes. They stand in definition
/// files, result documents and exports: never change them.
namespace calling::words {

// Domain types, and the domain of the allele typing.
inline constexpr std::string_view kGermline = "Germline";
inline constexpr std::string_view kSomaticDNA = "SomaticDNA";
inline constexpr std::string_view kGermlineRNA = "germline_mRNA";
inline constexpr std::string_view kFusionRNA = "fusion_RNA";
inline constexpr std::string_view kAlleleTypingDomain = "BIM";

/// The transcript that shows whether the patient's RNA is intact.
inline constexpr std::string_view kRNAQualityControl = "OAZ1";

// Calls that the report rows branch on.
inline constexpr const char* kPositive = "Positive";
inline constexpr const char* kNegative = "Negative";
inline constexpr const char* kTooFewReadsForCall = "ND *1";

/// Whether a mutation of this name is the internal control of a fusion panel.
inline bool namesInternalControl(const platform::Text& name) {
    return platform::orEmpty(name).find("control") != std::string_view::npos;
}

} // namespace calling::words
