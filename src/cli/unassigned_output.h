// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <string>

#include "platform/result.h"

namespace cli {

/// The output of read pairs that no mutation claimed. A run may write gigabytes of them, so they go
/// to a file under another name while it lasts, and to their place when it has succeeded. Without
/// deliver() nothing is left behind.
class UnassignedOutput {
public:
    /// `target` is a path or "-".
    static platform::Result<UnassignedOutput> create(const std::string& target);
    UnassignedOutput(UnassignedOutput&& other) noexcept;
    UnassignedOutput& operator=(UnassignedOutput&&) = delete;
    ~UnassignedOutput();

    /// What a run writes.
    const std::string& temporaryPath() const { return m_temporaryPath; }
    /// Moves the file to its place, or copies it to standard output, a pipe or a device.
    platform::Status deliver(std::ostream& out);
    /// For a program that ends at once. From any thread.
    void discard() const noexcept;

private:
    UnassignedOutput(std::string target, std::string temporaryPath);

    std::string m_target;
    std::string m_temporaryPath;
};

} // namespace cli
