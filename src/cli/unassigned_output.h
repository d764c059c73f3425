// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "cli/outputs.h"
#include "platform/program_end.h"
#include "platform/result.h"

namespace cli {

/// The output of read pairs that no mutation claimed. A run may write gigabytes of them, so it
/// writes them to a file in a directory that only the user can enter. Once the run has succeeded,
/// the file goes to its place as one of the run's outputs. Nothing else is left behind.
class UnassignedOutput {
public:
    /// `target` is a path or "-".
    static platform::Result<std::unique_ptr<UnassignedOutput>> create(const std::string& target);
    ~UnassignedOutput();
    UnassignedOutput(const UnassignedOutput&) = delete;
    UnassignedOutput& operator=(const UnassignedOutput&) = delete;

    /// What a run writes.
    const std::string& temporaryPath() const { return m_temporaryPath; }
    /// Moves the file to its place, or copies it to standard output, a pipe or a device. It refers
    /// to this object.
    Output output() const;

private:
    UnassignedOutput(std::string target, std::string directory);
    void discard() const noexcept;

    const std::string m_target;
    const std::string m_directory;
    const std::string m_temporaryPath;
    platform::UnfinishedFiles m_unfinished;
};

} // namespace cli
