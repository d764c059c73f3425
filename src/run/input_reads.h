// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "platform/file_identity.h"
#include "platform/program_end.h"

namespace run {

/// A patient's inputs as plain-text working copies beside them, which the run removes at its end.
struct WorkingCopies {
    std::string read1Path;
    std::string read2Path;
    /// Something that could not be replaced stands under a copy's name. It may be another run's
    /// copy, so the run fails without reading it.
    bool obstructed = false;
    /// The very files that were made, of no file where a copy could not be made: the run reads
    /// nothing else that somebody put under their names since. nullopt: whatever stands there.
    std::optional<platform::FileIdentity> read1File = std::nullopt;
    std::optional<platform::FileIdentity> read2File = std::nullopt;
    /// The copies, and what the run makes beside them, until the run is over. Null: not noted.
    std::shared_ptr<platform::UnfinishedFiles> unfinished = nullptr;
};

/// A patient's inputs, plain or .gz, read where they lie. There is no way from here to the removal
/// of a file: only WorkingCopies can be cleaned up.
struct DirectReads {
    std::string read1Path;
    std::string read2Path;
    /// Where to write pairs that nothing claimed; nullopt: nowhere.
    std::optional<std::string> unassignedPath;
};

/// What a run reads.
using InputReads = std::variant<std::monostate, WorkingCopies, DirectReads>;

} // namespace run
