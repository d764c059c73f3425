// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "archive/nullable.h"
#include "document/analysis_account.h"
#include "document/analysis_plan.h"
#include "document/document_window.h"
#include "document/input_discovery.h"
#include "document/main_thread_route.h"
#include "platform/clipboard.h"
#include "platform/work_queues.h"
#include "run/main_routine.h"

namespace document {

/// What the machine and the application lend to every document. All outlive it.
struct DocumentServices {
    run::RunServices run;
    platform::MainQueue& mainQueue;
    /// For copy() and makeSummaryTable(); null where nobody calls them.
    platform::Clipboard* clipboard;
    Alerts& alerts;
    /// Holds the caller of analyze() while working copies are made.
    platform::CallerHold& callerHold;
};

/// How a patient's files are brought to the run.
enum class InputMode {
    workingCopies, ///< plain-text copies beside the inputs, removed after the run
    direct,        ///< the inputs themselves, plain or .gz; nothing is written beside them
};

/// One open analysis: a pair of FASTQ files, or the directory that holds them, and its results.
///
/// Lives on the main thread, which calls every member but those of RunDisplay. Runs go on in the
/// document's two serial queues and come back through the main queue. The destructor waits for a
/// running patient; tasks that are still in the main queue do nothing afterwards.
class VextaDocument : private run::RunDisplay {
public:
    explicit VextaDocument(const DocumentServices& services);
    ~VextaDocument() override;
    VextaDocument(const VextaDocument&) = delete;
    VextaDocument& operator=(const VextaDocument&) = delete;

    /// Opens a document of the type `typeName`; returns whether there is one, after an alert where
    /// not. "VEXtAFile" is a saved result, which is for viewing and exporting only; a file that
    /// cannot be read leaves the document as it was. Any other type opens a FASTQ file and finds
    /// its mate. `path` is made absolute.
    bool readFromURL(const std::string& path, std::string_view typeName);
    /// Opens what findMate() gave; false, after an alert, where the mate is missing.
    bool openReads(const ReadPairFiles& files);

    /// Opens the one patient of the plan, whose files and number are given instead of found.
    /// REQUIRES: there is one, and input is direct.
    void openPatient(AnalysisPlan plan);

    /// Runs the opened pair; returns as soon as its working copies, where there are any, are made.
    void analyze();
    /// Runs every pair in the document's directory, one after the other; returns at once.
    void analyzeAll();
    /// Runs the patients of the plan as analyzeAll() runs those of a directory. REQUIRES: input is
    /// direct, or each patient has one lane.
    void analyzePlan(AnalysisPlan plan);
    // None of them does anything while analyze() holds its caller. User input does not get here
    // then, but a screen reader's press of a button does.

    /// The files that a run with working copies would remove although they are not its own (see
    /// bystandersOfCleanup()).
    std::vector<std::string> bystanders() const;

    /// Puts the full report of the selected patients on the clipboard. REQUIRES, as the next: there
    /// is one.
    void copy();
    /// Puts the summary table of every patient on the clipboard.
    void makeSummaryTable();

    /// Archives the patients and the shown row as they are now, and has the window ask where to
    /// write them.
    void saveVEXtAFile();

    /// Whether a command of the document's menu is enabled, by its action ("saveVEXtAFile:").
    /// Deliberate: every action but the document's own two is not, so that the framework's Save
    /// stays off.
    bool validateUserInterfaceItem(std::string_view action) const;
    /// Deliberate: true, though a document that is never marked as changed is never autosaved.
    static constexpr bool autosavesInPlace() { return true; }
    /// The type that the document was opened as; empty before.
    const std::string& fileType() const noexcept { return m_fileType; }
    /// Whether it is a saved result, for viewing and exporting only.
    bool isSavedResult() const noexcept;

    void disableControles();
    void enableControles();
    /// Appends the text to the error log and brings it forward: at once on the main thread, from
    /// any other when the main thread gets to it. So the lines of completions and of runs stand in
    /// the order of events, however far the next run has got meanwhile.
    void displayError(const std::string& line) override;

    /// The window; null before one was made, and on the command line. Not owned.
    DocumentWindow* windowController = nullptr;
    /// Who is told of runs; may be null. Not owned. A window sets itself as both.
    RunObserver* runObserver = nullptr;
    run::MainRoutine& mainRoutine() { return *m_mainRoutine; }
    const run::MainRoutine& mainRoutine() const { return *m_mainRoutine; }

    /// Set to stop a batch before its next patient. From any thread.
    void setCancelOperationFlag(bool cancel) noexcept;
    bool cancelOperationFlag() const noexcept;

    bool canMakeSummaryTable() const noexcept { return m_canMakeSummaryTable; }
    void setCanMakeSummaryTable(bool can) noexcept { m_canMakeSummaryTable = can; }

    archive::Text file1;
    archive::Text file2;
    archive::Text fastqFileDir;

    /// What the last analysis met, beside its results. Main thread only; it grows while patients
    /// end.
    const AnalysisAccount& analysisAccount() const noexcept { return m_account; }

    /// Whether a batch stops before the next patient once its definition file or its settings are
    /// others than at its start. Else it warns and goes on.
    bool stopsBatchOnChange = false;

    /// How runs started from now on get their files.
    InputMode inputMode = InputMode::workingCopies;
    /// With direct input, where analyze() writes pairs that nothing claimed; nullopt: nowhere.
    std::optional<std::string> unassignedPath;

private:
    struct Batch;

    // The display of a run. Its threads call it; the main thread sees the calls in order.
    void showText(run::RunField field, const std::string& text) override;
    /// Of the patient that runs.
    void displayWarning(const run::Warning& warning) override;

    /// Runs `task` with the observer on the main thread later, unless there is none by then.
    void tell(std::function<void(RunObserver&)> task);
    bool openResult(const std::string& path);
    void endAnalysis(const AnalysisOutcome& outcome);

    void switchControls(bool enabled);
    /// A fresh record from the catalogue as the driver holds it.
    void makeFreshSummary();
    /// Drops the results and shows the empty tables.
    void clearResults();
    void reloadTables();
    /// Reads the definition file anew; whether a run may go on with it. The file that ships may be
    /// missing: it is the empty catalogue then, and the observer is told, since the results would
    /// pass for those of a run that found nothing. A file that the user named may not be missing.
    bool readCatalogueAnew();
    /// Shows why not.
    void showCatalogueTrouble();
    /// Runs it; an exception becomes a line in the error log and false.
    bool withoutException(const std::function<bool()>& run);
    run::InputReads prepareFilesForMainRoutineUsingDir(const std::string& directory,
                                                       const std::string& read1Name,
                                                       const std::string& read2Name);
    /// Drops the results and shows the opened pair as an empty patient.
    void showFreshPatient();
    /// What analyze() is to run.
    AnalysisPlan planOfOpenedPatient() const;
    /// Gives the record the patient's number; false, after an alert, where the name holds none.
    bool numberPatient(const PlannedPatient& patient);
    /// Prepares the opened pair; its caller is held while copies are made. False where there is
    /// nothing to run, which was shown.
    bool prepareHoldingCaller(const PlannedPatient& patient);
    void completeAnalyze(bool succeeded, const std::vector<std::string>& paths);
    /// Begins the account of an analysis of these patients, and warns of what is doubtful in the
    /// plan. REQUIRES: the catalogue was read.
    void beginAccount(const AnalysisPlan& plan);
    /// Enters what became of the patient.
    void closePatientAccount(std::size_t index, bool succeeded, run::RunAccount run,
                             std::shared_ptr<run::SummaryForEachPatient> summary);
    /// Warns where the patient's reads begin as those of an earlier patient do.
    void warnOfCopies(std::size_t index, run::RunAccount& run);
    /// Keeps and shows a warning that the main thread itself gives; `patient` as for showWarning().
    void warn(std::vector<run::Warning>& to, run::Warning warning, const PatientAccount* patient);
    /// Tells that the patient at that place of the account begins, and that what follows is its.
    void startPatient(std::size_t index, std::size_t count);
    /// Shows the alert for the first sample with only one file; false when there is none.
    bool showUnpairedAlert(const std::vector<PatientSlot>& slots);
    /// Runs the plan; the controls are off.
    void runBatch(AnalysisPlan plan);
    void runBatchPatient(const std::shared_ptr<Batch>& batch, std::size_t index);
    bool executeBatchPatient(Batch& batch, std::size_t index, bool catalogueUsable);
    /// False where the patient cannot run, which was shown.
    bool prepareBatchPatient(Batch& batch, std::size_t index, bool catalogueUsable);
    /// Warns, once each, of a definition file read last and of settings that are not those of the
    /// batch's start. False where the batch may not go on with them: then it is stopped.
    bool compareWithStart(Batch& batch);
    /// Passes over the patient, since the batch has been stopped.
    void passOverBatchPatient(const std::shared_ptr<Batch>& batch, std::size_t index);
    /// Adds the patient to those that the batch runs without a catalogue, and says so.
    void noteCatalogueGap(Batch& batch, std::size_t index);
    void completeBatchPatient(Batch& batch, std::size_t index, bool succeeded,
                              const std::vector<std::string>& paths, run::RunAccount run,
                              std::shared_ptr<run::SummaryForEachPatient> summary);
    void appendResult(std::shared_ptr<run::SummaryForEachPatient> summary);

    DocumentServices m_services;
    std::atomic<bool> m_cancelOperationFlag{false};
    bool m_canMakeSummaryTable = false;
    bool m_callerIsHeld = false;
    std::string m_fileType;
    /// nullopt: the opened patient is the pair of `file1` and `file2`.
    std::optional<AnalysisPlan> m_givenPatient;
    AnalysisAccount m_account;
    /// What the error log said since the running patient began.
    std::vector<std::string> m_linesOfPatient;
    /// The place in the account of the patient that runs, as the main thread has heard so far.
    std::size_t m_runningPatient = 0;
    MainThreadRoute m_toMainThread;
    std::unique_ptr<run::MainRoutine> m_mainRoutine;
    std::unique_ptr<platform::SerialQueue> m_dispatchSerialQueueForAnalyzeAll;
    std::unique_ptr<platform::SerialQueue> m_dispatchSerialQueueForAnalyze;
};

} // namespace document
