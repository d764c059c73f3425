// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "cli/console.h"
#include "document/analysis_progress.h"
#include "document/document_window.h"
#include "run/run_display.h"

namespace cli {

/// "patient 3 of 12  41%  1,234,000 pairs  850,000 pairs/s  2:31 left". Rate and remaining time
/// appear once there is something to tell them from.
std::string progressText(const document::AnalysisProgress& progress);

/// "patient 3 of 12  preparing x_S3_L001_R1_001.fastq.gz  1,234 MB" while a working copy is made;
/// without the size of the copy where nothing shows it.
std::string preparationText(const document::AnalysisProgress& progress,
                            const document::Preparation& preparation,
                            std::optional<std::uint64_t> copyBytes);

/// Which patient of how many is running, and which copy is being made for it. Safe from any thread.
class RunningPatient {
public:
    struct State {
        std::size_t position = 0; ///< from 1; 0 before the first
        std::size_t count = 0;
        std::optional<document::Preparation> preparation; ///< nullopt while none goes on
    };

    void starts(std::size_t position, std::size_t count);
    void setPreparation(std::optional<document::Preparation> preparation);
    State state() const;

private:
    mutable std::mutex m_mutex;
    State m_state;
};

/// Shows the progress of a run about five times a second, from its making to its end.
class ProgressLine {
public:
    /// The arguments outlive the line. REQUIRES: standard error is a terminal.
    ProgressLine(Console& console, const run::ReadingProgress& reading,
                 const RunningPatient& patient);
    /// Erases the line.
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

private:
    void show();

    Console& m_console;
    const run::ReadingProgress& m_reading;
    const RunningPatient& m_patient;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace cli
