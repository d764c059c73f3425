// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "run/run_display.h"

namespace document {

/// What an analysis has done up to one moment.
struct AnalysisProgress {
    std::size_t position = 0;     ///< patient that runs, from 1; 0 before the first
    std::size_t patientCount = 0; ///< patients of the run
    std::uint64_t bytesTaken = 0; ///< of this patient's files
    std::uint64_t bytesTotal = 0; ///< 0 while it is not known
    std::int64_t pairs = 0;       ///< of this patient
    double readingSeconds = 0.0;  ///< since this patient's files were opened
    double patientSeconds = 0.0;  ///< since this patient started: preparation and reading
    double runSeconds = 0.0;      ///< since the first patient started
};

/// How much of this patient's files was read, 0 to 1; nullopt while their size is not known.
std::optional<double> fractionOfPatient(const AnalysisProgress& progress);

/// How much of the run is done, 0 to 1, each patient counting alike; nullopt while nothing tells:
/// before the first patient's files are opened.
std::optional<double> fractionOfRun(const AnalysisProgress& progress);

/// Nullopt in this patient's first second of reading, which says nothing about the rate.
std::optional<double> pairsPerSecond(const AnalysisProgress& progress);

/// Time to the end of the run, never negative: every patient to come is taken to last as long as
/// those before, or as the first one seems to. Nullopt before `leastSeconds` of the run, and as
/// long as there is neither a finished patient nor `leastSeconds` of reading.
std::optional<double> secondsLeft(const AnalysisProgress& progress, double leastSeconds);

/// Makes an AnalysisProgress of a run's counters at each look. For one run and one thread.
class ProgressMeter {
public:
    using Clock = std::chrono::steady_clock;

    /// `reading` outlives the meter.
    explicit ProgressMeter(const run::ReadingProgress& reading) : m_reading(reading) {}

    /// The progress at `now`, a moment not before that of the last look, when patient `position`
    /// of `patientCount` runs. A patient, and the run, starts when it is seen first.
    AnalysisProgress look(std::size_t position, std::size_t patientCount, Clock::time_point now);

private:
    /// The counters at one moment.
    struct Counters {
        std::uint64_t bytesTotal = 0;
        std::uint64_t bytesTaken = 0;
        std::int64_t pairs = 0;
        bool operator==(const Counters&) const = default;
    };
    Counters counters() const;
    void startPatient(std::size_t position, Clock::time_point now);

    const run::ReadingProgress& m_reading;
    std::size_t m_position = 0;
    Clock::time_point m_runStart;
    Clock::time_point m_patientStart;
    /// Nullopt until this patient's files are opened.
    std::optional<Clock::time_point> m_readingStart;
    /// The counters of the patient before stand until this one's files are opened.
    Counters m_atPatientStart;
};

} // namespace document
