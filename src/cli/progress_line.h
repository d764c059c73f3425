// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

#include "cli/console.h"
#include "cli/console_window.h"
#include "matching/pair_matching.h"

namespace cli {

/// What a line of progress says.
struct ProgressState {
    std::size_t position = 0;     ///< patient that runs, from 1; 0 before the first
    std::size_t patientCount = 0; ///< patients of the run
    std::uint64_t bytesTaken = 0; ///< of this patient's files
    std::uint64_t bytesTotal = 0;
    std::int64_t pairs = 0;      ///< of this patient
    double patientSeconds = 0.0; ///< since this patient started
    double runSeconds = 0.0;     ///< since the first patient started
};

/// "patient 3 of 12  41%  1,234,000 pairs  850,000 pairs/s  2:31 left". Rate and remaining time
/// stand once there is something to tell them from; the remaining time is that of the whole run,
/// as if every patient were as large as those before.
std::string progressText(const ProgressState& state);

/// Shows the progress of a run about five times a second, from its making to its end.
class ProgressLine {
public:
    /// The arguments outlive the line. REQUIRES: standard error is a terminal.
    ProgressLine(Console& console, const matching::ReadingProgress& reading,
                 const PatientPosition& patient);
    /// Erases the line.
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

private:
    void show();

    Console& m_console;
    const matching::ReadingProgress& m_reading;
    const PatientPosition& m_patient;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace cli
