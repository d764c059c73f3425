// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

#include "platform/result.h"
#include "run/summary_for_each_patient.h"

namespace report {

/// Takes the next piece of an output.
using TextSink = std::function<platform::Status(std::string_view)>;

/// The record with all its rows. Keys are the property names in the order of the record's listing;
/// a row's "mutDomain" is its domain's name; absent texts and lists are null.
nlohmann::ordered_json patientJson(const run::SummaryForEachPatient& patient);

/// Writes every record and row as one JSON object: "selectedPatientRowNo", and the patients under
/// "summaryForEachPatientMutAr", each on a line of its own so that memory holds one at a time.
/// `run` is the record of the run as JSON text, which stands under "run" at the end; empty: there
/// is none. Returns the sink's first failure.
platform::Status writeJson(const run::PatientList& patients, std::int64_t selectedPatientRowNo,
                           const std::string& run, const TextSink& sink);

} // namespace report
