// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "reads/read_source.h"
#include "run/pair_matching.h"

namespace run {

/// The files of a run.
struct RunFiles {
    std::unique_ptr<reads::ReadSource> read1;
    std::unique_ptr<reads::ReadSource> read2;
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

} // namespace run
