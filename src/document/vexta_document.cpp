// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a document is besides its runs: opening, saving, exporting, the state of its commands, and
// its ways to the main thread.
//
// Everything that a run says on its own thread comes back through the main queue, so the error log
// and the tables show events in their order. What the main thread itself has to say is in the log
// at once: its lines would else stand behind those of the next patient, who runs meanwhile.
//
// Tested by document_state_test.cpp, result_document_test.cpp and error_log_order_test.cpp. The
// analyse commands are in analysis_commands.cpp.
#include "document/vexta_document.h"

#include <utility>

#include "document/result_document.h"
#include "document/text_exports.h"
#include "document/working_copies.h"
#include "platform/files.h"

namespace document {

using archive::stringOrEmpty;
using run::RunField;

VextaDocument::VextaDocument(const DocumentServices& services)
    : m_services(services), m_toMainThread(services.mainQueue,
                                           [this](RunField field, const std::string& text) {
                                               if (runObserver) {
                                                   runObserver->setText(field, text);
                                               }
                                           }),
      m_mainRoutine(
          std::make_unique<run::MainRoutine>(static_cast<run::RunDisplay&>(*this), services.run)),
      m_dispatchSerialQueueForAnalyzeAll(std::make_unique<platform::SerialQueue>()),
      m_dispatchSerialQueueForAnalyze(std::make_unique<platform::SerialQueue>()) {}

VextaDocument::~VextaDocument() {
    setCancelOperationFlag(true);
    // A running patient still calls this object and posts tasks, so the queues end first. Tasks of
    // the main queue cannot come between: this is their thread.
    m_dispatchSerialQueueForAnalyze.reset();
    m_dispatchSerialQueueForAnalyzeAll.reset();
}

// --- Ways to the main thread

void VextaDocument::tell(std::function<void(RunObserver&)> task) {
    m_toMainThread.async([this, task = std::move(task)] {
        if (runObserver) {
            task(*runObserver);
        }
    });
}

void VextaDocument::showText(RunField field, const std::string& text) {
    if (field == RunField::file1 || field == RunField::file2) {
        tell([field, text](RunObserver& observer) { observer.setText(field, text); });
    } else {
        m_toMainThread.showCounter(field, text);
    }
}

void VextaDocument::displayError(const std::string& line) {
    m_toMainThread.dispatch([this, line] {
        m_linesOfPatient.push_back(line.substr(0, line.find_last_not_of('\n') + 1));
        if (runObserver) {
            runObserver->appendToErrorLog(line);
        }
        if (windowController) {
            windowController->bringErrorLogForward();
        }
    });
}

void VextaDocument::displayWarning(const run::Warning& warning) {
    m_toMainThread.dispatch([this, warning] {
        if (runObserver) {
            const bool known = m_runningPatient < m_account.patients.size();
            runObserver->showWarning(warning,
                                     known ? &m_account.patients[m_runningPatient] : nullptr);
        }
    });
}

void VextaDocument::startPatient(std::size_t index, std::size_t count) {
    m_toMainThread.dispatch([this, index, count] {
        m_runningPatient = index;
        if (runObserver) {
            runObserver->patientStarts(index + 1, count);
        }
    });
}

void VextaDocument::endAnalysis(const AnalysisOutcome& outcome) {
    tell([outcome](RunObserver& observer) { observer.analysisEnded(outcome); });
}

// --- Opening

bool VextaDocument::readFromURL(const std::string& path, std::string_view typeName) {
    const std::string absolute = platform::absolutePath(path);
    const bool opened =
        typeName == kResultDocumentType ? openResult(absolute) : openReads(findMate(absolute));
    if (opened) {
        m_fileType = typeName;
    }
    return opened;
}

bool VextaDocument::isSavedResult() const noexcept {
    return m_fileType == kResultDocumentType;
}

bool VextaDocument::openResult(const std::string& path) {
    auto dictionary = readResultDocument(path);
    if (!dictionary) {
        m_services.alerts.showAlert(kCannotOpenResult, dictionary.error().message);
        return false;
    }
    run::MainRoutine& driver = *m_mainRoutine;
    driver.mainMutDictionary = std::move(dictionary).value();
    driver.summaryForEachPatientMutAr = driver.mainMutDictionary.summaryForEachPatientMutAr;
    driver.selectedPatientRowNo = driver.mainMutDictionary.selectedPatientRowNo;
    m_account = {};
    if (!archive::orEmpty(driver.summaryForEachPatientMutAr).empty()) {
        m_canMakeSummaryTable = true;
    }
    return true;
}

bool VextaDocument::openReads(const ReadPairFiles& files) {
    m_givenPatient.reset();
    file1 = files.file1;
    file2 = files.file2;
    fastqFileDir = files.directory;
    m_mainRoutine->summaryForEachPatient->file1 = files.file1;
    m_mainRoutine->summaryForEachPatient->file2 = files.file2;
    m_mainRoutine->selectedPatientRowNo = -1;
    if (!files.paired) {
        m_services.alerts.showAlert(kNotPaired, "");
        return false;
    }
    m_fileType = kReadsDocumentType;
    return true;
}

void VextaDocument::openPatient(AnalysisPlan plan) {
    const PlannedPatient& patient = plan.patients.front();
    openReads({file1Of(patient), file2Of(patient), patient.directory, true});
    m_givenPatient = std::move(plan);
}

// --- Saving

void VextaDocument::saveVEXtAFile() {
    run::MainRoutine& driver = *m_mainRoutine;
    driver.mainMutDictionary = {driver.summaryForEachPatientMutAr, driver.selectedPatientRowNo};
    // Archived at once: what is written is the state at the moment of the command.
    const auto bytes = encodeResultDocument(driver.mainMutDictionary);
    if (!bytes) {
        displayError("The result cannot be saved: " + bytes.error().message + "\n");
    } else if (windowController) {
        windowController->offerToSave(bytes.value(), kResultDocumentExtension);
    }
}

bool VextaDocument::validateUserInterfaceItem(std::string_view action) const {
    if (action == "saveVEXtAFile:") {
        return windowController && windowController->analyzeButtonEnabled();
    }
    return action == "makeSummaryTable:" && m_canMakeSummaryTable;
}

// --- State of the commands

void VextaDocument::setCancelOperationFlag(bool cancel) noexcept {
    m_cancelOperationFlag = cancel;
}

bool VextaDocument::cancelOperationFlag() const noexcept {
    return m_cancelOperationFlag;
}

void VextaDocument::disableControles() {
    switchControls(false);
}

void VextaDocument::enableControles() {
    switchControls(true);
}

void VextaDocument::switchControls(bool enabled) {
    if (windowController) {
        windowController->setAnalyzeButtonEnabled(enabled);
        windowController->setAnalyzeAllButtonEnabled(enabled);
        windowController->setIndicator(!enabled);
    }
}

// --- Text exports, and what a run would cost

void VextaDocument::copy() {
    const std::vector<std::int64_t> selection =
        windowController ? windowController->selectedPatientRows() : std::vector<std::int64_t>();
    m_services.clipboard->setPlainText(
        fullReport(m_mainRoutine->summaryForEachPatientMutAr, selection));
}

void VextaDocument::makeSummaryTable() {
    m_services.clipboard->setPlainText(summaryTable(m_mainRoutine->summaryForEachPatientMutAr));
}

std::vector<std::string> VextaDocument::bystanders() const {
    return bystandersOfCleanup(stringOrEmpty(fastqFileDir), m_services.run.settings);
}

} // namespace document
