// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/console.h"
#include "cli/progress_line.h"
#include "document/document_window.h"

namespace cli {

/// What a document's runs say on a terminal: the error log and alerts are lines on standard error.
/// Fields show nothing here, since a line of progress tells more.
class ConsoleObserver : public document::RunObserver, public document::Alerts {
public:
    /// `onEnd` is called when an analysis is over.
    ConsoleObserver(Console& console, std::function<void()> onEnd);

    /// How the analysis ended; nullopt while it runs.
    const std::optional<document::AnalysisOutcome>& outcome() const { return m_outcome; }
    const RunningPatient& runningPatient() const { return m_patient; }

    void patientStarts(std::size_t position, std::size_t count) override;
    void preparing(const document::Preparation& preparation) override;
    void prepared() override;
    void setText(run::RunField, const std::string&) override {}
    void appendToErrorLog(const std::string& text) override;
    void showWarning(const run::Warning& warning, const document::PatientAccount* patient) override;
    /// Says the first one of an analysis at once, and the last one at its end: those between grow
    /// with every patient of a batch.
    void showCatalogueNotice(const std::string& text) override;
    void analysisEnded(const document::AnalysisOutcome& outcome) override;

    void showAlert(const std::string& message, const std::string& informativeText) override;

private:
    void sayCatalogueNotice();

    Console& m_console;
    std::function<void()> m_onEnd;
    std::optional<document::AnalysisOutcome> m_outcome;
    RunningPatient m_patient;
    std::string m_catalogueNotice;
    std::string m_saidCatalogueNotice;
};

} // namespace cli
