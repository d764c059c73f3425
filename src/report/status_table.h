// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "document/analysis_account.h"

namespace report {

/// One line for each patient that was planned, whatever became of it, under a head line: sample,
/// patient, files, outcome, message, pairs, mapped, not_assessable_targets, warnings, separated by
/// tabs. Several files or warnings stand in one field, "; " between them. What has no value is
/// empty. Columns are only ever added at the end.
std::string statusTable(const document::AnalysisAccount& account);

} // namespace report
