// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The way of an analysis: check, open, run, write.
//
// Everything that can be refused is refused first, with status 2: arguments that name a file of the
// run as an output, inputs that are missing, a catalogue that cannot be read. Then the document
// runs on its queues while this thread serves as its main thread, until the observer hears of the
// end. What was finished is written even if a patient failed or an interrupt stopped the batch; the
// exit status tells.
//
// An interrupt ends the program at once before the run begins; during the run the first one stops a
// batch after the running patient. Tested by analyze_program_test.cpp, analyze_all_program_test.cpp
// and held_run_program_test.cpp.
#include <algorithm>
#include <csignal>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/commands.h"
#include "cli/console_observer.h"
#include "cli/inputs.h"
#include "cli/interrupt.h"
#include "cli/outputs.h"
#include "cli/planned_inputs.h"
#include "cli/progress_line.h"
#include "cli/run_settings.h"
#include "cli/unassigned_output.h"
#include "document/result_document.h"
#include "document/vexta_document.h"
#include "document/working_copies.h"
#include "platform/files.h"
#include "platform/work_queues.h"
#include "report/run_record.h"
#include "report/status_table.h"
#include "run/run_files.h"

namespace cli {
namespace {

using document::AnalysisOutcome;
using document::VextaDocument;

/// What differs between one patient and a directory of them.
struct Analysis {
    std::string path;
    /// Every file that the run reads or makes, which no output may replace.
    std::vector<std::string> files;
    /// What to say where a sample has one file only.
    std::vector<std::string> unpaired;
    /// Opens the input in the document; false when it was refused, which was shown.
    std::function<bool(VextaDocument&)> open;
    std::function<void(VextaDocument&)> start;
};

Outcome refuse(Console& console, const std::string& message) {
    console.error(message);
    return Outcome::unusable;
}

void sayErrors(Console& console, const std::vector<std::string>& messages) {
    for (const std::string& message : messages) {
        console.error(message);
    }
}

void addReads(std::vector<std::string>& files, const Arguments& arguments,
              const std::string& directory, const std::string& name) {
    files.push_back(directory + "/" + name);
    if (arguments.workingCopies) {
        const std::string copy = document::workingCopyPath(directory, name);
        files.push_back(copy);
        files.push_back(run::failedReadsPathFor(copy));
    }
}

/// Refuses a settings file or a catalogue under the name of a file that the run reads, makes or
/// removes. A settings file is written, and set aside when it is damaged.
platform::Status checkOwnFiles(const Analysis& analysis, const Arguments& arguments,
                               const std::optional<std::string>& definition) {
    const std::string settings = settingsPath(arguments);
    if (definition && isSamePlace(settings, *definition)) {
        return platform::Error{"the settings file " + settings + " is the catalogue " +
                               *definition};
    }
    for (const std::string& file : analysis.files) {
        if (isSamePlace(settings, file)) {
            return platform::Error{"the settings file " + settings +
                                   " is a file of the analysis, " + file};
        }
        if (definition && isSamePlace(*definition, file)) {
            return platform::Error{"the catalogue " + *definition + " is a file of the analysis, " +
                                   file};
        }
    }
    return checkSettings(arguments);
}

std::vector<std::string> inputsOf(const Analysis& analysis, const Arguments& arguments,
                                  const std::optional<std::string>& definition) {
    std::vector<std::string> inputs = analysis.files;
    inputs.push_back(settingsPath(arguments));
    if (definition) {
        inputs.push_back(*definition);
    }
    return inputs;
}

/// How the run and its outputs ended, as an exit status.
Outcome outcomeOf(const AnalysisOutcome& end, bool interrupted) {
    switch (end.end) {
    case AnalysisOutcome::End::unpaired:
    case AnalysisOutcome::End::noPatients:
    case AnalysisOutcome::End::noPatientNumber:
    case AnalysisOutcome::End::catalogueFaulty:
        return Outcome::unusable;
    case AnalysisOutcome::End::changed:
        return Outcome::failed;
    case AnalysisOutcome::End::finished:
    case AnalysisOutcome::End::cancelled:
        break;
    }
    if (interrupted) {
        return Outcome::interrupted;
    }
    return end.patientsFailed > 0 ? Outcome::failed : Outcome::success;
}

bool hasSevereWarning(const document::AnalysisAccount& account) {
    const auto isSevere = [](const std::vector<run::Warning>& warnings) {
        return std::any_of(warnings.begin(), warnings.end(),
                           [](const run::Warning& warning) { return run::isSevere(warning.kind); });
    };
    return isSevere(account.warnings) ||
           std::any_of(account.patients.begin(), account.patients.end(),
                       [&](const auto& patient) { return isSevere(patient.run.warnings); });
}

/// A document and what it needs. Lives on one thread, which is the document's main thread.
class Session {
public:
    /// `console` and `settings` outlive the session. `definitionFilePath` is empty when no
    /// catalogue is named and the one that ships was not found.
    Session(const Arguments& arguments, const std::string& definitionFilePath,
            settings::SettingsStore& settings, Console& console)
        : m_workers(arguments.threads.value_or(platform::WorkerPool::defaultThreadCount())),
          m_observer(console, [this] { m_mainQueue.stop(); }),
          m_document({{settings, m_workers, definitionFilePath,
                       arguments.cataloguePath ? run::DefinitionOrigin::named
                                               : run::DefinitionOrigin::shipped},
                      m_mainQueue,
                      nullptr,
                      m_observer,
                      m_callerHold}) {
        m_document.runObserver = &m_observer;
        m_document.stopsBatchOnChange = true;
        m_document.inputMode = arguments.workingCopies ? document::InputMode::workingCopies
                                                       : document::InputMode::direct;
    }

    VextaDocument& document() { return m_document; }
    const RunningPatient& runningPatient() const { return m_observer.runningPatient(); }

    std::size_t threads() const { return m_workers.threadCount(); }

    /// Runs the main queue until the analysis that was started is over.
    AnalysisOutcome waitForEnd() {
        m_mainQueue.run();
        return m_observer.outcome().value();
    }

private:
    platform::RunLoop m_mainQueue;
    platform::WorkerPool m_workers;
    platform::DirectHold m_callerHold;
    ConsoleObserver m_observer;
    VextaDocument m_document;
};

/// One document from opening to outputs.
class AnalysisRun {
public:
    /// Until the run begins, `interrupts` ends the program at an interrupt.
    AnalysisRun(const Arguments& arguments, const Streams& streams, Console& console,
                TerminationWatch& interrupts)
        : m_arguments(arguments), m_streams(streams), m_console(console),
          m_interruptsBefore(interrupts) {}

    Outcome run(const Analysis& analysis);

private:
    Outcome runIn(Session& session, RunSettings& settings, const Analysis& analysis);
    AnalysisOutcome waitForEnd(Session& session);
    void sayWhyNoPatients(const std::string& directory) const;
    /// False, after naming them, where working copies would cost files of somebody else.
    bool sparesBystanders(const VextaDocument& document) const;
    /// Writes what the finished patients gave; false when that failed.
    bool deliver(Session& session);
    RunTexts runTexts(Session& session, const run::MainMutDictionary& results) const;
    bool makeUnassignedOutput();

    const Arguments& m_arguments;
    const Streams& m_streams;
    Console& m_console;
    TerminationWatch& m_interruptsBefore;
    std::unique_ptr<UnassignedOutput> m_unassigned;
};

Outcome AnalysisRun::run(const Analysis& analysis) {
    const auto definition = chooseDefinitionFile(m_arguments);
    if (!definition) {
        return refuse(m_console, definition.error().message);
    }
    auto places = checkOwnFiles(analysis, m_arguments, definition.value());
    if (places) {
        places = checkOutputPaths(m_arguments.outputs,
                                  inputsOf(analysis, m_arguments, definition.value()));
    }
    if (!places) {
        return refuse(m_console, places.error().message);
    }
    if (m_arguments.catalogueNamedBy == kCatalogueVariable) {
        // A variable is easily forgotten, and another catalogue means other results.
        m_console.note(std::string(kCatalogueVariable) + " names the catalogue " +
                       *m_arguments.cataloguePath);
    }
    RunSettings settings(m_arguments, m_console);
    Session session(m_arguments, definition.value().value_or(std::string()), settings.store(),
                    m_console);
    if (m_arguments.cataloguePath && !session.document().mainRoutine().catalogueStatus()) {
        return refuse(m_console,
                      m_arguments.catalogueNamedBy + ": cannot read " + *m_arguments.cataloguePath);
    }
    if (!analysis.open(session.document()) || !sparesBystanders(session.document()) ||
        !makeUnassignedOutput()) {
        return Outcome::unusable;
    }
    return runIn(session, settings, analysis);
}

Outcome AnalysisRun::runIn(Session& session, RunSettings& settings, const Analysis& analysis) {
    VextaDocument& document = session.document();
    m_interruptsBefore.end();
    InterruptWatch watch([this, &document] {
        document.setCancelOperationFlag(true);
        m_console.note("stopping after the running patient; a second interrupt ends at once");
    });
    if (m_unassigned) {
        document.unassignedPath = m_unassigned->temporaryPath();
    }
    settings.writeFirstRunValues(); // may wait for another program's write
    analysis.start(document);
    if (watch.interrupted()) {
        document.setCancelOperationFlag(true); // the start of a batch cleared it
    }
    const AnalysisOutcome end = waitForEnd(session);
    if (end.end == AnalysisOutcome::End::noPatients) {
        sayWhyNoPatients(analysis.path);
    }
    if (end.end == AnalysisOutcome::End::unpaired) {
        sayErrors(m_console, analysis.unpaired);
    }
    if (outcomeOf(end, false) == Outcome::unusable) {
        return Outcome::unusable;
    }
    const bool delivered = deliver(session);
    // Only now, so that the status tells of an interrupt that came while outputs were written.
    const bool interrupted = watch.end();
    const Outcome outcome = delivered ? outcomeOf(end, interrupted) : Outcome::failed;
    const bool strictlyFailed = m_arguments.strict && outcome == Outcome::success &&
                                hasSevereWarning(document.analysisAccount());
    if (strictlyFailed) {
        m_console.error("--strict: a warning above makes this run fail");
    }
    return strictlyFailed ? Outcome::failed : outcome;
}

AnalysisOutcome AnalysisRun::waitForEnd(Session& session) {
    std::unique_ptr<ProgressLine> progress;
    if (m_streams.errIsTerminal && !m_arguments.quiet) {
        progress = std::make_unique<ProgressLine>(
            m_console, session.document().mainRoutine().progress(), session.runningPatient());
    }
    return session.waitForEnd();
}

void AnalysisRun::sayWhyNoPatients(const std::string& directory) const {
    const auto names = platform::namesInDirectory(directory);
    const auto lines = whyNoPatients(directory, names ? names.value() : std::vector<std::string>(),
                                     m_arguments.anyName);
    m_console.error(lines.front());
    std::for_each(lines.begin() + 1, lines.end(),
                  [this](const std::string& line) { m_console.log(line); });
}

bool AnalysisRun::sparesBystanders(const VextaDocument& document) const {
    const std::vector<std::string> files =
        m_arguments.workingCopies ? document.bystanders() : std::vector<std::string>();
    if (files.empty()) {
        return true;
    }
    m_console.error(
        "--working-copies: a folder's name holds \"_R1\", so the run would remove files "
        "that are not its own; without this option they stay:");
    for (const std::string& file : files) {
        m_console.log("  " + file);
    }
    return false;
}

RunTexts AnalysisRun::runTexts(Session& session, const run::MainMutDictionary& results) const {
    const document::AnalysisAccount& account = session.document().analysisAccount();
    const OutputPaths& paths = m_arguments.outputs;
    RunTexts texts;
    if (paths.json || (paths.save && !paths.withoutRecord)) {
        texts.record =
            report::runRecord(account, {session.threads(), session.document().inputMode});
    }
    if (paths.save && !paths.withoutRecord) {
        // Where it fails, writing the document itself says so.
        if (auto bytes = document::encodeResultDocument(results)) {
            texts.document = std::move(bytes).value();
            texts.recordFile = report::recordText(texts.record, texts.document);
        }
    }
    if (paths.status) {
        texts.status = report::statusTable(account);
    }
    return texts;
}

bool AnalysisRun::deliver(Session& session) {
    const run::MainRoutine& driver = session.document().mainRoutine();
    const run::MainMutDictionary results = {driver.summaryForEachPatientMutAr,
                                            driver.selectedPatientRowNo};
    const bool nothing = archive::orEmpty(results.summaryForEachPatientMutAr).empty();
    const RunTexts texts = runTexts(session, results);
    std::vector<Output> outputs =
        nothing ? failureOutputs(m_arguments.outputs, texts)
                : resultOutputs(m_arguments.outputs, results, texts, m_streams.outIsTerminal);
    if (nothing) {
        m_console.error(outputs.empty()
                            ? "no patient was analysed; no output is written"
                            : "no patient was analysed; no output is written but what tells of it");
    }
    if (m_unassigned && !nothing) {
        outputs.push_back(m_unassigned->output());
    }
    const auto written = writeOutputs(outputs, m_streams.out);
    if (!written) {
        m_console.error(written.error().message);
    }
    return written.ok();
}

bool AnalysisRun::makeUnassignedOutput() {
    if (!m_arguments.outputs.unassigned) {
        return true;
    }
    auto unassigned = UnassignedOutput::create(*m_arguments.outputs.unassigned);
    if (!unassigned) {
        m_console.error(unassigned.error().message);
        return false;
    }
    m_unassigned = std::move(unassigned).value();
    return true;
}

void addReads(std::vector<std::string>& files, const Arguments& arguments,
              const document::AnalysisPlan& plan) {
    for (const document::PlannedPatient& patient : plan.patients) {
        for (const run::LaneFiles& lane : patient.lanes) {
            for (const std::string& path : {lane.read1Path, lane.read2Path}) {
                addReads(files, arguments, platform::directoryOf(path),
                         platform::lastPathComponent(path));
            }
        }
    }
}

/// An analysis of what the options name, or their refusal.
Outcome runPlanned(const Arguments& arguments, const Streams& streams, Console& console,
                   TerminationWatch& interrupts) {
    const bool isSingle = arguments.command == Command::analyze;
    document::Planned planned = isSingle ? planPatient(arguments) : planPatients(arguments);
    if (!planned.faults.empty()) {
        sayErrors(console, planned.faults);
        return Outcome::unusable;
    }
    const document::AnalysisPlan& plan = planned.plan;
    Analysis analysis;
    analysis.path = plan.directory;
    addReads(analysis.files, arguments, plan);
    if (arguments.sampleSheet) {
        analysis.files.push_back(normalPath(*arguments.sampleSheet));
    }
    analysis.open = [&plan, isSingle](VextaDocument& document) {
        document.fastqFileDir = plan.directory;
        if (isSingle) {
            document.openPatient(plan);
        }
        return true;
    };
    analysis.start = [&plan, isSingle](VextaDocument& document) {
        isSingle ? document.analyze() : document.analyzePlan(plan);
    };
    return AnalysisRun(arguments, streams, console, interrupts).run(analysis);
}

} // namespace

Outcome analyze(const Arguments& arguments, const Streams& streams) {
    TerminationWatch interrupts({SIGINT});
    Console console(streams.err, arguments.quiet);
    if (planNeeded(arguments)) {
        return runPlanned(arguments, streams, console, interrupts);
    }
    Analysis analysis;
    analysis.path = normalPath(arguments.input);
    auto readable = checkReadsFile(analysis.path);
    const auto pair = document::findMate(analysis.path);
    for (const auto& name : {pair.file1, pair.file2}) {
        if (readable && pair.paired) {
            readable = checkReadsFile(pair.directory + "/" + *name);
            addReads(analysis.files, arguments, pair.directory, *name);
        }
    }
    if (!readable) {
        return refuse(console, readable.error().message);
    }
    analysis.open = [&](VextaDocument& document) {
        const bool opened = document.openReads(pair);
        if (!opened) {
            console.error(whyUnpaired(analysis.path, pair));
        }
        return opened;
    };
    analysis.start = [](VextaDocument& document) { document.analyze(); };
    return AnalysisRun(arguments, streams, console, interrupts).run(analysis);
}

Outcome analyzeAll(const Arguments& arguments, const Streams& streams) {
    TerminationWatch interrupts({SIGINT});
    Console console(streams.err, arguments.quiet);
    if (planNeeded(arguments)) {
        return runPlanned(arguments, streams, console, interrupts);
    }
    Analysis analysis;
    analysis.path = normalPath(arguments.input);
    const auto names = platform::namesInDirectory(analysis.path);
    if (!names) {
        return refuse(console, names.error().message);
    }
    const auto batch = document::planBatch(names.value());
    if (const auto shared = sharedNumbers(names.value(), batch);
        !arguments.allowSharedNumbers && !shared.empty()) {
        sayErrors(console, shared);
        return Outcome::unusable;
    }
    analysis.unpaired = unpairedFiles(analysis.path, batch);
    for (const auto& patient : batch) {
        for (const auto& name : {patient.file1, patient.file2}) {
            if (!name.empty()) {
                addReads(analysis.files, arguments, analysis.path, name);
            }
        }
    }
    analysis.open = [&](VextaDocument& document) {
        document.fastqFileDir = analysis.path;
        return true;
    };
    analysis.start = [](VextaDocument& document) { document.analyzeAll(); };
    return AnalysisRun(arguments, streams, console, interrupts).run(analysis);
}

} // namespace cli
