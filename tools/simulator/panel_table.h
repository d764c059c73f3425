// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/result.h"

namespace simulator {

/// One line of the panel table: what a sample carries, or what the report has to say.
struct PanelLine {
    /// The domain's name, or "background" for pairs that belong to nothing.
    std::string domain;
    /// The mutation's name; "*" for the domain's rows in the report; "-" with "background".
    std::string mutation;
    /// Read pairs to make.
    std::uint64_t pairs = 0;
    /// The call that the patient's report has to show; "-" where nothing is said. Not used for
    /// making reads, only handed on to the truth table.
    std::string call;
};

struct Sample {
    std::string name;
    /// The number after "_S" in the file names, from 1.
    std::uint64_t number = 0;
    bool gzip = false;
    std::vector<PanelLine> lines;
};

/// Reads a panel table: tab-separated with the head line
/// "sample number format domain mutation pairs call", where format is "plain" or "gz" and pairs is
/// a whole number, or a percentage of `depth` such as "12.5%". Lines that begin with # and empty
/// lines are skipped. The lines of a sample stand together. A message names the line.
platform::Result<std::vector<Sample>>
parsePanelTable(const std::string& text, const std::string& fileName, std::uint64_t depth);

} // namespace simulator
