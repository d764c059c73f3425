// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/console_window.h"

#include <numeric>
#include <utility>

namespace cli {

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

ConsoleWindow::ConsoleWindow(Console& console, std::function<void()> onEnd)
    : m_console(console), m_onEnd(std::move(onEnd)) {}

std::vector<std::int64_t> ConsoleWindow::selectedPatientRows() const {
    std::vector<std::int64_t> rows(archive::orEmpty(*m_patients).size());
    std::iota(rows.begin(), rows.end(), std::int64_t{0});
    return rows;
}

void ConsoleWindow::appendToErrorLog(const std::string& text) {
    m_console.log(text);
}

void ConsoleWindow::offerToSave(const std::string& bytes, std::string_view /*extension*/) {
    m_offered = bytes;
}

void ConsoleWindow::showWarning(const std::string& text) {
    m_console.warning(text);
}

void ConsoleWindow::showCatalogueNotice(const std::string& text) {
    const bool first = m_catalogueNotice.empty();
    m_catalogueNotice = text;
    if (first) {
        sayCatalogueNotice();
    }
}

void ConsoleWindow::sayCatalogueNotice() {
    if (!m_catalogueNotice.empty() && m_catalogueNotice != m_saidCatalogueNotice) {
        m_saidCatalogueNotice = m_catalogueNotice;
        m_console.warning(m_catalogueNotice);
    }
}

void ConsoleWindow::patientStarts(std::size_t position, std::size_t count) {
    m_patient.starts(position, count);
}

void ConsoleWindow::preparing(const document::Preparation& preparation) {
    m_patient.setPreparation(preparation);
}

void ConsoleWindow::prepared() {
    m_patient.setPreparation(std::nullopt);
}

void ConsoleWindow::analysisEnded(const document::AnalysisOutcome& outcome) {
    sayCatalogueNotice();
    m_outcome = outcome;
    m_onEnd();
}

void ConsoleWindow::showAlert(const std::string& message, const std::string& informativeText) {
    m_console.error(message);
    if (!informativeText.empty()) {
        m_console.error(informativeText);
    }
}

} // namespace cli
