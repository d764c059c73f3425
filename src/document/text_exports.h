// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "run/summary_for_each_patient.h"

namespace document {

/// The detailed report, tab-separated: file names and counts of each selected patient, the count
/// table and five report sections. `selection` are rows of `patients`, rising; rows beyond the list
/// are left out. The column heads are those of the list's first patient; an empty list gives heads
/// without columns.
std::string fullReport(const run::PatientList& patients,
                       const std::vector<std::int64_t>& selection);

/// The summary table, tab-separated: one line for every patient of the list. A patient without a
/// germline DNA or germline RNA row gets an empty cell there.
std::string summaryTable(const run::PatientList& patients);

} // namespace document
