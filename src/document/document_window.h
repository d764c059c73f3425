// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "run/run_display.h"
#include "run/summary_for_each_patient.h"

namespace document {

struct PatientAccount;

/// How an analysis ended. An observer may say more of it than the tables show.
struct AnalysisOutcome {
    enum class End {
        finished,        ///< every patient ran; some may have failed
        cancelled,       ///< the user stopped the batch
        unpaired,        ///< a sample has only one of its two files; nobody ran
        noPatients,      ///< the directory holds no pair; nobody ran
        noPatientNumber, ///< the file name holds no "_S"; nobody ran
        catalogueFaulty, ///< the catalogue has faults, or a named one cannot be read; nobody ran
        changed, ///< the definition file or the settings changed; later patients were not run
    };
    End end = End::finished;
    std::size_t patientsRun = 0;
    std::size_t patientsFailed = 0;
};

/// A working copy that is being made.
struct Preparation {
    std::string name; ///< of the input, without its directory
    /// Where the copy of a compressed input grows, so that the size there tells how far it is. The
    /// copy of a plain input appears there whole.
    std::string copyPath;
};

/// What a document tells of its runs. Called on the main thread only. The desktop's window
/// controller implements it, and so does the command line.
class RunObserver {
public:
    virtual ~RunObserver() = default;

    /// A patient of a run begins. `position` counts from 1.
    virtual void patientStarts(std::size_t position, std::size_t count) = 0;
    /// A working copy is begun; with direct input there is none. In a batch it comes after the
    /// patient's patientStarts(). In a single run it may come before or after: analyze() makes the
    /// copies before the run starts, and holds its caller meanwhile.
    virtual void preparing(const Preparation& preparation) = 0;
    /// The patient's working copies are made, or could not be.
    virtual void prepared() = 0;
    /// The run writes a field.
    virtual void setText(run::RunField field, const std::string& text) = 0;

    /// Appends the text, as it stands, to the error log.
    virtual void appendToErrorLog(const std::string& text) = 0;
    /// What makes results doubtful although nothing failed: shown in any case. `patient` is whose,
    /// as far as its account is known; null: that of the whole directory or batch.
    virtual void showWarning(const run::Warning& warning, const PatientAccount* patient) = 0;
    /// Results on show, or about to be, are empty because the catalogue that ships could not be
    /// read. `text` is a finished sentence that replaces the one before it; empty: that is not so
    /// (any more). Not for the error log, since nothing failed.
    virtual void showCatalogueNotice(const std::string& text) = 0;

    /// The analysis is over, whatever its end.
    virtual void analysisEnded(const AnalysisOutcome& outcome) = 0;
};

/// What only a window has, as far as a document speaks to it. Called on the main thread only.
class DocumentWindow {
public:
    virtual ~DocumentWindow() = default;

    virtual void reloadPatientsTable() = 0;
    /// The four result tables.
    virtual void reloadResultTables() = 0;
    /// Selects that row of the patients table alone. The row may lie beyond the table.
    virtual void selectPatientRow(std::int64_t row) = 0;
    /// Rows selected in the patients table, rising.
    virtual std::vector<std::int64_t> selectedPatientRows() const = 0;
    virtual void
    updateWindowFromSummaryForEachPatient(const run::SummaryForEachPatient& summary) = 0;

    virtual void setAnalyzeButtonEnabled(bool enabled) = 0;
    virtual bool analyzeButtonEnabled() const = 0;
    virtual void setAnalyzeAllButtonEnabled(bool enabled) = 0;
    /// The busy state.
    virtual void setIndicator(bool busy) = 0;

    virtual void bringErrorLogForward() = 0;
    /// Asks for a place whose only allowed extension is `extension`, as a sheet on the window, and
    /// writes the bytes there: whole or not at all. Nothing happens when the user cancels. The
    /// window may report a failed write or not.
    virtual void offerToSave(const std::string& bytes, std::string_view extension) = 0;
};

/// Modal alerts, which a document may need before it has a window. Called on the main thread only.
class Alerts {
public:
    virtual ~Alerts() = default;
    /// Shows an alert with one button "OK" and returns when it was closed.
    virtual void showAlert(const std::string& message, const std::string& informativeText) = 0;
};

} // namespace document
