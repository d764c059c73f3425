// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/result.h"
#include "run/summary_for_each_patient.h"

namespace cli {

/// Takes the next piece of an output.
using TextSink = std::function<platform::Status(std::string_view)>;

/// Writes every record and row as one JSON object: "selectedPatientRowNo", and the patients under
/// "summaryForEachPatientMutAr", each on a line of its own so that memory holds one at a time.
/// Keys are the property names; a row's "mutDomain" is its domain's name; absent texts and lists
/// are null. Returns the sink's first failure.
platform::Status writeJson(const run::PatientList& patients, std::int64_t selectedPatientRowNo,
                           const TextSink& sink);

} // namespace cli
