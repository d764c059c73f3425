// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace run {

struct Warning;

/// The fields that a run writes: the names of its two files and its three counters.
enum class RunField { file1, file2, totalNumberOfReads, readsMapped, readsFailedToBeMapped };

/// Where a run shows its fields, its errors and its warnings.
///
/// Called from the run's thread and from workers. An implementation brings each call to the main
/// thread, in order; it may leave out a counter's text when a later one follows.
class RunDisplay {
public:
    virtual ~RunDisplay() = default;
    virtual void showText(RunField field, const std::string& text) = 0;
    /// One finished line for the error log, its line feed included.
    virtual void displayError(const std::string& line) = 0;
    /// What makes the result doubtful and does not fail the run.
    virtual void displayWarning(const Warning& warning) = 0;
};

/// How far a run is, for a progress bar that looks whenever it likes. Safe from any thread.
struct ReadingProgress {
    std::atomic<std::uint64_t> bytesTotal{0};
    std::atomic<std::uint64_t> bytesTaken{0};
    /// Pairs read so far. Those with an empty sequence are among them, which no counter counts.
    std::atomic<std::int64_t> pairs{0};
};

} // namespace run
