// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "catalogue/domain_words.h"
#include "platform/text.h"

/// The words that calling writes and branches on again. They stand in result documents and exports:
/// never change them. The words of the definition file are in catalogue/domain_words.h.
namespace calling::words {

// Calls that the report rows branch on.
inline constexpr const char* kPositive = "Positive";
inline constexpr const char* kNegative = "Negative";
inline constexpr const char* kTooFewReadsForCall = "ND *1";

/// Whether a mutation of this name is the internal control of a fusion panel.
inline bool namesInternalControl(const platform::Text& name) {
    return platform::orEmpty(name).find(catalogue::words::kInternalControl) !=
           std::string_view::npos;
}

} // namespace calling::words
