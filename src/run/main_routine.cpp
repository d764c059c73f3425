// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One patient from prepared files to report rows, in the order in which the window is to see it:
// names, running counters, final counters; then the calls, the rows and the cleaning up. A run that
// cannot read its files stops before the final counters and removes nothing.
//
// Cleaning up removes files by names that it computes, so it takes WorkingCopies and nothing else:
// the type of the inputs keeps files that were read where they lie out of its reach.
// docs/working-copies.md tells the rest. Tested by main_routine_test.cpp.
#include "run/main_routine.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

#include "platform/files.h"
#include "settings/settings_table.h"

namespace run {

std::vector<std::string> filesOfCleanup(const std::string& read1Path,
                                        const settings::SettingsStore& settings) {
    const std::string base = platform::splitAt(read1Path, "_R1").front();
    std::vector<std::string> files = {base + "_R1_001.fastq", base + "_R2_001.fastq"};
    if (!settings::isOn(settings, settings::key::kLeaveFileForFailedToBeAssignedReads)) {
        files.push_back(base + ".failedToBeAssignedReads");
    }
    return files;
}

MainRoutine::MainRoutine(RunDisplay& document, const RunServices& services)
    : mainDocument(document), m_services(services), m_resultCalc(services.settings) {
    mainMutDictionary.summaryForEachPatientMutAr.emplace();
    summaryForEachPatientMutAr = archive::RecordList<SummaryForEachPatient>::withCapacity(1);
    m_resultCalc.mainRoutine = this;
    mutDomains = setUpMutDomainsMutAr();
    summaryForEachPatient = SummaryForEachPatient::initWithMutDomains(mutDomains);
    selectedPatientRowNo = -1;
}

std::vector<std::string> MainRoutine::expandedTemporaryFilesFullPathAr() const {
    if (const auto* copies = std::get_if<WorkingCopies>(&inputReads)) {
        return {copies->read1Path, copies->read2Path};
    }
    if (const auto* direct = std::get_if<DirectReads>(&inputReads)) {
        return {direct->read1Path, direct->read2Path};
    }
    return {};
}

catalogue::MutDomains MainRoutine::setUpMutDomainsMutAr() {
    auto loaded = catalogue::loadDefinitionFile(m_services.definitionFilePath);
    m_catalogueDigest.clear();
    if (!loaded) {
        m_catalogueFaults.clear();
        m_catalogueStatus = m_services.definitionFilePath.empty()
                                ? platform::Error{"The definition file that ships is missing"}
                                : loaded.error();
        return catalogue::MutDomains(std::in_place);
    }
    catalogue::Catalogue catalogue = std::move(loaded).value();
    m_catalogueFaults = std::move(catalogue.faults);
    m_catalogueDigest = std::move(catalogue.digest);
    m_catalogueStatus = platform::Status();
    return std::move(catalogue.domains);
}

const std::vector<catalogue::CatalogueFault>& MainRoutine::catalogueFaults() const {
    return m_catalogueFaults;
}

const platform::Status& MainRoutine::catalogueStatus() const {
    return m_catalogueStatus;
}

const std::string& MainRoutine::catalogueDigest() const {
    return m_catalogueDigest;
}

bool MainRoutine::catalogueUsable() const {
    return m_catalogueFaults.empty() &&
           (m_catalogueStatus.ok() || m_services.definitionOrigin == DefinitionOrigin::shipped);
}

namespace {

/// Keeps the time for which it lives.
class MeasuredTime {
public:
    explicit MeasuredTime(double& seconds) : m_seconds(seconds) {}
    ~MeasuredTime() {
        m_seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }
    MeasuredTime(const MeasuredTime&) = delete;
    MeasuredTime& operator=(const MeasuredTime&) = delete;

private:
    const std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    double& m_seconds;
};

/// Once a run is over, however it ended, what it left behind is meant to stay.
class ForgottenAtEnd {
public:
    explicit ForgottenAtEnd(const InputReads& reads) {
        if (const auto* copies = std::get_if<WorkingCopies>(&reads)) {
            m_unfinished = copies->unfinished;
        }
    }
    ~ForgottenAtEnd() {
        if (m_unfinished) {
            m_unfinished->clear();
        }
    }
    ForgottenAtEnd(const ForgottenAtEnd&) = delete;
    ForgottenAtEnd& operator=(const ForgottenAtEnd&) = delete;

private:
    std::shared_ptr<platform::UnfinishedFiles> m_unfinished;
};

} // namespace

bool MainRoutine::settingsReadable() {
    const platform::Status readable = m_services.settings.readable();
    if (!readable) {
        mainDocument.displayError("The settings file cannot be read. " + readable.error().message +
                                  "\n");
    }
    return readable.ok();
}

bool MainRoutine::execute() {
    const SummaryForEachPatient& summary = *summaryForEachPatient;
    mainDocument.showText(RunField::file1, archive::stringOrEmpty(summary.file1));
    mainDocument.showText(RunField::file2, archive::stringOrEmpty(summary.file2));
    const ForgottenAtEnd unfinished(inputReads);
    runAccount = {};
    runAccount.catalogueDigest = m_catalogueDigest;
    const MeasuredTime untilItsEnd(runAccount.seconds);
    if (!settingsReadable() || !prepareSeqR1andR2andCallPickupMatches()) {
        return false;
    }
    mainDocument.showText(RunField::totalNumberOfReads, std::to_string(summary.totalNumberOfReads));
    mainDocument.showText(RunField::readsMapped, std::to_string(summary.readsMapped));
    mainDocument.showText(RunField::readsFailedToBeMapped,
                          std::to_string(summary.readsFailedToBeMapped));
    summarizeResult();
    if (const auto* copies = std::get_if<WorkingCopies>(&inputReads)) {
        cleanupFiles(*copies);
    }
    return true;
}

/// Keeps the warnings and shows them, a line each.
void MainRoutine::warn(std::vector<Warning> warnings) {
    for (Warning& warning : warnings) {
        mainDocument.displayWarning(warning);
        runAccount.warnings.push_back(std::move(warning));
    }
}

namespace {

PairedReads pairedReads(const WorkingCopies& copies) {
    return {copies.read1Path,
            copies.read2Path,
            reads::ReadsEncoding::plain,
            failedReadsPathFor(copies.read1Path),
            copies.read1File,
            copies.read2File,
            copies.unfinished.get()};
}

/// The lines of a failure, one by one.
void showLines(RunDisplay& display, std::string_view lines) {
    while (!lines.empty()) {
        const std::size_t end = std::min(lines.find('\n'), lines.size() - 1) + 1;
        display.displayError(std::string(lines.substr(0, end)));
        lines.remove_prefix(end);
    }
}

PairedReads pairedReads(const DirectReads& direct) {
    PairedReads reads = {direct.read1Path, direct.read2Path, reads::ReadsEncoding::byFileName,
                         direct.unassignedPath};
    reads.furtherLanes = direct.furtherLanes;
    return reads;
}

/// The name of the first lane's file, for people.
std::string nameOfAllLanes(const archive::Text& name, const PairedReads& reads) {
    const std::size_t further = reads.furtherLanes.size();
    return archive::stringOrEmpty(name) +
           (further == 0   ? std::string()
            : further == 1 ? " and another lane"
                           : " and " + std::to_string(further) + " other lanes");
}

} // namespace

bool MainRoutine::prepareSeqR1andR2andCallPickupMatches() {
    PairedReads reads;
    if (const auto* copies = std::get_if<WorkingCopies>(&inputReads)) {
        if (copies->obstructed) {
            return false;
        }
        reads = pairedReads(*copies);
    } else if (const auto* direct = std::get_if<DirectReads>(&inputReads)) {
        reads = pairedReads(*direct);
    }
    ReadCounters counters;
    const platform::Status finished =
        matchReadPairs(reads, summaryForEachPatient->mutDomains, counters, mainDocument, m_progress,
                       m_services.workers);
    summaryForEachPatient->totalNumberOfReads = counters.totalNumberOfReads;
    summaryForEachPatient->readsFailedToBeMapped = counters.readsFailedToBeMapped;
    summaryForEachPatient->readsMapped = counters.readsMapped;
    if (!finished) {
        showLines(mainDocument, finished.error().message);
    }
    runAccount.inputs = counters.inputs;
    warn(warningsOf(counters.inputs, nameOfAllLanes(summaryForEachPatient->file1, reads),
                    nameOfAllLanes(summaryForEachPatient->file2, reads)));
    if (finished) {
        lookAgain(reads, counters);
    }
    return finished.ok();
}

void MainRoutine::lookAgain(const PairedReads& reads, const ReadCounters& counters) {
    const catalogue::MutDomains& domains = summaryForEachPatient->mutDomains;
    if (callsForSecondLook(domains, counters)) {
        runAccount.secondLook = run::lookAgain(reads, domains, counters);
        warn(warningsOf(runAccount.secondLook,
                        archive::stringOrEmpty(summaryForEachPatient->file1)));
    }
}

void MainRoutine::summarizeResult() {
    // Calls read each setting when they need it, within the next milliseconds.
    runAccount.settings = settings::settingsInForce(m_services.settings);
    for (const auto& domain : archive::orEmpty(summaryForEachPatient->mutDomains)) {
        m_resultCalc.calculateResult(*domain);
    }
    m_resultCalc.summarizeResultForPatient(summaryForEachPatient->patientNo,
                                           summaryForEachPatient->mutDomains,
                                           *summaryForEachPatient);
    runAccount.assessability = calling::assess(summaryForEachPatient->mutDomains);
    ReadCounters counters;
    counters.totalNumberOfReads = summaryForEachPatient->totalNumberOfReads;
    counters.readsMapped = summaryForEachPatient->readsMapped;
    warn(warningsOf(counters, runAccount.assessability,
                    archive::stringOrEmpty(summaryForEachPatient->file1)));
}

void MainRoutine::cleanupFiles(const WorkingCopies& copies) {
    for (const std::string& path : filesOfCleanup(copies.read1Path, m_services.settings)) {
        platform::removeSilently(path);
    }
}

} // namespace run
