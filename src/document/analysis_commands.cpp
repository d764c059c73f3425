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
    AnalysisPlan plan;
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
    // A patient whose run cannot begin must not keep the account of the one before.
    m_mainRoutine->runAccount = {};
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

run::DirectReads directReads(const PlannedPatient& patient,
                             const std::optional<std::string>& unassignedPath) {
    const run::LaneFiles& first = patient.lanes.front();
    run::DirectReads reads = {first.read1Path, first.read2Path, unassignedPath};
    reads.furtherLanes = {patient.lanes.begin() + 1, patient.lanes.end()};
    return reads;
}

/// What expandedTemporaryFilesFullPathAr() gives once the patient's files are prepared.
std::vector<std::string> pathsOfRun(InputMode mode, const PlannedPatient& patient) {
    if (mode == InputMode::direct) {
        return {patient.lanes.front().read1Path, patient.lanes.front().read2Path};
    }
    const std::string absolute = platform::absolutePath(patient.directory);
    return {workingCopyPath(absolute, file1Of(patient)),
            workingCopyPath(absolute, file2Of(patient))};
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

namespace {

PatientAccount accountOf(const PlannedPatient& planned) {
    PatientAccount patient;
    patient.sample = planned.sample;
    patient.number = planned.number;
    patient.file1 = file1Of(planned);
    patient.file2 = file2Of(planned);
    for (std::size_t i = 1; i < planned.lanes.size(); ++i) {
        patient.furtherFiles.push_back({platform::lastPathComponent(planned.lanes[i].read1Path),
                                        platform::lastPathComponent(planned.lanes[i].read2Path)});
    }
    return patient;
}

run::Warning doubtfulNumber(const PatientAccount& patient) {
    return {run::Warning::Kind::doubtfulNumber,
            patient.file1 + ": \"_S\" stands in the name more than once; the patient number is \"" +
                patient.number + "\""};
}

} // namespace

void VextaDocument::beginAccount(const AnalysisPlan& plan) {
    const run::MainRoutine& driver = *m_mainRoutine;
    m_linesOfPatient.clear();
    m_runningPatient = 0;
    m_account = {};
    m_account.directory = platform::absolutePath(plan.directory);
    m_account.cataloguePath = driver.services().definitionFilePath;
    m_account.catalogueDigest = driver.catalogueDigest();
    m_account.catalogueMutations = matching::mutationCount(driver.mutDomains);
    m_account.settings = settings::settingsInForce(m_services.run.settings);
    m_account.unusedReads = plan.unusedReads;
    std::vector<run::Warning> warnings = warningsOf(plan.unusedReads, plan.doubtful);
    warnings.insert(warnings.begin(), plan.warnings.begin(), plan.warnings.end());
    for (run::Warning& warning : warnings) {
        warn(m_account.warnings, std::move(warning), nullptr);
    }
    for (const PlannedPatient& planned : plan.patients) {
        m_account.patients.push_back(accountOf(planned));
        PatientAccount& patient = m_account.patients.back();
        if (planned.numberIsFromName && patientNumberIsDoubtful(patient.file1)) {
            warn(patient.run.warnings, doubtfulNumber(patient), &patient);
        }
    }
    m_account.patients.insert(m_account.patients.end(), plan.passedOver.begin(),
                              plan.passedOver.end());
}

void VextaDocument::warnOfCopies(std::size_t index, run::RunAccount& run) {
    const reads::InputAccount& inputs = run.inputs;
    // Only a sequencer's names, which tell a lane, are nobody else's.
    if (inputs.firstName.empty() || inputs.read1.headers.lanes().empty()) {
        return;
    }
    for (std::size_t other = 0; other < index; ++other) {
        const PatientAccount& earlier = m_account.patients[other];
        if (earlier.run.inputs.firstName == inputs.firstName) {
            warn(run.warnings,
                 {run::Warning::Kind::doubtfulNames,
                  m_account.patients[index].file1 + " and " + earlier.file1 +
                      " begin with the same read: they seem to be one sample"},
                 &m_account.patients[index]);
            return;
        }
    }
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

void VextaDocument::closePatientAccount(std::size_t index, bool succeeded, run::RunAccount run,
                                        std::shared_ptr<run::SummaryForEachPatient> summary) {
    PatientAccount& patient = m_account.patients.at(index);
    patient.outcome =
        succeeded ? PatientAccount::Outcome::analysed : PatientAccount::Outcome::failed;
    patient.lines = std::exchange(m_linesOfPatient, {});
    const std::string changes = differences(m_account.settings, run.settings);
    if (!changes.empty()) {
        m_account.settingsChanged = true;
        warn(run.warnings,
             {run::Warning::Kind::changedSettings,
              patient.file1 +
                  ": called with other settings than those of the "
                  "beginning: " +
                  changes},
             &patient);
    }
    warnOfCopies(index, run);
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

AnalysisPlan VextaDocument::planOfOpenedPatient() const {
    return m_givenPatient
               ? *m_givenPatient
               : planOfPatient(patientOfPair(stringOrEmpty(fastqFileDir), stringOrEmpty(file1),
                                             stringOrEmpty(file2)));
}

bool VextaDocument::numberPatient(const PlannedPatient& patient) {
    const std::string name = file1Of(patient);
    if (patient.numberIsFromName && !patientNumberOf(name)) {
        m_services.alerts.showAlert(
            "The file name \"" + name + "\" holds no patient number.",
            "Expected \"_S\" and the number in it, as in \"P7_S7_L001_R1_001.fastq\".");
        return false;
    }
    m_mainRoutine->summaryForEachPatient->patientNo = patient.number;
    return true;
}

bool VextaDocument::prepareHoldingCaller(const PlannedPatient& patient) {
    run::MainRoutine& driver = *m_mainRoutine;
    if (inputMode == InputMode::direct) {
        driver.inputReads = directReads(patient, unassignedPath);
    }
    if (!driver.settingsReadable()) {
        return false;
    }
    return inputMode == InputMode::direct || withoutException([&] {
               const WhileTrue held(m_callerIsHeld);
               m_services.callerHold.hold([&] {
                   driver.inputReads = prepareFilesForMainRoutineUsingDir(
                       patient.directory, file1Of(patient), file2Of(patient));
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
    const AnalysisPlan plan = planOfOpenedPatient();
    const PlannedPatient& patient = plan.patients.front();
    beginAccount(plan);
    if (!numberPatient(patient)) {
        endAnalysis({AnalysisOutcome::End::noPatientNumber, 0, 0});
        return;
    }
    const bool prepared = prepareHoldingCaller(patient);
    driver.selectedPatientRowNo = -1;
    if (windowController) {
        windowController->updateWindowFromSummaryForEachPatient(*driver.summaryForEachPatient);
    }
    startPatient(0, 1);
    disableControles();
    m_dispatchSerialQueueForAnalyze->async(
        [this, prepared, paths = pathsOfRun(inputMode, patient)] {
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
    const std::string directory = stringOrEmpty(fastqFileDir);
    const auto listed = platform::namesInDirectory(directory);
    const std::vector<std::string> names = listed ? listed.value() : std::vector<std::string>();
    const std::vector<PatientSlot> slots = planBatch(names);
    if (showUnpairedAlert(slots)) {
        enableControles();
        endAnalysis({AnalysisOutcome::End::unpaired, 0, 0});
        return;
    }
    runBatch(planOfSlots(directory, names, slots));
}

void VextaDocument::analyzePlan(AnalysisPlan plan) {
    if (m_callerIsHeld) {
        return;
    }
    disableControles();
    setCancelOperationFlag(false);
    runBatch(std::move(plan));
}

void VextaDocument::runBatch(AnalysisPlan plan) {
    auto batch = std::make_shared<Batch>();
    batch->plan = std::move(plan);
    batch->inputMode = inputMode;
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
    beginAccount(batch->plan);
    batch->catalogueDigest = m_account.catalogueDigest;
    batch->settings = m_account.settings;
    if (batch->plan.patients.empty()) {
        // Deliberate: with nobody to run, nothing enables the controls again.
        endAnalysis({AnalysisOutcome::End::noPatients, 0, 0});
        return;
    }
    for (std::size_t index = 0; index < batch->plan.patients.size(); ++index) {
        m_dispatchSerialQueueForAnalyzeAll->async(
            [this, batch, index] { runBatchPatient(batch, index); });
    }
}

bool VextaDocument::showUnpairedAlert(const std::vector<PatientSlot>& slots) {
    for (const PatientSlot& slot : slots) {
        if (slot.file1.empty() || slot.file2.empty()) {
            m_services.alerts.showAlert(unpairedText(std::to_string(slot.sampleNumber)), "");
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
    startPatient(index, batch->plan.patients.size());
    const bool succeeded =
        withoutException([&] { return executeBatchPatient(*batch, index, catalogueUsable); });
    withoutException([&] { return compareWithStart(*batch); });
    // The next patient's record and files take their place in the driver before the main thread
    // gets here.
    m_toMainThread.async([this, batch, index, succeeded,
                          paths = pathsOfRun(batch->inputMode, batch->plan.patients[index]),
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
        if (index + 1 == batch->plan.patients.size()) {
            endAnalysis(batch->outcome);
        }
    });
}

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
    batch.catalogueGap.add(index, batch.plan.patients[index].number,
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
    const PlannedPatient& patient = batch.plan.patients[index];
    if (batch.inputMode == InputMode::direct) {
        driver.inputReads = directReads(patient, std::nullopt);
    } else {
        driver.inputReads = prepareFilesForMainRoutineUsingDir(patient.directory, file1Of(patient),
                                                               file2Of(patient));
    }
    return true;
}

bool VextaDocument::executeBatchPatient(Batch& batch, std::size_t index, bool catalogueUsable) {
    run::MainRoutine& driver = *m_mainRoutine;
    const PlannedPatient& patient = batch.plan.patients[index];
    const bool ready = prepareBatchPatient(batch, index, catalogueUsable);
    makeFreshSummary();
    run::SummaryForEachPatient& summary = *driver.summaryForEachPatient;
    summary.file1 = file1Of(patient);
    summary.file2 = file2Of(patient);
    summary.fastqFileDir = patient.directory;
    // Never without one: a name without "_S" is in no batch, or the plan gives it a number.
    summary.patientNo = patient.number;
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
    if (index + 1 == batch.plan.patients.size()) {
        enableControles();
        endAnalysis(batch.outcome);
    }
}

} // namespace document
