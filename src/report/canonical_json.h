// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace report {

/// The JSON Canonicalization Scheme (RFC 8785): keys sorted, no blanks, one spelling of each number
/// and text, so that equal values have equal bytes.
///
/// One difference: an integer is written in all its digits, whatever its size, where the RFC would
/// round one beyond 2^53 to a double. Keys sort by their bytes, which for the ASCII keys used here
/// is the RFC's order. Texts are valid UTF-8. A number that is not finite becomes null, as in any
/// JSON.
std::string canonicalJson(const nlohmann::ordered_json& value);

/// A double as ECMAScript writes it (ECMA-262, Number::toString): the shortest digits that read
/// back as the same double. REQUIRES: finite.
std::string canonicalNumber(double number);

} // namespace report
