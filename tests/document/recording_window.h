// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "document/analysis_account.h"
#include "document/document_window.h"
#include "platform/clipboard.h"
#include "platform/work_queues.h"

namespace document {

/// Keeps what a document tells its window and the observer of its runs, and stops the run loop at
/// the end of an analysis.
class RecordingWindow : public DocumentWindow, public RunObserver {
public:
    explicit RecordingWindow(platform::RunLoop& loop) : m_loop(loop) {}

    void reloadPatientsTable() override {
        events.emplace_back("patients");
        if (onReloadPatients) {
            onReloadPatients();
        }
    }
    void reloadResultTables() override { events.emplace_back("results"); }
    void selectPatientRow(std::int64_t row) override {
        events.push_back("select " + std::to_string(row));
    }
    std::vector<std::int64_t> selectedPatientRows() const override { return selection; }
    void setAnalyzeButtonEnabled(bool enabled) override { analyzeEnabled = enabled; }
    bool analyzeButtonEnabled() const override { return analyzeEnabled; }
    void setAnalyzeAllButtonEnabled(bool enabled) override { analyzeAllEnabled = enabled; }
    void setIndicator(bool isBusy) override {
        busy = isBusy;
        events.emplace_back(isBusy ? "busy" : "idle");
    }
    void updateWindowFromSummaryForEachPatient(const run::SummaryForEachPatient&) override {
        events.emplace_back("update");
    }
    void setText(run::RunField field, const std::string& text) override {
        texts.push_back(nameOf(field) + text);
    }
    void appendToErrorLog(const std::string& text) override {
        errorLog += text;
        events.emplace_back("error");
        if (onError) {
            onError();
        }
    }
    void bringErrorLogForward() override { ++broughtForward; }
    void offerToSave(const std::string& bytes, std::string_view extension) override {
        offered.push_back({bytes, std::string(extension)});
    }
    void showWarning(const run::Warning& warning, const PatientAccount* patient) override {
        warnings.push_back(run::logLine(warning));
        warnedPatients.push_back(patient ? patient->number : "");
        events.emplace_back("warning");
    }
    void showCatalogueNotice(const std::string& text) override { catalogueNotices.push_back(text); }
    void patientStarts(std::size_t position, std::size_t count) override {
        events.push_back("start " + std::to_string(position) + "/" + std::to_string(count));
    }
    void preparing(const Preparation& preparation) override {
        events.push_back("preparing " + preparation.name);
    }
    void prepared() override { events.emplace_back("prepared"); }
    void analysisEnded(const AnalysisOutcome& ended) override {
        events.emplace_back("ended");
        outcomes.push_back(ended);
        m_loop.stop();
    }

    static std::string nameOf(run::RunField field) {
        switch (field) {
        case run::RunField::file1:
            return "file1 ";
        case run::RunField::file2:
            return "file2 ";
        case run::RunField::totalNumberOfReads:
            return "total ";
        case run::RunField::readsMapped:
            return "mapped ";
        case run::RunField::readsFailedToBeMapped:
            return "failed ";
        }
        return "unknown ";
    }

    std::size_t countOf(const std::string& event) const {
        std::size_t count = 0;
        for (const std::string& other : events) {
            count += other == event ? 1U : 0U;
        }
        return count;
    }

    struct Offer {
        std::string bytes;
        std::string extension;
    };

    std::vector<Offer> offered;
    std::vector<std::string> events;
    std::vector<std::int64_t> selection;
    /// What setText() showed, in order.
    std::vector<std::string> texts;
    std::vector<std::string> catalogueNotices;
    std::function<void()> onReloadPatients;
    std::function<void()> onError;
    std::vector<AnalysisOutcome> outcomes;
    /// What showWarning() said, in order. A run that has nothing to warn of says nothing.
    std::vector<std::string> warnings;
    /// The patient number of each; empty for one of the whole batch.
    std::vector<std::string> warnedPatients;
    std::string errorLog;
    int broughtForward = 0;
    bool analyzeEnabled = true;
    bool analyzeAllEnabled = true;
    bool busy = false;

private:
    platform::RunLoop& m_loop;
};

class RecordingAlerts : public Alerts {
public:
    void showAlert(const std::string& message, const std::string& informativeText) override {
        shown.push_back(message + "|" + informativeText);
    }
    std::vector<std::string> shown;
};

class RecordingClipboard : public platform::Clipboard {
public:
    void setPlainText(const std::string& newText) override { text = newText; }
    std::string text;
};

} // namespace document
