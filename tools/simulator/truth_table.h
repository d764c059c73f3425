// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "simulator/panel_table.h"
#include "simulator/sample_run.h"

namespace simulator {

/// The truth table's text: a head line, then for each sample one line for its files, one for every
/// entry of the catalogue, and one for each domain whose rows the panel table foretells. Columns:
///
///   sample number domain mutation pairs intact call
///
/// "pairs" were made, "intact" of them show their core without an error, and "call" is what the
/// panel table says the report shows ("-": nothing said). The line of the files has the domain
/// "total" and counts every pair, background included.
std::string truthTable(const std::vector<Sample>& samples, const std::vector<SampleTruth>& truths);

} // namespace simulator
