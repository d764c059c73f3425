// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "document/analysis_plan.h"

namespace document {

/// One line of a sample sheet: a lane of a sample.
struct SampleSheetRow {
    std::size_t line = 0; ///< counted from 1
    std::string sample;
    std::string number;
    std::string read1; ///< as it stands in the sheet
    std::string read2;
};

/// What is wrong with a line.
struct SampleSheetFault {
    std::size_t line = 0; ///< 0: with the whole
    std::string text;
};

struct SampleSheet {
    /// Lines without fault, in their order.
    std::vector<SampleSheetRow> rows;
    /// In the order of the lines.
    std::vector<SampleSheetFault> faults;
};

/// Reads a sample sheet: a table whose columns are separated by tabs, under a head line that names
/// them. "sample", "number", "r1" and "r2" must be there, in any order; other columns are ignored.
/// So are blank lines and those that begin with "#". Lines may end with CR LF, and a byte order
/// mark of UTF-8 may stand in front. Touches no file.
SampleSheet parseSampleSheet(std::string_view text);

/// The plan of a sample sheet: its samples in the order of their first lines, with several lines of
/// a sample as its lanes, in the order of the lines. Relative paths start from `directory`, which
/// is the sheet's own where none is given. Faults are "PATH:LINE: text", one for each thing that is
/// wrong, by rising line.
Planned planOfSampleSheet(const std::string& path, const std::optional<std::string>& directory);

} // namespace document
