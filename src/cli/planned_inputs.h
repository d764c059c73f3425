// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "document/analysis_plan.h"

namespace cli {

/// Whether the arguments name inputs in another way than the one that the window has: then the two
/// functions below say what is to run.
bool planNeeded(const Arguments& arguments);

/// The one patient of analyze: that of --r1 and --r2, or of the input with every lane.
document::Planned planPatient(const Arguments& arguments);

/// The patients of analyze-all: those of the sample sheet, or of the input directory by the rules
/// that the options choose.
document::Planned planPatients(const Arguments& arguments);

/// Lines that name the files where reads of two people may be mixed up; empty: nowhere.
std::vector<std::string> sharedNumbers(const std::vector<std::string>& names,
                                       const std::vector<document::PatientSlot>& batch);

/// A line for each sample of which a directory holds one file only: the file, and the names that
/// were looked for.
std::vector<std::string> unpairedFiles(const std::string& directory,
                                       const std::vector<document::PatientSlot>& batch);

} // namespace cli
