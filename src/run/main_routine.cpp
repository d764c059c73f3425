// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/main_routine.h"

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
    catalogue::Catalogue catalogue = catalogue::loadDefinitionFile(m_services.definitionFilePath);
    m_catalogueFaults = std::move(catalogue.faults);
    m_catalogueOpened = catalogue.opened;
    m_catalogueOpenError = m_services.definitionFilePath.empty()
                               ? "The definition file that ships is missing"
                               : std::move(catalogue.openError);
    return std::move(catalogue.domains);
}

const std::vector<catalogue::CatalogueFault>& MainRoutine::catalogueFaults() const {
    return m_catalogueFaults;
}

bool MainRoutine::catalogueOpened() const {
    return m_catalogueOpened;
}

bool MainRoutine::catalogueUsable() const {
    return m_catalogueFaults.empty() &&
           (m_catalogueOpened || m_services.definitionOrigin == DefinitionOrigin::shipped);
}

const std::string& MainRoutine::catalogueOpenError() const {
    return m_catalogueOpenError;
}

namespace {

/// When a run is over, however it ended, what still stands there is meant to.
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
    mainDocument.showFile1(archive::stringOrEmpty(summaryForEachPatient->file1));
    mainDocument.showFile2(archive::stringOrEmpty(summaryForEachPatient->file2));
    const ForgottenAtEnd unfinished(inputReads);
    if (!settingsReadable() || !prepareSeqR1andR2andCallPickupMatches()) {
        return false;
    }
    mainDocument.showTotalNumberOfReads(std::to_string(summaryForEachPatient->totalNumberOfReads));
    mainDocument.showReadsMapped(std::to_string(summaryForEachPatient->readsMapped));
    mainDocument.showReadsFailedToBeMapped(
        std::to_string(summaryForEachPatient->readsFailedToBeMapped));
    summarizeResult();
    // Only copies that the run was given as such can be removed: inputs read where they lie have no
    // way to get here.
    if (const auto* copies = std::get_if<WorkingCopies>(&inputReads)) {
        cleanupFiles(*copies);
    }
    return true;
}

namespace {

run::PairedReads pairedReads(const WorkingCopies& copies) {
    return {copies.read1Path,
            copies.read2Path,
            reads::ReadsEncoding::plain,
            run::failedReadsPathFor(copies.read1Path),
            copies.read1File,
            copies.read2File,
            copies.unfinished.get()};
}

run::PairedReads pairedReads(const DirectReads& direct) {
    return {direct.read1Path, direct.read2Path, reads::ReadsEncoding::byFileName,
            direct.unassignedPath};
}

} // namespace

bool MainRoutine::prepareSeqR1andR2andCallPickupMatches() {
    run::PairedReads reads;
    if (const auto* copies = std::get_if<WorkingCopies>(&inputReads)) {
        if (copies->obstructed) {
            return false;
        }
        reads = pairedReads(*copies);
    } else if (const auto* direct = std::get_if<DirectReads>(&inputReads)) {
        reads = pairedReads(*direct);
    }
    run::ReadCounters counters;
    const bool finished = run::matchReadPairs(reads, summaryForEachPatient->mutDomains, counters,
                                              mainDocument, m_progress, m_services.workers);
    summaryForEachPatient->totalNumberOfReads = counters.totalNumberOfReads;
    summaryForEachPatient->readsFailedToBeMapped = counters.readsFailedToBeMapped;
    summaryForEachPatient->readsMapped = counters.readsMapped;
    return finished;
}

void MainRoutine::summarizeResult() {
    for (const auto& domain : archive::orEmpty(summaryForEachPatient->mutDomains)) {
        m_resultCalc.calculateResult(*domain);
    }
    m_resultCalc.summarizeResultForPatient(summaryForEachPatient->patientNo,
                                           summaryForEachPatient->mutDomains,
                                           *summaryForEachPatient);
}

void MainRoutine::cleanupFiles(const WorkingCopies& copies) {
    for (const std::string& path : filesOfCleanup(copies.read1Path, m_services.settings)) {
        platform::removeSilently(path);
    }
}

} // namespace run
