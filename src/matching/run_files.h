// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "matching/pair_matching.h"
#include "matching/read_source.h"
#include "platform/files.h"

namespace matching {

/// The files of a run.
struct RunFiles {
    std::unique_ptr<ReadSource> read1;
    std::unique_ptr<ReadSource> read2;
    std::optional<platform::FreshFile> failedReads;
};

/// Why a run cannot begin: the line for the error log, and under it the system's reasons, which
/// that line has no place for. Each with its line feed.
struct OpeningFailure {
    std::string line;
    std::vector<std::string> reasons;
};

/// Opens all three before looking at any: the failed-reads file is made even if a read file is
/// missing. Returns nullopt when all are open. Deliberate: there is no message numbered 2.
std::optional<OpeningFailure> openFiles(const PairedReads& reads, RunFiles& files);

} // namespace matching
