// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/vexta_document.h"

#include <exception>
#include <utility>

#include "document/catalogue_gap.h"
#include "document/result_document.h"
#include "document/text_exports.h"
#include "document/working_copies.h"
#include "platform/files.h"

namespace document {

using archive::stringOrEmpty;
using run::RunField;

/// A batch under way. The main thread writes the outcome, the batch's queue the rest.
struct VextaDocument::Batch {
    std::vector<PatientSlot> slots;
    std::string directory;
    InputMode inputMode = InputMode::workingCopies;
    bool catalogueTroubleShown = false;
    CatalogueGap catalogueGap;
    AnalysisOutcome outcome;
};

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
    // A patient that runs still calls this object, and posts tasks: the queues end before anything
    // of it does. Tasks of the main queue cannot come between, since this is their thread.
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
        if (runObserver) {
            runObserver->appendToErrorLog(line);
        }
        if (windowController) {
            windowController->bringErrorLogForward();
        }
    });
}

void VextaDocument::displayWarning(const std::string& line) {
    m_toMainThread.dispatch([this, line] {
        if (runObserver) {
            runObserver->showWarning(line);
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
    if (!archive::orEmpty(driver.summaryForEachPatientMutAr).empty()) {
        m_canMakeSummaryTable = true;
    }
    return true;
}

bool VextaDocument::openReads(const ReadPairFiles& files) {
    file1 = files.file1;
    file2 = files.file2;
    fastqFileDir = files.directory;
    m_mainRoutine->summaryForEachPatient->file1 = files.file1;
    m_mainRoutine->summaryForEachPatient->file2 = files.file2;
    m_mainRoutine->selectedPatientRowNo = -1;
    if (!files.paired) {
        m_services.alerts.showAlert("Files are not paired or incompatible.", "");
    }
    return files.paired;
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
    if (windowController) {
        windowController->setAnalyzeButtonEnabled(false);
        windowController->setAnalyzeAllButtonEnabled(false);
        windowController->setIndicator(true);
    }
}

void VextaDocument::enableControles() {
    if (windowController) {
        windowController->setAnalyzeButtonEnabled(true);
        windowController->setAnalyzeAllButtonEnabled(true);
        windowController->setIndicator(false);
    }
}

// --- Steps that both commands share

void VextaDocument::makeFreshSummary() {
    // The old one, with a catalogue of its own, goes first: never are there two.
    m_mainRoutine->summaryForEachPatient = std::make_shared<run::SummaryForEachPatient>();
    m_mainRoutine->summaryForEachPatient =
        run::SummaryForEachPatient::initWithMutDomains(m_mainRoutine->mutDomains);
}

void VextaDocument::clearResults() {
    m_mainRoutine->summaryForEachPatientMutAr.emplace();
    // It was about them.
    if (runObserver) {
        runObserver->showCatalogueNotice("");
    }
}

void VextaDocument::reloadTables() {
    if (windowController) {
        windowController->reloadPatientsTable();
        windowController->reloadResultTables();
    }
}

bool VextaDocument::readCatalogueAnew() {
    run::MainRoutine& driver = *m_mainRoutine;
    driver.mutDomains.reset(); // so that there are never two catalogues
    driver.mutDomains = driver.setUpMutDomainsMutAr();
    return driver.catalogueUsable();
}

void VextaDocument::showCatalogueTrouble() {
    const run::MainRoutine& driver = *m_mainRoutine;
    if (!driver.catalogueOpened()) {
        displayError(driver.catalogueOpenError() + "\n");
    }
    for (const catalogue::CatalogueFault& fault : driver.catalogueFaults()) {
        displayError(fault.message + "\n");
    }
}

run::InputReads VextaDocument::prepareFilesForMainRoutineUsingDir(const std::string& directory,
                                                                  const std::string& read1Name,
                                                                  const std::string& read2Name) {
    const PreparationReports reports = {
        [this](const std::string& line) { displayError(line); },
        [this](const Preparation& preparation) {
            tell([preparation](RunObserver& observer) { observer.preparing(preparation); });
        },
        [this](const std::string& line) { displayWarning(line); }};
    run::WorkingCopies copies = makeWorkingCopies(directory, read1Name, read2Name, reports);
    tell([](RunObserver& observer) { observer.prepared(); });
    return copies;
}

std::vector<std::string> VextaDocument::bystanders() const {
    return bystandersOfCleanup(stringOrEmpty(fastqFileDir), m_services.run.settings);
}

namespace {

run::DirectReads directReads(const std::string& directory, const std::string& read1Name,
                             const std::string& read2Name,
                             const std::optional<std::string>& unassignedPath) {
    const std::string absolute = platform::absolutePath(directory);
    return {absolute + "/" + read1Name, absolute + "/" + read2Name, unassignedPath};
}

/// What expandedTemporaryFilesFullPathAr() gives once the patient's files are prepared.
std::vector<std::string> pathsOfRun(const std::string& directory, InputMode mode,
                                    const PatientSlot& slot) {
    const std::string absolute = platform::absolutePath(directory);
    if (mode == InputMode::direct) {
        return {absolute + "/" + slot.file1, absolute + "/" + slot.file2};
    }
    return {workingCopyPath(absolute, slot.file1), workingCopyPath(absolute, slot.file2)};
}

std::string errorLine(const std::vector<std::string>& paths) {
    return "Error occurred for files " + paths.at(0) + " and " + paths.at(1) + "\n";
}

} // namespace

void VextaDocument::appendResult(std::shared_ptr<run::SummaryForEachPatient> summary) {
    m_mainRoutine->summaryForEachPatientMutAr->append(std::move(summary));
    m_canMakeSummaryTable = true;
}

bool VextaDocument::withoutException(const std::function<bool()>& run) {
    try {
        return run();
    } catch (const std::exception& failure) {
        displayError(std::string("The run ended early: ") + failure.what() + "\n");
        return false;
    }
}

// --- One patient

namespace {

/// True for as long as it lives.
class WhileTrue {
public:
    explicit WhileTrue(bool& flag) : m_flag(flag) { m_flag = true; }
    ~WhileTrue() { m_flag = false; }
    WhileTrue(const WhileTrue&) = delete;
    WhileTrue& operator=(const WhileTrue&) = delete;

private:
    bool& m_flag;
};

} // namespace

void VextaDocument::prepareHoldingCaller() {
    const WhileTrue held(m_callerIsHeld);
    m_services.callerHold.hold([this] {
        m_mainRoutine->inputReads = prepareFilesForMainRoutineUsingDir(
            stringOrEmpty(fastqFileDir), stringOrEmpty(file1), stringOrEmpty(file2));
    });
}

void VextaDocument::analyze() {
    if (m_callerIsHeld) {
        return;
    }
    run::MainRoutine& driver = *m_mainRoutine;
    if (!readCatalogueAnew()) {
        showCatalogueTrouble();
        endAnalysis({AnalysisOutcome::End::catalogueFaulty, 0, 0});
        return;
    }
    makeFreshSummary();
    clearResults();
    if (runObserver && !driver.catalogueOpened()) {
        runObserver->showCatalogueNotice(missingCatalogueNotice(driver.catalogueOpenError()));
    }
    reloadTables();
    run::SummaryForEachPatient& summary = *driver.summaryForEachPatient;
    summary.file1 = file1;
    summary.file2 = file2;
    summary.fastqFileDir = fastqFileDir;
    const std::string name = platform::lastPathComponent(stringOrEmpty(file1));
    const std::optional<std::string> number = patientNumberOf(name);
    if (!number) {
        m_services.alerts.showAlert(
            "The file name \"" + name + "\" holds no patient number.",
            "Expected \"_S\" and the number in it, as in \"P7_S7_L001_R1_001.fastq\".");
        endAnalysis({AnalysisOutcome::End::noPatientNumber, 0, 0});
        return;
    }
    summary.patientNo = *number;
    if (inputMode == InputMode::direct) {
        driver.inputReads = directReads(stringOrEmpty(fastqFileDir), stringOrEmpty(file1),
                                        stringOrEmpty(file2), unassignedPath);
    }
    const bool prepared =
        driver.settingsReadable() && (inputMode == InputMode::direct || withoutException([this] {
                                          prepareHoldingCaller();
                                          return true;
                                      }));
    driver.selectedPatientRowNo = -1;
    if (windowController) {
        windowController->updateWindowFromSummaryForEachPatient(summary);
    }
    if (runObserver) {
        runObserver->patientStarts(1, 1);
    }
    disableControles();
    auto paths = pathsOfRun(stringOrEmpty(fastqFileDir), inputMode,
                            {stringOrEmpty(file1), stringOrEmpty(file2), 0});
    m_dispatchSerialQueueForAnalyze->async([this, prepared, paths = std::move(paths)] {
        const bool succeeded =
            prepared && withoutException([this] { return m_mainRoutine->execute(); });
        m_toMainThread.async([this, succeeded, paths] { completeAnalyze(succeeded, paths); });
    });
}

void VextaDocument::completeAnalyze(bool succeeded, const std::vector<std::string>& paths) {
    if (succeeded) {
        enableControles();
        appendResult(m_mainRoutine->summaryForEachPatient);
        if (windowController) {
            windowController->reloadPatientsTable();
        }
        m_mainRoutine->selectedPatientRowNo = 0;
        if (windowController) {
            windowController->selectPatientRow(0);
        }
    } else {
        // Deliberate: the controls stay off after a failed single run, until the document is
        // closed.
        displayError(errorLine(paths));
    }
    endAnalysis({AnalysisOutcome::End::finished, 1, succeeded ? 0U : 1U});
}

// --- Every patient of a directory

void VextaDocument::analyzeAll() {
    if (m_callerIsHeld) {
        return;
    }
    disableControles();
    setCancelOperationFlag(false);
    const auto names = platform::namesInDirectory(stringOrEmpty(fastqFileDir));
    auto batch = std::make_shared<Batch>();
    batch->slots = planBatch(names ? names.value() : std::vector<std::string>());
    batch->directory = stringOrEmpty(fastqFileDir);
    batch->inputMode = inputMode;
    if (showUnpairedAlert(batch->slots)) {
        enableControles();
        endAnalysis({AnalysisOutcome::End::unpaired, 0, 0});
        return;
    }
    // Before the rule of the empty batch: a catalogue that cannot be used is told whatever the
    // directory holds.
    if (!readCatalogueAnew()) {
        showCatalogueTrouble();
        enableControles();
        endAnalysis({AnalysisOutcome::End::catalogueFaulty, 0, 0});
        return;
    }
    run::MainRoutine& driver = *m_mainRoutine;
    driver.selectedPatientRowNo = -1;
    makeFreshSummary();
    if (windowController) {
        windowController->updateWindowFromSummaryForEachPatient(*driver.summaryForEachPatient);
    }
    clearResults();
    reloadTables();
    if (batch->slots.empty()) {
        // Deliberate: with nobody to run, nothing enables the controls again.
        endAnalysis({AnalysisOutcome::End::noPatients, 0, 0});
        return;
    }
    for (std::size_t index = 0; index < batch->slots.size(); ++index) {
        m_dispatchSerialQueueForAnalyzeAll->async(
            [this, batch, index] { runBatchPatient(batch, index); });
    }
}

bool VextaDocument::showUnpairedAlert(const std::vector<PatientSlot>& slots) {
    for (const PatientSlot& slot : slots) {
        if (slot.file1.empty() || slot.file2.empty()) {
            m_services.alerts.showAlert(
                "Patient " + std::to_string(slot.sampleNumber) + " has unpaired fastq file.", "");
            return true;
        }
    }
    return false;
}

void VextaDocument::runBatchPatient(const std::shared_ptr<Batch>& batch, std::size_t index) {
    const bool last = index + 1 == batch->slots.size();
    if (cancelOperationFlag()) {
        m_toMainThread.async([this, batch, last] {
            enableControles();
            batch->outcome.end = AnalysisOutcome::End::cancelled;
            if (last) {
                endAnalysis(batch->outcome);
            }
        });
        return;
    }
    tell([position = index + 1, count = batch->slots.size()](RunObserver& observer) {
        observer.patientStarts(position, count);
    });
    const PatientSlot& slot = batch->slots[index];
    const bool succeeded = withoutException([&] { return executeBatchPatient(*batch, index); });
    // The next patient's record and files take their place in the driver before the main thread
    // gets here.
    m_toMainThread.async([this, batch, index, succeeded,
                          paths = pathsOfRun(batch->directory, batch->inputMode, slot),
                          finished = m_mainRoutine->summaryForEachPatient] {
        completeBatchPatient(*batch, index, succeeded, paths, finished);
    });
}

void VextaDocument::noteCatalogueGap(Batch& batch, std::size_t index) {
    batch.catalogueGap.add(index, stringOrEmpty(patientNumberOf(batch.slots[index].file1)),
                           m_mainRoutine->catalogueOpenError());
    tell([notice = batch.catalogueGap.notice()](RunObserver& observer) {
        observer.showCatalogueNotice(notice);
    });
}

bool VextaDocument::prepareBatchPatient(Batch& batch, std::size_t index) {
    run::MainRoutine& driver = *m_mainRoutine;
    if (!readCatalogueAnew()) {
        if (!std::exchange(batch.catalogueTroubleShown, true)) {
            showCatalogueTrouble();
        }
        return false;
    }
    if (!driver.catalogueOpened()) {
        noteCatalogueGap(batch, index);
    }
    if (!driver.settingsReadable()) {
        return false;
    }
    const PatientSlot& slot = batch.slots[index];
    if (batch.inputMode == InputMode::direct) {
        driver.inputReads = directReads(batch.directory, slot.file1, slot.file2, std::nullopt);
    } else {
        driver.inputReads =
            prepareFilesForMainRoutineUsingDir(batch.directory, slot.file1, slot.file2);
    }
    return true;
}

bool VextaDocument::executeBatchPatient(Batch& batch, std::size_t index) {
    run::MainRoutine& driver = *m_mainRoutine;
    const PatientSlot& slot = batch.slots[index];
    const bool ready = prepareBatchPatient(batch, index);
    makeFreshSummary();
    run::SummaryForEachPatient& summary = *driver.summaryForEachPatient;
    summary.file1 = platform::lastPathComponent(slot.file1);
    summary.file2 = platform::lastPathComponent(slot.file2);
    summary.fastqFileDir = batch.directory;
    // Never null: a name without "_S" is in no batch.
    summary.patientNo = patientNumberOf(*summary.file1);
    showText(RunField::file1, *summary.file1);
    showText(RunField::file2, *summary.file2);
    return ready && driver.execute();
}

void VextaDocument::completeBatchPatient(Batch& batch, std::size_t index, bool succeeded,
                                         const std::vector<std::string>& paths,
                                         std::shared_ptr<run::SummaryForEachPatient> summary) {
    ++batch.outcome.patientsRun;
    if (succeeded) {
        appendResult(std::move(summary));
        // Deliberate: the row is the place in the batch, also where a failed patient left a gap.
        const auto row = static_cast<std::int64_t>(index);
        m_mainRoutine->selectedPatientRowNo = row;
        if (windowController) {
            windowController->reloadPatientsTable();
            windowController->selectPatientRow(row);
        }
    } else {
        ++batch.outcome.patientsFailed;
        displayError(errorLine(paths));
    }
    if (index + 1 == batch.slots.size()) {
        enableControles();
        endAnalysis(batch.outcome);
    }
}

// --- Text exports

void VextaDocument::copy() {
    const std::vector<std::int64_t> selection =
        windowController ? windowController->selectedPatientRows() : std::vector<std::int64_t>();
    m_services.clipboard->setPlainText(
        fullReport(m_mainRoutine->summaryForEachPatientMutAr, selection));
}

void VextaDocument::makeSummaryTable() {
    m_services.clipboard->setPlainText(summaryTable(m_mainRoutine->summaryForEachPatientMutAr));
}

} // namespace document
