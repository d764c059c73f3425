// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The two analyse commands of a document, and the order of their steps.
//
// A run crosses threads three times. A command starts it on the main thread; a serial queue takes
// the patient through it; the completion comes back through the main queue.
//
// The one driver serves every patient. In a batch it belongs to the batch's queue until the last
// patient is through, so a completion gets what it needs as values: by then the driver holds the
// next patient's record and files. The catalogue is read anew for each patient.
//
// Tested by vexta_document_test.cpp (the commands), document_state_test.cpp (what they leave
// behind) and error_log_order_test.cpp.
#include <exception>
#include <utility>

#include "document/catalogue_gap.h"
#include "document/vexta_document.h"
#include "document/working_copies.h"
#include "matching/matcher.h"
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
    /// At its start.
    std::string catalogueDigest;
    std::vector<settings::SettingInForce> settings;
    bool catalogueChangeTold = false;
    bool settingsChangeTold = false;
    /// Whether a change has stopped it.
    bool stopped = false;
    AnalysisOutcome outcome;
};

// --- Steps that both commands share

void VextaDocument::makeFreshSummary() {
    // The old one goes first: each has a catalogue of its own, and memory never holds two.
    m_mainRoutine->summaryForEachPatient = std::make_shared<run::SummaryForEachPatient>();
    m_mainRoutine->summaryForEachPatient =
        run::SummaryForEachPatient::initWithMutDomains(m_mainRoutine->mutDomains);
}

void VextaDocument::clearResults() {
    m_mainRoutine->summaryForEachPatientMutAr.emplace();
    // The notice was about the old results.
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
    driver.mutDomains.reset(); // so that memory never holds two
    driver.mutDomains = driver.setUpMutDomainsMutAr();
    return driver.catalogueUsable();
}

void VextaDocument::showCatalogueTrouble() {
    const run::MainRoutine& driver = *m_mainRoutine;
    if (!driver.catalogueStatus()) {
        displayError(driver.catalogueStatus().error().message + "\n");
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
        [this](const run::Warning& warning) { displayWarning(warning); }};
    run::WorkingCopies copies = makeWorkingCopies(directory, read1Name, read2Name, reports);
    tell([](RunObserver& observer) { observer.prepared(); });
    return copies;
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

// --- The account of an analysis

void VextaDocument::warn(std::vector<run::Warning>& to, run::Warning warning,
                         const PatientAccount* patient) {
    if (runObserver) {
        runObserver->showWarning(warning, patient);
    }
    to.push_back(std::move(warning));
}

void VextaDocument::beginAccount(const std::vector<PatientSlot>& slots, bool wholeDirectory) {
    const run::MainRoutine& driver = *m_mainRoutine;
    m_linesOfPatient.clear();
    m_runningPatient = 0;
    m_account = {};
    m_account.directory = platform::absolutePath(stringOrEmpty(fastqFileDir));
    m_account.cataloguePath = driver.services().definitionFilePath;
    m_account.catalogueDigest = driver.catalogueDigest();
    m_account.catalogueMutations = matching::mutationCount(driver.mutDomains);
    m_account.settings = settings::settingsInForce(m_services.run.settings);
    for (const PatientSlot& slot : slots) {
        PatientAccount patient;
        patient.file1 = platform::lastPathComponent(slot.file1);
        patient.file2 = platform::lastPathComponent(slot.file2);
        patient.sample = sampleNameOf(patient.file1);
        patient.number = stringOrEmpty(patientNumberOf(patient.file1));
        m_account.patients.push_back(std::move(patient));
    }
    const auto names = platform::namesInDirectory(m_account.directory);
    const std::vector<std::string> listed = names ? names.value() : std::vector<std::string>();
    std::vector<DoubtfulPair> doubtful;
    if (wholeDirectory) {
        m_account.unusedReads = unusedReads(listed, slots);
        doubtful = doubtfulPairs(listed, slots);
    } else if (!slots.empty()) {
        m_account.unusedReads =
            otherReadsOfSample(listed, {file1, file2, m_account.directory, true});
    }
    for (run::Warning& warning : warningsOf(m_account.unusedReads, doubtful)) {
        warn(m_account.warnings, std::move(warning), nullptr);
    }
    for (PatientAccount& patient : m_account.patients) {
        if (patientNumberIsDoubtful(patient.file1)) {
            warn(patient.run.warnings,
                 {run::Warning::Kind::doubtfulNumber,
                  patient.file1 +
                      ": \"_S\" stands in the name more than once; the patient number is \"" +
                      patient.number + "\""},
                 &patient);
        }
    }
}

void VextaDocument::closePatientAccount(std::size_t index, bool succeeded, run::RunAccount run,
                                        std::shared_ptr<run::SummaryForEachPatient> summary) {
    PatientAccount& patient = m_account.patients.at(index);
    patient.outcome =
        succeeded ? PatientAccount::Outcome::analysed : PatientAccount::Outcome::failed;
    patient.lines = std::exchange(m_linesOfPatient, {});
    run.warnings.insert(run.warnings.begin(), patient.run.warnings.begin(),
                        patient.run.warnings.end());
    patient.run = std::move(run);
    patient.summary = succeeded ? std::move(summary) : nullptr;
}

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

void VextaDocument::showFreshPatient() {
    run::MainRoutine& driver = *m_mainRoutine;
    makeFreshSummary();
    clearResults();
    if (runObserver && !driver.catalogueStatus()) {
        runObserver->showCatalogueNotice(
            missingCatalogueNotice(driver.catalogueStatus().error().message));
    }
    reloadTables();
    driver.summaryForEachPatient->file1 = file1;
    driver.summaryForEachPatient->file2 = file2;
    driver.summaryForEachPatient->fastqFileDir = fastqFileDir;
}

bool VextaDocument::numberPatient() {
    const std::string name = platform::lastPathComponent(stringOrEmpty(file1));
    const std::optional<std::string> number = patientNumberOf(name);
    if (!number) {
        m_services.alerts.showAlert(
            "The file name \"" + name + "\" holds no patient number.",
            "Expected \"_S\" and the number in it, as in \"P7_S7_L001_R1_001.fastq\".");
        return false;
    }
    m_mainRoutine->summaryForEachPatient->patientNo = *number;
    return true;
}

bool VextaDocument::prepareHoldingCaller() {
    run::MainRoutine& driver = *m_mainRoutine;
    const std::string directory = stringOrEmpty(fastqFileDir);
    const std::string read1Name = stringOrEmpty(file1);
    const std::string read2Name = stringOrEmpty(file2);
    if (inputMode == InputMode::direct) {
        driver.inputReads = directReads(directory, read1Name, read2Name, unassignedPath);
    }
    if (!driver.settingsReadable()) {
        return false;
    }
    return inputMode == InputMode::direct || withoutException([&] {
               const WhileTrue held(m_callerIsHeld);
               m_services.callerHold.hold([&] {
                   driver.inputReads =
                       prepareFilesForMainRoutineUsingDir(directory, read1Name, read2Name);
               });
               return true;
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
    showFreshPatient();
    beginAccount({{stringOrEmpty(file1), stringOrEmpty(file2), 0}}, false);
    if (!numberPatient()) {
        endAnalysis({AnalysisOutcome::End::noPatientNumber, 0, 0});
        return;
    }
    const bool prepared = prepareHoldingCaller();
    driver.selectedPatientRowNo = -1;
    if (windowController) {
        windowController->updateWindowFromSummaryForEachPatient(*driver.summaryForEachPatient);
    }
    startPatient(0, 1);
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
    closePatientAccount(0, succeeded, std::move(m_mainRoutine->runAccount),
                        m_mainRoutine->summaryForEachPatient);
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
    // Before the rule of the empty batch: the user is told of an unusable catalogue whatever the
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
    beginAccount(batch->slots, true);
    batch->catalogueDigest = m_account.catalogueDigest;
    batch->settings = m_account.settings;
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
    if (batch->stopped || cancelOperationFlag()) {
        passOverBatchPatient(batch, index);
        return;
    }
    const bool catalogueUsable = withoutException([this] { return readCatalogueAnew(); });
    if (!withoutException([&] { return compareWithStart(*batch); }) && batch->stopped) {
        passOverBatchPatient(batch, index);
        return;
    }
    startPatient(index, batch->slots.size());
    const PatientSlot& slot = batch->slots[index];
    const bool succeeded =
        withoutException([&] { return executeBatchPatient(*batch, index, catalogueUsable); });
    withoutException([&] { return compareWithStart(*batch); });
    // The next patient's record and files take their place in the driver before the main thread
    // gets here.
    m_toMainThread.async([this, batch, index, succeeded,
                          paths = pathsOfRun(batch->directory, batch->inputMode, slot),
                          run = m_mainRoutine->runAccount, stopped = batch->stopped,
                          finished = m_mainRoutine->summaryForEachPatient] {
        if (stopped) {
            batch->outcome.end = AnalysisOutcome::End::changed;
        }
        completeBatchPatient(*batch, index, succeeded, paths, run, finished);
    });
}

void VextaDocument::passOverBatchPatient(const std::shared_ptr<Batch>& batch, std::size_t index) {
    m_toMainThread.async([this, batch, index, stopped = batch->stopped] {
        enableControles();
        batch->outcome.end =
            stopped ? AnalysisOutcome::End::changed : AnalysisOutcome::End::cancelled;
        if (!stopped) {
            m_account.patients.at(index).outcome = PatientAccount::Outcome::cancelled;
        }
        if (index + 1 == batch->slots.size()) {
            endAnalysis(batch->outcome);
        }
    });
}

namespace {

/// "nD1Threshold is 90000 and was 500".
std::string differences(const std::vector<settings::SettingInForce>& before,
                        const std::vector<settings::SettingInForce>& now) {
    std::string text;
    for (std::size_t i = 0; i < before.size() && i < now.size(); ++i) {
        if (now[i].setting.changesResults() && !(before[i] == now[i])) {
            text += (text.empty() ? "" : ", ") + std::string(now[i].setting.key) + " is " +
                    std::to_string(now[i].value) + " and was " + std::to_string(before[i].value);
        }
    }
    return text;
}

} // namespace

bool VextaDocument::compareWithStart(Batch& batch) {
    const auto tellChange = [&](run::Warning::Kind kind, std::string text, bool& told) {
        batch.stopped = batch.stopped || stopsBatchOnChange;
        if (!std::exchange(told, true)) {
            text += stopsBatchOnChange ? ". The batch ends here" : ". The batch goes on with it";
            m_toMainThread.async([this, kind, text] {
                const bool isCatalogue = kind == run::Warning::Kind::changedCatalogue;
                (isCatalogue ? m_account.catalogueChanged : m_account.settingsChanged) = true;
                warn(m_account.warnings, {kind, text}, nullptr);
            });
        }
    };
    const run::MainRoutine& driver = *m_mainRoutine;
    if (driver.catalogueDigest() != batch.catalogueDigest) {
        tellChange(run::Warning::Kind::changedCatalogue,
                   "The definition file " + driver.services().definitionFilePath +
                       (driver.catalogueDigest().empty() ? " has gone" : " has changed") +
                       " since the batch began",
                   batch.catalogueChangeTold);
    }
    const std::string changes =
        differences(batch.settings, settings::settingsInForce(m_services.run.settings));
    if (!changes.empty()) {
        tellChange(run::Warning::Kind::changedSettings,
                   "The settings have changed since the batch began: " + changes,
                   batch.settingsChangeTold);
    }
    return !batch.stopped;
}

void VextaDocument::noteCatalogueGap(Batch& batch, std::size_t index) {
    batch.catalogueGap.add(index, stringOrEmpty(patientNumberOf(batch.slots[index].file1)),
                           m_mainRoutine->catalogueStatus().error().message);
    tell([notice = batch.catalogueGap.notice()](RunObserver& observer) {
        observer.showCatalogueNotice(notice);
    });
}

bool VextaDocument::prepareBatchPatient(Batch& batch, std::size_t index, bool catalogueUsable) {
    run::MainRoutine& driver = *m_mainRoutine;
    if (!catalogueUsable) {
        if (!std::exchange(batch.catalogueTroubleShown, true)) {
            showCatalogueTrouble();
        }
        return false;
    }
    if (!driver.catalogueStatus()) {
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

bool VextaDocument::executeBatchPatient(Batch& batch, std::size_t index, bool catalogueUsable) {
    run::MainRoutine& driver = *m_mainRoutine;
    const PatientSlot& slot = batch.slots[index];
    const bool ready = prepareBatchPatient(batch, index, catalogueUsable);
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
                                         const std::vector<std::string>& paths, run::RunAccount run,
                                         std::shared_ptr<run::SummaryForEachPatient> summary) {
    ++batch.outcome.patientsRun;
    if (succeeded) {
        appendResult(summary);
        // Deliberate: the row is the place in the batch, even after a failed patient left a gap.
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
    closePatientAccount(index, succeeded, std::move(run), std::move(summary));
    if (index + 1 == batch.slots.size()) {
        enableControles();
        endAnalysis(batch.outcome);
    }
}

} // namespace document
