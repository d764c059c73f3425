// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/progress_line.h"

#include <algorithm>
#include <chrono>

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kInterval = std::chrono::milliseconds(200);
/// Less than this says nothing about the rate.
constexpr double kLeastSeconds = 1.0;

/// 1234567 as "1,234,567", in every locale.
std::string grouped(std::int64_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t place = digits.size(); place > 3; place -= 3) {
        digits.insert(place - 3, ",");
    }
    return digits;
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

/// "2:31" or "1:02:31".
std::string duration(double seconds) {
    const auto total = static_cast<std::int64_t>(seconds);
    const std::int64_t hours = total / 3600;
    const std::int64_t minutes = total / 60 % 60;
    return (hours > 0 ? std::to_string(hours) + ":" + twoDigits(minutes)
                      : std::to_string(minutes)) +
           ":" + twoDigits(total % 60);
}

/// Of this patient's files, 0 to 1.
double fractionRead(const ProgressState& state) {
    if (state.bytesTotal == 0) {
        return 0.0;
    }
    return std::min(1.0,
                    static_cast<double>(state.bytesTaken) / static_cast<double>(state.bytesTotal));
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

} // namespace

std::string progressText(const ProgressState& state) {
    const double fraction = fractionRead(state);
    std::string text;
    if (state.patientCount > 1) {
        text = "patient " + std::to_string(state.position) + " of " +
               std::to_string(state.patientCount) + "  ";
    }
    text += std::to_string(static_cast<int>(fraction * 100.0)) + "%  " + grouped(state.pairs) +
            " pairs";
    if (state.patientSeconds >= kLeastSeconds) {
        const auto rate = static_cast<double>(state.pairs) / state.patientSeconds;
        text += "  " + grouped(static_cast<std::int64_t>(rate)) + " pairs/s";
    }
    const double patientsDone =
        (state.position > 0 ? static_cast<double>(state.position - 1) : 0.0) + fraction;
    if (state.runSeconds >= kLeastSeconds && patientsDone > 0.0) {
        const double patientsLeft = static_cast<double>(state.patientCount) - patientsDone;
        text += "  " + duration(state.runSeconds * patientsLeft / patientsDone) + " left";
    }
    return text;
}

ProgressLine::ProgressLine(Console& console, const matching::ReadingProgress& reading,
                           const PatientPosition& patient)
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
    const auto runStart = Clock::now();
    auto patientStart = runStart;
    ProgressState state;
    // The figures of the patient before stand until the next one's files are opened.
    std::int64_t pairsBefore = 0;
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, kInterval, [this] { return m_ended; })) {
        const std::size_t position = m_patient.position;
        if (position != state.position) {
            patientStart = Clock::now();
            state.position = position;
            pairsBefore = m_reading.pairs;
        }
        if (position == 0) {
            continue;
        }
        state.patientCount = m_patient.count;
        const std::int64_t pairs = m_reading.pairs;
        const bool opened = pairs != pairsBefore;
        pairsBefore = opened ? -1 : pairsBefore;
        state.bytesTaken = opened ? m_reading.bytesTaken.load() : 0;
        state.bytesTotal = m_reading.bytesTotal;
        state.pairs = opened ? pairs : 0;
        state.patientSeconds = secondsSince(patientStart);
        state.runSeconds = secondsSince(runStart);
        m_console.showProgress(progressText(state));
    }
}

} // namespace cli
