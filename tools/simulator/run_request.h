// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "platform/result.h"
#include "simulator/fragments.h"

namespace simulator {

/// A whole run of made-up patients.
struct RunRequest {
    std::string panelPath;
    /// An existing directory for the FASTQ pairs.
    std::string directory;
    /// A definition file; empty: the shipped one.
    std::string cataloguePath;
    /// Empty: "truth.tsv" in the directory.
    std::string truthPath;
    std::uint64_t seed = 1;
    /// Pairs that a percentage in the panel table refers to.
    std::uint64_t depth = 1000;
    Chemistry chemistry;
};

/// Writes the FASTQ pairs of every sample in the panel table, then the truth table. The same
/// request gives the same reads on every machine. The table is read and checked before the first
/// file is written.
platform::Status makeRun(const RunRequest& request);

} // namespace simulator
