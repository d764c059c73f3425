// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "cli/console.h"
#include "document/document_window.h"
#include "run/summary_for_each_patient.h"

namespace cli {

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

/// The window of a document on a terminal: alerts and the error log are lines on standard error,
/// every patient is selected, and tables show nothing until the end.
class ConsoleWindow : public document::DocumentWindow,
                      public document::RunObserver,
                      public document::Alerts {
public:
    /// `onEnd` is called when an analysis is over.
    ConsoleWindow(Console& console, std::function<void()> onEnd);

    /// The patients that the window would list. REQUIRES: set before a command asks for them.
    void setPatients(const run::PatientList& patients) { m_patients = &patients; }
    /// How the analysis ended; nullopt while it runs.
    const std::optional<document::AnalysisOutcome>& outcome() const { return m_outcome; }
    const RunningPatient& runningPatient() const { return m_patient; }
    /// The result document offered last; nullopt when none was.
    std::optional<std::string> takeOffered() { return std::exchange(m_offered, std::nullopt); }

    void reloadPatientsTable() override {}
    void reloadResultTables() override {}
    void selectPatientRow(std::int64_t) override {}
    std::vector<std::int64_t> selectedPatientRows() const override;

    void setAnalyzeButtonEnabled(bool enabled) override { m_analyzeButtonEnabled = enabled; }
    bool analyzeButtonEnabled() const override { return m_analyzeButtonEnabled; }
    void setAnalyzeAllButtonEnabled(bool) override {}
    void setIndicator(bool) override {}

    void updateWindowFromSummaryForEachPatient(const run::SummaryForEachPatient&) override {}
    void setText(run::RunField, const std::string&) override {}

    void appendToErrorLog(const std::string& text) override;
    void bringErrorLogForward() override {}
    /// Keeps the bytes for the output that --save names.
    void offerToSave(const std::string& bytes, std::string_view extension) override;
    void showWarning(const std::string& text) override;
    /// Says the first one of an analysis at once, and the last one at its end: those between grow
    /// with every patient of a batch.
    void showCatalogueNotice(const std::string& text) override;

    void patientStarts(std::size_t position, std::size_t count) override;
    void preparing(const document::Preparation& preparation) override;
    void prepared() override;
    void analysisEnded(const document::AnalysisOutcome& outcome) override;

    void showAlert(const std::string& message, const std::string& informativeText) override;

private:
    void sayCatalogueNotice();

    Console& m_console;
    std::function<void()> m_onEnd;
    const run::PatientList* m_patients = nullptr;
    std::optional<document::AnalysisOutcome> m_outcome;
    RunningPatient m_patient;
    std::optional<std::string> m_offered;
    std::string m_catalogueNotice;
    std::string m_saidCatalogueNotice;
    bool m_analyzeButtonEnabled = true;
};

} // namespace cli
