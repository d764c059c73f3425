// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace report {

/// The key under which --json lists its patients.
inline constexpr std::string_view kPatientsKey = "summaryForEachPatientMutAr";

/// The keys of a record of which fingerprints are made, in the order of the record's listing.
/// `list` is the key of the list that holds such records: kPatientsKey, "mutDomains",
/// "mutationMutAr", or that of a result table. None for any other key.
///
/// Never add one: the fingerprints of all results that were written until then would change.
std::vector<std::string_view> digestedKeys(std::string_view list);

/// Takes out of the record, and of all records in its lists, what is in no fingerprint.
void keepDigestedKeys(nlohmann::ordered_json& record, std::string_view list);

} // namespace report
