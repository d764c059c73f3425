// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Rate and time left of a run, from counters that somebody looks at now and then.
//
// The time of a patient is preparing plus reading, and reading is taken to go on at the rate so
// far: the share of the files' bytes that is read tells how long the whole takes. Patients to come
// are taken to last as long as the mean of the finished ones, or as the first one seems to. Both
// are estimates of the plainest kind; they are right where patients are alike, as those of one
// sequencer run are.
//
// Tested by analysis_progress_test.cpp.
#include "document/analysis_progress.h"

#include <algorithm>

namespace document {
namespace {

constexpr double kLeastSecondsForARate = 1.0;

double secondsBetween(ProgressMeter::Clock::time_point start,
                      ProgressMeter::Clock::time_point now) {
    return std::chrono::duration<double>(now - start).count();
}

/// What this patient's reading takes in all, told from what it took so far.
std::optional<double> readingSecondsInAll(const AnalysisProgress& progress, double leastSeconds) {
    const double fraction = fractionOfPatient(progress).value_or(0.0);
    if (fraction <= 0.0 || progress.readingSeconds < leastSeconds) {
        return std::nullopt;
    }
    return progress.readingSeconds / fraction;
}

/// The mean of the patients that are done.
std::optional<double> secondsPerFinishedPatient(const AnalysisProgress& progress) {
    if (progress.position < 2) {
        return std::nullopt;
    }
    return (progress.runSeconds - progress.patientSeconds) /
           static_cast<double>(progress.position - 1);
}

} // namespace

std::optional<double> fractionOfPatient(const AnalysisProgress& progress) {
    if (progress.bytesTotal == 0) {
        return std::nullopt;
    }
    // A file may grow while it is read.
    return std::min(1.0, static_cast<double>(progress.bytesTaken) /
                             static_cast<double>(progress.bytesTotal));
}

std::optional<double> fractionOfRun(const AnalysisProgress& progress) {
    const std::optional<double> ofPatient = fractionOfPatient(progress);
    const bool told = ofPatient || progress.position > 1;
    if (!told || progress.position == 0 || progress.position > progress.patientCount) {
        return std::nullopt;
    }
    return (static_cast<double>(progress.position - 1) + ofPatient.value_or(0.0)) /
           static_cast<double>(progress.patientCount);
}

std::optional<double> pairsPerSecond(const AnalysisProgress& progress) {
    if (progress.readingSeconds < kLeastSecondsForARate) {
        return std::nullopt;
    }
    return static_cast<double>(progress.pairs) / progress.readingSeconds;
}

std::optional<double> secondsLeft(const AnalysisProgress& progress, double leastSeconds) {
    if (progress.position == 0 || progress.position > progress.patientCount ||
        progress.runSeconds < leastSeconds) {
        return std::nullopt;
    }
    const std::optional<double> reading = readingSecondsInAll(progress, leastSeconds);
    const std::optional<double> finished = secondsPerFinishedPatient(progress);
    if (!reading && !finished) {
        return std::nullopt;
    }
    const double preparing = progress.patientSeconds - progress.readingSeconds;
    const double thisPatient = reading ? preparing + *reading : *finished;
    const double perPatient = finished ? *finished : thisPatient;
    return std::max(0.0, thisPatient - progress.patientSeconds) +
           perPatient * static_cast<double>(progress.patientCount - progress.position);
}

ProgressMeter::Counters ProgressMeter::counters() const {
    // The total first: a run sets it after it set the others back, so that a new total never
    // meets the bytes of the patient before.
    Counters counters;
    counters.bytesTotal = m_reading.bytesTotal;
    counters.bytesTaken = m_reading.bytesTaken;
    counters.pairs = m_reading.pairs;
    return counters;
}

void ProgressMeter::startPatient(std::size_t position, Clock::time_point now) {
    if (m_position == 0) {
        m_runStart = now;
    }
    m_position = position;
    m_patientStart = now;
    m_readingStart.reset();
    m_atPatientStart = counters();
}

AnalysisProgress ProgressMeter::look(std::size_t position, std::size_t patientCount,
                                     Clock::time_point now) {
    AnalysisProgress progress;
    progress.position = position;
    progress.patientCount = patientCount;
    if (position == 0) {
        return progress;
    }
    if (position != m_position) {
        startPatient(position, now);
    }
    const Counters current = counters();
    if (!m_readingStart && current != m_atPatientStart) {
        m_readingStart = now;
    }
    if (m_readingStart) {
        progress.bytesTotal = current.bytesTotal;
        progress.bytesTaken = current.bytesTaken;
        progress.pairs = current.pairs;
        progress.readingSeconds = secondsBetween(*m_readingStart, now);
    }
    progress.patientSeconds = secondsBetween(m_patientStart, now);
    progress.runSeconds = secondsBetween(m_runStart, now);
    return progress;
}

} // namespace document
