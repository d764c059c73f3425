// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A document's runs as lines on standard error. All calls come on the thread that serves as the
// main thread, in the order of events. The thread of the progress line reads the running patient,
// which has a lock of its own.
//
// A batch whose catalogue cannot be read sends its notice anew after every such patient, each time
// for more of them. So only the first and the last are said. Tested by console_observer_test.cpp.
#include "cli/console_observer.h"

#include <utility>

#include "run/run_account.h"

namespace cli {

ConsoleObserver::ConsoleObserver(Console& console, std::function<void()> onEnd)
    : m_console(console), m_onEnd(std::move(onEnd)) {}

void ConsoleObserver::patientStarts(std::size_t position, std::size_t count) {
    m_patient.starts(position, count);
}

void ConsoleObserver::preparing(const document::Preparation& preparation) {
    m_patient.setPreparation(preparation);
}

void ConsoleObserver::prepared() {
    m_patient.setPreparation(std::nullopt);
}

void ConsoleObserver::appendToErrorLog(const std::string& text) {
    m_console.log(text);
}

void ConsoleObserver::showWarning(const run::Warning& warning, const document::PatientAccount*) {
    m_console.warning(run::logLine(warning));
}

void ConsoleObserver::showCatalogueNotice(const std::string& text) {
    const bool first = m_catalogueNotice.empty();
    m_catalogueNotice = text;
    if (first) {
        sayCatalogueNotice();
    }
}

void ConsoleObserver::sayCatalogueNotice() {
    if (!m_catalogueNotice.empty() && m_catalogueNotice != m_saidCatalogueNotice) {
        m_saidCatalogueNotice = m_catalogueNotice;
        m_console.warning(m_catalogueNotice);
    }
}

void ConsoleObserver::analysisEnded(const document::AnalysisOutcome& outcome) {
    sayCatalogueNotice();
    m_outcome = outcome;
    m_onEnd();
}

void ConsoleObserver::showAlert(const std::string& message, const std::string& informativeText) {
    m_console.error(message);
    if (!informativeText.empty()) {
        m_console.error(informativeText);
    }
}

} // namespace cli
