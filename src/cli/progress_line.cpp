// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One line of progress at a terminal. A thread of its own looks at the run's counters five times a
// second: the run is not slowed by being watched, and the line moves on while the main thread
// waits. The texts are plain functions of an AnalysisProgress. Tested by progress_line_test.cpp and
// terminal_program_test.cpp.
#include "cli/progress_line.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/files.h"

namespace cli {
namespace {

using document::AnalysisProgress;
using document::ProgressMeter;

constexpr auto kInterval = std::chrono::milliseconds(200);
/// Less than this says nothing about the time left.
constexpr double kLeastSeconds = 1.0;
/// A stalled disk can make the time left grow without bound; from here on it stands.
constexpr double kMostSecondsShown = 1000.0 * 3600.0 - 1.0;
constexpr std::uint64_t kMegabyte = 1'000'000;

/// 1234567 as "1,234,567", in every locale.
std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3) {
        digits.insert(place - 3, ",");
    }
    return digits;
}

std::string twoDigits(std::int64_t number) {
    return std::string(number < 10 ? "0" : "").append(std::to_string(number));
}

/// "2:31" or "1:02:31".
std::string duration(double seconds) {
    const auto total = static_cast<std::int64_t>(std::min(seconds, kMostSecondsShown));
    const std::int64_t hours = total / 3600;
    const std::int64_t minutes = total / 60 % 60;
    return (hours > 0 ? std::to_string(hours) + ":" + twoDigits(minutes)
                      : std::to_string(minutes)) +
           ":" + twoDigits(total % 60);
}

/// "patient 3 of 12  "; nothing where there is only one.
std::string patientText(const AnalysisProgress& progress) {
    if (progress.patientCount <= 1) {
        return {};
    }
    return "patient " + std::to_string(progress.position) + " of " +
           std::to_string(progress.patientCount) + "  ";
}

std::optional<std::uint64_t> sizeOf(const std::string& path) {
    const auto size = platform::regularFileSize(path);
    return size ? std::optional(size.value()) : std::nullopt;
}

} // namespace

std::string progressText(const AnalysisProgress& progress) {
    const double fraction = document::fractionOfPatient(progress).value_or(0.0);
    std::string text = patientText(progress) + std::to_string(static_cast<int>(fraction * 100.0)) +
                       "%  " + grouped(progress.pairs) + " pairs";
    if (const auto rate = document::pairsPerSecond(progress)) {
        text += "  " + grouped(static_cast<std::int64_t>(*rate)) + " pairs/s";
    }
    if (const auto seconds = document::secondsLeft(progress, kLeastSeconds)) {
        text += "  " + duration(*seconds) + " left";
    }
    return text;
}

std::string preparationText(const AnalysisProgress& progress,
                            const document::Preparation& preparation,
                            std::optional<std::uint64_t> copyBytes) {
    std::string text = patientText(progress) + "preparing " + preparation.name;
    if (copyBytes) {
        text += "  " + grouped(static_cast<std::int64_t>(*copyBytes / kMegabyte)) + " MB";
    }
    return text;
}

void RunningPatient::starts(std::size_t position, std::size_t count) {
    const std::lock_guard lock(m_mutex);
    m_state.position = position;
    m_state.count = count;
}

void RunningPatient::setPreparation(std::optional<document::Preparation> preparation) {
    const std::lock_guard lock(m_mutex);
    m_state.preparation = std::move(preparation);
}

RunningPatient::State RunningPatient::state() const {
    const std::lock_guard lock(m_mutex);
    return m_state;
}

ProgressLine::ProgressLine(Console& console, const run::ReadingProgress& reading,
                           const RunningPatient& patient)
    : m_console(console), m_reading(reading), m_patient(patient), m_thread([this] { show(); }) {}

ProgressLine::~ProgressLine() {
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_wake.notify_one();
    m_thread.join();
    m_console.eraseProgress();
}

void ProgressLine::show() {
    ProgressMeter meter(m_reading);
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, kInterval, [this] { return m_ended; })) {
        const RunningPatient::State patient = m_patient.state();
        const AnalysisProgress progress =
            meter.look(patient.position, patient.count, ProgressMeter::Clock::now());
        if (patient.position == 0) {
            continue;
        }
        m_console.showProgress(patient.preparation
                                   ? preparationText(progress, *patient.preparation,
                                                     sizeOf(patient.preparation->copyPath))
                                   : progressText(progress));
    }
}

} // namespace cli
