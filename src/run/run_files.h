// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/file_identity.h"
#include "platform/files.h"
#include "platform/program_end.h"
#include "platform/result.h"
#include "reads/read_source.h"

namespace run {

/// The two files of one lane of a patient, by their paths.
struct LaneFiles {
    std::string read1Path;
    std::string read2Path;

    bool operator==(const LaneFiles&) const = default;
};

/// The files that a run reads, and the one that it may write, by their paths.
struct PairedReads {
    std::string read1Path;
    std::string read2Path;
    reads::ReadsEncoding encoding = reads::ReadsEncoding::plain;
    /// The file for pairs that nothing claimed. It is made anew: the run never writes through what
    /// stands there. nullopt: no such file.
    std::optional<std::string> failedReadsPath;
    /// The files that must stand under the two paths; nullopt: whatever stands there.
    std::optional<platform::FileIdentity> read1File = std::nullopt;
    std::optional<platform::FileIdentity> read2File = std::nullopt;
    /// Notes the file of failed reads once it is made; null: nobody does.
    platform::UnfinishedFiles* unfinished = nullptr;
    /// Further lanes of the patient, read behind the first one as if their files had been put
    /// together.
    std::vector<LaneFiles> furtherLanes = {};
};

/// Every read-1 path, in the order of reading; the same for read 2.
std::vector<std::string> read1PathsOf(const PairedReads& reads);
std::vector<std::string> read2PathsOf(const PairedReads& reads);

/// The same files, open.
struct RunFiles {
    std::unique_ptr<reads::ReadSource> read1;
    std::unique_ptr<reads::ReadSource> read2;
    std::optional<platform::FreshFile> failedReads;
};

/// The failed-reads path that belongs to a read-1 path: the part before the first "_R1_", with
/// ".failedToBeAssignedReads".
std::string failedReadsPathFor(const std::string& read1Path);

/// Opens the reads of one side alone, those of all lanes as one source. The error names the file.
platform::Result<std::unique_ptr<reads::ReadSource>> openRead1(const PairedReads& reads);
platform::Result<std::unique_ptr<reads::ReadSource>> openRead2(const PairedReads& reads);

/// Opens all three before looking at any: the failed-reads file is made even if a read file is
/// missing. An error is one line for the first file that is not open, and under it a line with the
/// system's reason for each. With several lanes the first names the first lane's file, the second
/// the one that is not open. Deliberate: there is no message numbered 2.
platform::Result<RunFiles> openFiles(const PairedReads& reads);

} // namespace run
