// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "calling/result_calc.h"
#include "catalogue/definition_file.h"
#include "platform/file_identity.h"
#include "platform/program_end.h"
#include "platform/work_queues.h"
#include "run/pair_matching.h"
#include "run/run_account.h"
#include "run/run_display.h"
#include "run/summary_for_each_patient.h"
#include "settings/settings_store.h"

namespace run {

/// Who chose the definition file. It decides what happens when the file cannot be read.
enum class DefinitionOrigin {
    shipped, ///< the application: runs go on with the empty catalogue, and the faces say so
    named,   ///< the user: no run goes on without it
};

/// What the machine lends to every run. The referenced objects outlive every document.
struct RunServices {
    settings::SettingsStore& settings;
    platform::WorkerPool& workers;
    /// The definition file; empty when the one that ships was not found.
    std::string definitionFilePath;
    DefinitionOrigin definitionOrigin = DefinitionOrigin::shipped;
};

/// A patient's inputs as plain-text working copies beside them, which the run removes at its end.
struct WorkingCopies {
    std::string read1Path;
    std::string read2Path;
    /// Something that could not be replaced stands under a copy's name. It may be another run's
    /// copy, so the run fails without reading it.
    bool obstructed = false;
    /// The files that were made; the identity of no file where a copy could not be made. The run
    /// refuses anything else that somebody put under their names since. nullopt: whatever stands
    /// there.
    std::optional<platform::FileIdentity> read1File = std::nullopt;
    std::optional<platform::FileIdentity> read2File = std::nullopt;
    /// Notes the copies, and what the run makes beside them, until the run is over. Null: nobody
    /// does.
    std::shared_ptr<platform::UnfinishedFiles> unfinished = nullptr;
};

/// A patient's inputs, plain or .gz, read where they lie. No run can remove them: only
/// WorkingCopies can be cleaned up.
struct DirectReads {
    std::string read1Path;
    std::string read2Path;
    /// Where to write pairs that nothing claimed; nullopt: nowhere.
    std::optional<std::string> unassignedPath;
    /// Read behind the first lane as if their files had been put together.
    std::vector<LaneFiles> furtherLanes = {};
};

/// What a run reads.
using InputReads = std::variant<std::monostate, WorkingCopies, DirectReads>;

/// The document-level store that saving builds and opening restores.
struct MainMutDictionary {
    PatientList summaryForEachPatientMutAr;
    std::int64_t selectedPatientRowNo = -1;
};

/// What a run that succeeds removes: with B the read-1 working copy's path before its first "_R1"
/// (in a directory's name too), the files B_R1_001.fastq and B_R2_001.fastq and, unless the setting
/// "leaveFileForFailedToBeAssignedReads" is the boolean true, B.failedToBeAssignedReads.
std::vector<std::string> filesOfCleanup(const std::string& read1Path,
                                        const settings::SettingsStore& settings);

/// Takes one patient from prepared files to report rows. A document makes one driver and reuses it.
///
/// The main thread owns `summaryForEachPatientMutAr` and `selectedPatientRowNo`; the record of the
/// patient being run changes hands with the document's queues.
class MainRoutine {
public:
    /// Loads the catalogue and makes an empty patient record from it. `mainDocument` and `services`
    /// must outlive the driver.
    MainRoutine(RunDisplay& mainDocument, const RunServices& services);
    MainRoutine(const MainRoutine&) = delete;
    MainRoutine& operator=(const MainRoutine&) = delete;

    MainMutDictionary mainMutDictionary;
    PatientList summaryForEachPatientMutAr;
    /// Row of the patients table; -1: none.
    std::int64_t selectedPatientRowNo = -1;
    std::shared_ptr<SummaryForEachPatient> summaryForEachPatient;
    /// The files of the patient being run; set by the document before execute().
    InputReads inputReads;
    RunDisplay& mainDocument;
    /// The catalogue as loaded: a template, the counts go into the summary's own copy.
    catalogue::MutDomains mutDomains;

    /// Full paths of the files that a run reads, read 1 first; empty while there are none.
    std::vector<std::string> expandedTemporaryFilesFullPathAr() const;

    /// Reads the definition file anew; catalogueFaults() then tells what is wrong with it.
    catalogue::MutDomains setUpMutDomainsMutAr();
    /// Faults of the catalogue read last. No run starts while there is one.
    const std::vector<catalogue::CatalogueFault>& catalogueFaults() const;
    /// Whether the definition file read last could be opened; else a finished message that names
    /// the file.
    const platform::Status& catalogueStatus() const;
    /// Whether a run may go on with the catalogue read last: it has no faults, and one that the
    /// user named could be opened.
    bool catalogueUsable() const;

    /// Of the definition file read last, as 64 hexadecimal digits; empty: there was none.
    const std::string& catalogueDigest() const;

    /// What the last execute() met beside its counts.
    RunAccount runAccount;

    /// Whether the settings can be read now; shows why not. Ask before preparing inputs, too:
    /// execute() refuses to begin without settings and would leave the copies behind.
    bool settingsReadable();

    /// Runs one patient: shows the file names, reads and matches, shows the counters, calls, builds
    /// the rows, removes working copies. False, with nothing called or removed, when reading failed
    /// (which was shown), and where the settings cannot be read. Blocks; not for the main thread.
    bool execute();

    /// Reads and matches the prepared files, unless copies are obstructed, and fills the summary's
    /// counters and counts.
    bool prepareSeqR1andR2andCallPickupMatches();
    /// Looks at the first reads again where nearly nothing was found, and warns of what is there.
    void lookAgain(const PairedReads& reads, const ReadCounters& counters);
    /// Calls every domain, then builds the patient's rows.
    void summarizeResult();
    /// Removes the run's working copies: the files of filesOfCleanup(). Errors are ignored.
    void cleanupFiles(const WorkingCopies& copies);

    const ReadingProgress& progress() const { return m_progress; }
    const RunServices& services() const { return m_services; }

private:
    void warn(std::vector<Warning> warnings);

    RunServices m_services;
    calling::ResultCalc m_resultCalc;
    // Of the catalogue read last; whoever asked for it holds its records.
    std::vector<catalogue::CatalogueFault> m_catalogueFaults;
    platform::Status m_catalogueStatus;
    std::string m_catalogueDigest;
    ReadingProgress m_progress;
};

} // namespace run
